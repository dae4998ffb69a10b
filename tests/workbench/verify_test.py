# SPDX-License-Identifier: GPL-3.0-or-later
"""Lists of machines: what is wrong in them, and machines that do not answer.  Machines that do are in end_to_end/fleet.py."""
import json
import socket

from support import Workbench, main

LOCK = "boards/sensors.lock"


class Tests(Workbench):
    def setUp(self):
        super().setUp()
        self.silent = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.addCleanup(self.silent.close)
        self.silent.bind(("127.0.0.1", 0))
        self.address = "127.0.0.1:%d" % self.silent.getsockname()[1]

    def hosts(self, text):
        return self.board(text, "hosts.txt")

    def mistakes(self, text):
        """The lines on standard error, without the name of the file."""
        path = self.hosts(text)
        done = self.run_raw("verify", LOCK, "--hosts", path)
        self.assertEqual((done.returncode, done.stdout), (2, b""), text)
        return [line.removeprefix(f"oxa-sensors: {path}") for line in done.stderr.decode().splitlines()]

    def test_a_line_is_host_board_and_profile(self):
        self.assertEqual(self.mistakes("10.0.0.1 base_48\n"),
                         [":1:17: a line is HOST[:PORT] BOARD PROFILE; this one has 2 words"])
        self.assertEqual(self.mistakes("10.0.0.1 base_48 default kestrin\n"),
                         [":1:26: a line is HOST[:PORT] BOARD PROFILE; this one has 4 words"])

    def test_boards_and_profiles_are_those_of_the_lock(self):
        self.assertEqual(self.mistakes("# all\n10.0.0.1 base_49 default\n\n10.0.0.2  base_48 kestrn\n"),
                         [":2:10: the lock has no board 'base_49'; did you mean base_48?",
                          ":4:19: of base_48 the lock has no profile 'kestrn'; did you mean kestrin?"])
        self.assertEqual(self.mistakes("10.0.0.1 base_48 xxxxxxxxxxx\n"),
                         [":1:18: of base_48 the lock has no profile 'xxxxxxxxxxx'; there are astrel, default, durnow, "
                          "ferrisk, kestrin, lumora, 3 more"])

    def test_an_address_that_is_none_is_told(self):
        self.assertEqual(self.mistakes("10.0.0.1:0 base_48 default\n[::1 base_48 default\n"),
                         [":1:1: '10.0.0.1:0': '0' is no port", ":2:1: '[::1': no host; write HOST:PORT"])

    def test_a_host_stands_once(self):
        self.assertEqual(self.mistakes("a base_48 default\nb base_48 default\na base_48 kestrin\n"),
                         [":3:1: line 1 is the same host"])
        self.assertEqual(self.mistakes("a base_48 default\na:623 base_48 default\na:624 base_48 default\n"),
                         [":2:1: line 1 is the same host"])

    def test_a_host_is_printable(self):
        self.assertEqual(self.mistakes("\ufeffa base_48 default\n"),
                         [":1:1: '???a': no host; its characters are printable ASCII"])

    def test_a_list_without_hosts_is_wrong_input(self):
        self.assertEqual(self.mistakes("# nobody\n"), [": no hosts in it; a line for each: HOST[:PORT] BOARD PROFILE"])
        self.assertIn("cannot read", self.refused(2, "verify", LOCK, "--hosts", self.path("none")))
        self.assertIn("cannot read", self.refused(2, "verify", LOCK, "--hosts", self.folder.name))

    def test_no_more_than_twenty_mistakes_are_told(self):
        self.assertEqual(len(self.mistakes("x\n" * 100)), 20)

    def test_a_lock_that_cannot_be_read_is_wrong_input(self):
        path = self.hosts("a base_48 default\n")
        self.assertIn(f"{path}:1:1: no lock file", self.refused(2, "verify", path, "--hosts", path))

    def test_a_password_that_is_none_is_told_once(self):
        path = self.hosts("a base_48 default\nb base_48 default\n")
        self.assertIn("more than 20 bytes", self.refused(2, "verify", LOCK, "--hosts", path, "--password", "x" * 21))

    def test_json_goes_with_no_other_format(self):
        path = self.hosts("a base_48 default\n")
        self.assertIn("contradicts", self.refused_in_json(2, "verify", LOCK, "--hosts", path, "--format", "junit"))

    def silent_machine(self, *words):
        path = self.hosts(f"  {self.address}\tbase_48 default # in the cellar\r\n")
        return self.run_raw("verify", LOCK, "--hosts", path, "--timeout", "1", "--retries", "0", *words)

    def test_a_machine_that_does_not_answer_is_not_read(self):
        done = self.silent_machine("--json")
        data = json.loads(done.stdout)
        machine, = data["machines"]
        self.assertEqual((done.returncode, data["format"], data["not_read"], data["as_locked"]), (1, 1, 1, 0))
        self.assertEqual([machine[key] for key in ("host", "board", "profile", "line", "status", "tries")],
                         [self.address, "base_48", "default", 1, "not read", 1])
        self.assertIn("no session", machine["why"])
        self.assertEqual(data["unread"], [{"what": "unread", "names": [], "text": machine["why"],
                                           "hosts": [self.address]}])

    def test_its_line_and_its_reason_are_told(self):
        lines = self.silent_machine().stdout.decode().splitlines()
        self.assertTrue(lines[1].startswith(f"{self.address}  base_48  default  not read  BMC: no session: "), lines)
        self.assertEqual(lines[3], f"1 machine ({self.address}): not read: " + lines[1].split("not read  ")[1])
        self.assertEqual(lines[-1], "1 machine: 0 as locked, 0 different, 1 not read")

    def test_progress_is_told_on_a_terminal_only(self):
        self.assertEqual(self.silent_machine().stderr, b"")


if __name__ == "__main__":
    main()
