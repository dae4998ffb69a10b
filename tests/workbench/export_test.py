# SPDX-License-Identifier: GPL-3.0-or-later
"""What export writes, read back by other software."""
import csv
import ctypes
import ctypes.util
import io
import json
import os
import socket
import stat
import subprocess
import time

from support import BASE, FULLEST, TWO_SOCKET, Workbench, main

COLUMNS = ("ordinal,record_id,name,kind,sensor_number,owner_lun,sensor_type,sensor_type_text,event_type,"
           "event_type_text,entity_id,entity_text,entity_instance,formula,unit,m,b,r_exponent,b_exponent,signed,"
           "lnr,lc,lnc,unc,uc,unr,hysteresis_positive,hysteresis_negative,device_code,device_item,device_index,"
           "scan_flag,bus,address,record,entry").split(",")

LAN_CONF = """name "bmc"
set_working_mc 0x20
  startlan 1
    addr 127.0.0.1 {port}
    priv_limit admin
    allowed_auths_admin none md2 md5 straight
    guid a123456789abcdefa123456789abcdef
  endlan
  user 2 true "ipmiusr" "test" admin 10 none md2 md5 straight
"""
SIM_EMU = """mc_setbmc 0x20
mc_add 0x20 0 no-device-sdrs 0x23 9 8 0x9f 0x1291 0xf02
mc_enable 0x20
"""


def split_records(raw):
    records, at = [], 0
    while at < len(raw):
        size = raw[at + 4] + 5
        records.append(raw[at:at + size])
        at += size
    assert at == len(raw)
    return records


def free_port():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as sock:
        sock.bind(("127.0.0.1", 0))
        return sock.getsockname()[1]


class Tests(Workbench):
    def raw(self, *words, board=BASE):
        done = self.run_raw("export", "--board", board, "--format", "raw", *words)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        return done.stdout

    def names(self, board=BASE):
        return [s["name"] for s in self.json("list", "--board", board)["sensors"]]

    def test_raw_is_records_back_to_back_with_ids_from_1(self):
        records = split_records(self.raw())
        self.assertEqual(len(records), 48)
        self.assertEqual([r[0] | r[1] << 8 for r in records], list(range(1, 49)))
        listed = [bytes.fromhex(s["record"]) for s in self.json("list", "--board", BASE)["sensors"]]
        self.assertEqual([r[2:] for r in records], [r[2:] for r in listed])

    def test_raw_is_the_default_format(self):
        self.assertEqual(self.run_raw("export", "--board", BASE).stdout, self.raw())

    def test_record_ids_above_255_use_both_bytes(self):
        records = split_records(self.raw(board=FULLEST))
        self.assertGreater(len(records), 256)
        self.assertEqual(records[256][:2], b"\x01\x01")  # the 257th

    def test_keep_ids_leaves_them_0(self):
        self.assertEqual({r[:2] for r in split_records(self.raw("--keep-ids"))}, {b"\0\0"})

    def test_sensor_numbers_are_0_unless_asked_for(self):
        self.assertEqual({r[7] for r in split_records(self.raw())}, {0})
        self.assertEqual([r[7] for r in split_records(self.raw("--number"))], list(range(1, 49)))

    def test_numbers_go_on_with_lun_1_and_3_after_254(self):
        records = split_records(self.raw("--number", board=FULLEST))
        self.assertEqual([(r[6], r[7]) for r in records[252:256]], [(0, 253), (0, 254), (1, 1), (1, 2)])
        self.assertEqual([(r[6], r[7]) for r in records[507:509]], [(1, 254), (3, 1)])
        self.assertEqual(len({(r[6], r[7]) for r in records}), len(records))

    def test_a_set_that_runs_out_of_numbers_is_refused(self):
        # 4 backplanes of 200 disks: 800 disk sensors and the static table, more than 3 * 254
        slots = "".join(f"[[disks.backplane]]\nstart_slot = {64 * i}\ndisk_count = 63\n" for i in range(4))
        path = self.board("[board]\nid = 1\n[disks]\nnvme_slots = [\"0-62\", \"64-126\", \"128-190\", \"192-254\"]\n"
                          + slots + "[dimms]\ncount = 254\n")
        line = self.refused(1, "export", "--number", "--board", path)
        self.assertIn("--number has numbers for 762", line)

    def test_the_entry_repeats_the_given_number(self):
        sensors = json.loads(self.out("export", "--board", BASE, "--json", "--number"))["sensors"]
        for sensor in sensors:
            self.assertEqual(bytes.fromhex(sensor["entry"])[4], sensor["sensor_number"])
            self.assertEqual(sensor["sensor_number"], sensor["ordinal"])

    def test_libfreeipmi_reads_the_names_from_the_file(self):
        library = ctypes.CDLL(ctypes.util.find_library("freeipmi"))
        library.ipmi_sdr_ctx_create.restype = ctypes.c_void_p
        context = ctypes.c_void_p(library.ipmi_sdr_ctx_create())
        names = []
        for record in split_records(self.raw(board=TWO_SOCKET)):
            text = ctypes.create_string_buffer(64)
            size = library.ipmi_sdr_parse_id_string(context, record, len(record), text, 63)
            self.assertGreater(size, 0)
            names.append(text.value.decode())
        self.assertEqual(names, self.names(TWO_SOCKET))

    def test_ipmitool_lists_the_file_as_its_own_dump(self):
        """ipmitool takes a dump for the repository (-S) but wants a BMC to talk to: a simulated one without sensors."""
        os.mkdir(self.path("state"))
        port = free_port()
        with open(self.path("lan.conf"), "w", encoding="ascii") as file:
            file.write(LAN_CONF.format(port=port))
        with open(self.path("sim.emu"), "w", encoding="ascii") as file:
            file.write(SIM_EMU)
        with open(self.path("dump"), "wb") as file:
            file.write(self.raw())
        bmc = subprocess.Popen(["ipmi_sim", "-c", "lan.conf", "-f", "sim.emu", "-s", "state", "-n"],
                               cwd=self.folder.name, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
        try:
            deadline = time.monotonic() + 30
            while True:  # until it listens
                done = subprocess.run(["ipmitool", "-I", "lanplus", "-C", "3", "-N", "1", "-R", "2", "-H", "127.0.0.1",
                                       "-p", str(port), "-U", "ipmiusr", "-P", "test", "-S", self.path("dump"), "-c",
                                       "sdr", "elist", "all"], capture_output=True, timeout=60, check=False)
                if done.returncode == 0 or time.monotonic() > deadline:
                    break
        finally:
            bmc.kill()
            bmc.wait()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual([line.split(",")[0] for line in done.stdout.decode().splitlines()], self.names())

    def test_csv_has_stable_columns(self):
        rows = list(csv.reader(io.StringIO(self.out("export", "--board", BASE, "--format", "csv"))))
        self.assertEqual(rows[0], COLUMNS)
        self.assertEqual({len(row) for row in rows}, {len(COLUMNS)})
        self.assertEqual([row[2] for row in rows[1:]], self.names())

    def test_csv_has_values_in_units_and_leaves_absent_ones_empty(self):
        text = self.out("export", "--board", BASE, "--format", "csv")
        rows = {row["name"]: row for row in csv.DictReader(io.StringIO(text))}
        volts, rail, status = rows["CPU_VOLTS_00"], rows["VCC12V"], rows["PSU_STATUS_01"]
        self.assertEqual((volts["uc"], volts["m"], volts["r_exponent"], volts["unit"]), ("2.35", "100", "-4", "V"))
        self.assertEqual((rail["lnr"], rail["lc"], rail["unr"]), ("", "9.6", ""))
        self.assertEqual((status["formula"], status["m"], status["uc"]), ("", "", ""))
        self.assertEqual(rows["INPUT_TEMP"]["formula"], "signed, 1 °C")  # a comma inside: quoted

    def test_json_is_the_list_with_numbered_records(self):
        exported = json.loads(self.out("export", "--board", BASE, "--format", "json"))
        self.assertEqual([s["record_id"] for s in exported["sensors"]], list(range(1, 49)))
        self.assertEqual([s["name"] for s in exported["sensors"]], self.names())

    def test_output_file_holds_what_standard_output_gets(self):
        self.assertEqual(self.out("export", "--board", BASE, "-o", self.path("a.sdr")), "")
        with open(self.path("a.sdr"), "rb") as file:
            self.assertEqual(file.read(), self.raw())
        self.assertEqual(os.listdir(self.folder.name), ["a.sdr"])  # no temporary file stays

    def test_a_dash_is_standard_output(self):
        self.assertEqual(self.raw("-o", "-"), self.raw())

    def test_an_existing_file_keeps_its_mode_and_its_link(self):
        with open(self.path("real"), "w", encoding="ascii"):
            pass
        os.chmod(self.path("real"), 0o640)
        os.symlink("real", self.path("link"))
        self.out("export", "--board", BASE, "-o", self.path("link"))
        self.assertTrue(os.path.islink(self.path("link")))
        self.assertEqual(stat.S_IMODE(os.stat(self.path("real")).st_mode), 0o640)
        self.assertGreater(os.path.getsize(self.path("real")), 0)

    def test_a_failed_pass_writes_no_file(self):
        self.refused(1, "export", "--board", "boards/guards/psu_count_255.toml", "-o", self.path("a.sdr"))
        self.assertEqual(os.listdir(self.folder.name), [])

    def test_a_failed_pass_leaves_the_old_file_alone(self):
        with open(self.path("a.sdr"), "w", encoding="ascii") as file:
            file.write("old")
        self.refused(1, "export", "--board", "boards/guards/psu_count_255.toml", "-o", self.path("a.sdr"))
        with open(self.path("a.sdr"), encoding="ascii") as file:
            self.assertEqual(file.read(), "old")

    def test_an_unwritable_output_is_refused(self):
        line = self.refused(2, "export", "--board", BASE, "-o", self.path("nowhere/a.sdr"))
        self.assertIn("nowhere/a.sdr: cannot write: No such file or directory", line)

    def test_a_folder_as_output_is_refused(self):
        self.assertIn("Is a directory", self.refused(2, "export", "--board", BASE, "-o", self.folder.name))

    def test_an_unknown_format_is_refused(self):
        self.assertIn("xml", self.refused(2, "export", "--board", BASE, "--format", "xml"))

    def test_json_beside_another_format_is_refused(self):
        self.assertIn("contradicts", self.refused_in_json(2, "export", "--board", BASE, "--format", "csv"))

    def test_a_filter_keeps_places_and_numbers_of_the_whole_set(self):
        whole = self.json("export", "--board", BASE, "--number")["sensors"]
        wanted = [s for s in whole if s["name"] in ("ME", "INPUT_TEMP")]
        self.assertEqual(self.json("export", "--board", BASE, "--number", "-f", "me", "-f", "input_t*")["sensors"], wanted)
        raw = self.run_raw("export", "--board", BASE, "--number", "-f", "me", "-f", "input_t*").stdout
        self.assertEqual(raw, b"".join(bytes.fromhex(s["record"]) for s in wanted))
        rows = self.out("export", "--board", BASE, "--format", "csv", "-f", "me").splitlines()
        self.assertEqual([row.split(",")[2] for row in rows], ["name", "ME"])
        self.assertIn("no sensor 'mee'", self.refused(2, "export", "--board", BASE, "-f", "mee"))


if __name__ == "__main__":
    main()
