# SPDX-License-Identifier: GPL-3.0-or-later
"""The SDR repository that the simulator is given, command by command: what readers and writers rely on."""
from bmc import BmcTest, main

NAME = b"PSU9_FRU"
LOCATOR = bytes([0, 0, 0x51, 0x11, 11 + len(NAME), 0x20, 25, 0x80, 25, 0, 0x10, 0, 10, 9, 0, 0xC0 + len(NAME)]) + NAME
GET_INFO, GET_ALLOCATION, RESERVE, GET, ADD, ADD_PART, DELETE, CLEAR = range(0x20, 0x28)


def compact(number, name=b"S"):
    return (bytes([0, 0, 0x51, 2, 27 + len(name), 0x20, 0, number, 4, 0, 0x63, 0xC0, 0x0D, 0x6F]) + bytes(17) +
            bytes([0xC0 + len(name)]) + name)


class Tests(BmcTest):
    def reserve(self):
        return self.raw(RESERVE)

    def add_many(self, record, count):
        line = "raw 0x0a 0x24 " + " ".join(f"0x{byte:02x}" for byte in record) + "\n"
        with open(self.path("adds"), "w", encoding="ascii") as file:
            file.write(line * count)
        self.ipmitool("exec", self.path("adds"))

    def ids(self):
        return [r[0] | r[1] << 8 for r in self.dump()]

    def test_an_empty_repository_says_so(self):
        self.assertEqual(self.raw(GET_INFO)[:3], b"\x51\0\0")
        self.assertEqual(self.raw(GET, 0, 0, 0, 0, 0, 5), 0xCB)

    def test_adding_gives_ids_from_1(self):
        self.assertEqual([self.raw(ADD, *LOCATOR) for _ in range(3)], [b"\1\0", b"\2\0", b"\3\0"])
        self.assertEqual(self.raw(GET_INFO)[1:3], b"\3\0")

    def test_ids_are_not_used_again(self):
        self.raw(ADD, *LOCATOR)
        self.raw(ADD, *LOCATOR)
        self.raw(DELETE, 0, 0, 2, 0)
        self.assertEqual(self.raw(ADD, *LOCATOR), b"\3\0")
        self.assertEqual(self.ids(), [1, 3])

    def test_a_record_whose_length_byte_differs_from_its_length_is_refused(self):
        self.assertEqual(self.raw(ADD, *LOCATOR[:-1]), 0xC7)
        self.assertEqual(self.raw(ADD, *LOCATOR, 0), 0xC7)
        self.assertEqual(self.raw(ADD, *LOCATOR[:5]), 0xC7)
        self.assertEqual(self.raw(ADD), 0xC7)

    def test_a_record_of_64_bytes_is_taken_and_one_of_65_is_not(self):
        self.assertEqual(self.raw(ADD, 0, 0, 0x51, 0xC0, 59, *range(59)), b"\1\0")
        self.assertEqual(self.raw(ADD, 0, 0, 0x51, 0xC0, 60, *range(60)), 0xC8)
        self.assertEqual(self.dump()[0][5:], bytes(range(59)))

    def test_deleting_answers_with_the_id_and_leaves_the_others(self):
        for _ in range(3):
            self.raw(ADD, *LOCATOR)
        self.assertEqual(self.raw(DELETE, 0, 0, 2, 0), b"\2\0")
        self.assertEqual(self.ids(), [1, 3])
        self.assertEqual(self.raw(DELETE, 0, 0, 2, 0), 0xCB)

    def test_a_reservation_ends_with_the_next_one_and_with_a_delete(self):
        self.raw(ADD, *LOCATOR)
        self.raw(ADD, *LOCATOR)
        first, second = self.reserve(), self.reserve()
        self.assertNotEqual(first, second)
        self.assertEqual(self.raw(GET, *first, 1, 0, 5, 4), 0xC5)
        self.assertEqual(self.raw(DELETE, *first, 1, 0), 0xC5)
        self.assertEqual(self.raw(GET, *second, 1, 0, 5, 4), b"\2\0\x20\x19\x80\x19")
        self.assertEqual(self.raw(DELETE, *second, 1, 0), b"\1\0")
        self.assertEqual(self.raw(GET, *second, 2, 0, 5, 4), 0xC5)

    def test_the_first_bytes_are_read_without_a_reservation(self):
        self.raw(ADD, *LOCATOR)
        self.assertEqual(self.raw(GET, 0, 0, 1, 0, 0, 5), b"\xff\xff\1\0\x51\x11\x13")

    def test_record_0_is_the_first_and_ffff_the_last(self):
        for _ in range(3):
            self.raw(ADD, *LOCATOR)
        self.assertEqual(self.raw(GET, 0, 0, 0, 0, 0, 2), b"\2\0\1\0")
        self.assertEqual(self.raw(GET, 0, 0, 0xFF, 0xFF, 0, 2), b"\xff\xff\3\0")

    def test_more_than_the_simulator_can_send_is_refused_and_it_lives_on(self):
        self.raw(ADD, 0, 0, 0x51, 0xC0, 59, *range(59))
        self.assertEqual(self.raw(GET, 0, 0, 1, 0, 0, 0xFF), 0xCA)
        self.assertEqual(self.raw(GET, 0, 0, 1, 0, 0, 34), 0xCA)
        self.assertEqual(len(self.raw(GET, 0, 0, 1, 0, 0, 33)), 2 + 33)

    def test_an_offset_behind_the_record_is_refused(self):
        self.raw(ADD, *LOCATOR)
        self.assertEqual(self.raw(GET, *self.reserve(), 1, 0, len(LOCATOR), 1), 0xC9)

    def test_a_record_can_come_in_parts(self):
        self.assertEqual(self.raw(ADD_PART, 0, 0, 0, 0, 0, 0, *LOCATOR[:9]), b"\1\0")
        self.assertEqual(self.raw(GET_INFO)[1:3], b"\0\0")
        self.assertEqual(self.raw(ADD_PART, 0, 0, 1, 0, 9, 1, *LOCATOR[9:]), b"\1\0")
        self.assertEqual([r[2:] for r in self.dump()], [LOCATOR[2:]])

    def test_parts_that_do_not_fit_together_are_refused(self):
        self.raw(ADD_PART, 0, 0, 0, 0, 0, 0, *LOCATOR[:9])
        self.assertEqual(self.raw(ADD_PART, 0, 0, 1, 0, 8, 1, *LOCATOR[9:]), 0xC9)
        self.assertEqual(self.raw(ADD_PART, 0, 0, 2, 0, 9, 1, *LOCATOR[9:]), 0xCB)
        self.assertEqual(self.raw(ADD_PART, 0, 0, 1, 0, 9, 1, *LOCATOR[9:-1]), 0x80)
        self.assertEqual(self.raw(GET_INFO)[1:3], b"\0\0")

    def test_clearing_leaves_an_empty_repository_that_takes_records_again(self):
        self.raw(ADD, *LOCATOR)
        self.assertEqual(self.raw(CLEAR, *self.reserve(), *b"CLR", 0xAA), b"\1")
        self.assertEqual(self.raw(GET_INFO)[1:3], b"\0\0")
        self.assertEqual(self.raw(ADD, *LOCATOR), b"\2\0")
        self.assertEqual(self.ids(), [2])

    def test_clearing_wants_its_letters(self):
        self.assertEqual(self.raw(CLEAR, 0, 0, *b"CLS", 0xAA), 0xCC)

    def test_sensors_without_number_get_the_next_one_that_is_free(self):
        self.raw(ADD, *compact(2))
        self.raw(ADD, *compact(0))
        self.raw(ADD, *compact(0))
        self.assertEqual([(r[0], r[6], r[7]) for r in self.dump()], [(1, 0, 2), (2, 0, 1), (3, 0, 3)])

    def test_a_number_is_not_given_again_while_there_are_others(self):
        self.raw(ADD, *compact(0))
        self.raw(DELETE, 0, 0, 1, 0)
        self.raw(ADD, *compact(0))
        self.assertEqual([(r[0], r[7]) for r in self.dump()], [(2, 2)])

    def test_the_255th_sensor_without_number_goes_to_the_next_lun(self):
        self.add_many(compact(0), 510)
        numbers = [(r[6], r[7]) for r in self.dump()]
        self.assertEqual(numbers, [(lun, n) for lun in (0, 1, 3) for n in range(1, 255)][:510])

    def test_the_1024th_record_is_refused_until_another_goes(self):
        self.add_many(LOCATOR, 1022)
        self.assertEqual(self.raw(ADD, *LOCATOR), b"\xff\x03")
        self.assertEqual(self.raw(ADD, *LOCATOR), 0xC4)
        self.assertEqual(self.raw(GET_INFO)[1:5], b"\xff\x03\0\0")  # 1023 records, no room
        self.raw(DELETE, 0, 0, 7, 0)
        self.assertEqual(len(self.raw(ADD, *LOCATOR)), 2)

    def test_a_number_that_comes_with_the_record_stays(self):
        self.raw(ADD, *compact(200))
        self.raw(ADD, *compact(200))
        self.assertEqual([r[7] for r in self.dump()], [200, 200])

    def test_every_change_moves_a_time_stamp(self):
        stamps = [self.raw(GET_INFO)[5:13]]
        for change in ((ADD, *LOCATOR), (ADD, *LOCATOR), (DELETE, 0, 0, 1, 0), (CLEAR, 0, 0, *b"CLR", 0xAA)):
            self.raw(*change)
            stamps.append(self.raw(GET_INFO)[5:13])
        self.assertEqual(len(set(stamps)), len(stamps))

    def test_room_and_size_of_what_is_left_are_told(self):
        before = self.raw(GET_ALLOCATION)
        self.raw(ADD, *LOCATOR)
        after = self.raw(GET_ALLOCATION)
        self.assertEqual(before, bytes.fromhex("ff03 4000 ff03 ff03 01"))  # 1023 units of 64 bytes
        self.assertEqual(after, bytes.fromhex("ff03 4000 fe03 fe03 01"))


if __name__ == "__main__":
    main()
