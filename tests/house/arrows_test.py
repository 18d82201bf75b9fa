#!/usr/bin/env python3
"""Whether arrows.py notices what is wrong in a small tree with one fault at a time."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

ARROWS = pathlib.Path(__file__).with_name("arrows.py")
ROOMS = """# rooms
platform platform ->
lower host/television/lower -> platform
upper host/television/upper -> lower+
aside host/television/aside -> lower
parts default ->
impl default/*Impl* -> parts
"""


class Arrows(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = pathlib.Path(folder.name)
        self.write("tests/house/rooms.txt", ROOMS)
        self.write("platform/codes.h", "")
        self.write("host/television/lower/ground.h", '#include "codes.h"\n')
        self.write("host/television/aside/other.h", '#include "television/lower/ground.h"\n')
        self.write("host/television/upper/roof.cpp", '#include "television/lower/ground.h"\n#include "codes.h"\n')
        self.write("default/parts.h", "#include <vector>\n")
        self.write("default/SomeImpl.h", '#include "parts.h"\n')
        self.write("CONTRIBUTING.md", self.run_arrows("--table").stdout)

    def write(self, path, text):
        file = self.tree / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def run_arrows(self, *options):
        return subprocess.run([sys.executable, ARROWS, self.tree, *options], capture_output=True, text=True)

    def expect_fault(self, line):
        result = self.run_arrows()
        self.assertEqual(result.returncode, 1, result)
        self.assertEqual(result.stdout.splitlines(), [line])

    def test_arrows_are_followed(self):
        result = self.run_arrows()
        self.assertEqual((result.returncode, result.stdout), (0, "every include follows an arrow\n"), result)

    def test_upwards(self):
        self.write("host/television/upper/roof.h", "")
        self.write("host/television/lower/ground.cpp", '\n#include "television/upper/roof.h"\n')
        self.expect_fault("host/television/lower/ground.cpp:2: lower -> upper is no arrow (television/upper/roof.h)")

    def test_sideways(self):
        self.write("host/television/upper/wall.h", '#include "television/aside/other.h"\n')
        self.expect_fault("host/television/upper/wall.h:1: upper -> aside is no arrow (television/aside/other.h)")

    def test_beyond_what_one_arrow_gives(self):
        self.write("host/television/aside/other.cpp", '#include <codes.h>\n')
        self.expect_fault("host/television/aside/other.cpp:1: aside -> platform is no arrow (codes.h)")

    def test_by_a_relative_path(self):
        self.write("host/television/upper/wall.h", '#include "../aside/other.h"\n')
        self.expect_fault("host/television/upper/wall.h:1: upper -> aside is no arrow (../aside/other.h)")

    def test_the_most_specific_room_counts(self):
        self.write("default/parts.cpp", '#include "SomeImpl.h"\n')
        self.expect_fault("default/parts.cpp:1: parts -> impl is no arrow (SomeImpl.h)")

    def test_a_quoted_include_of_nothing(self):
        self.write("default/parts.cpp", '#include "missing.h"\n')
        self.expect_fault("default/parts.cpp:1: missing.h is no file of the tree")

    def test_a_source_without_a_room(self):
        self.write("tools/new/tool.cpp", "")
        self.expect_fault("tools/new/tool.cpp: is in no room of tests/house/rooms.txt")

    def test_a_page_that_shows_other_rooms(self):
        self.write("CONTRIBUTING.md", "| Room |\n")
        self.expect_fault("CONTRIBUTING.md: does not show the table of rooms as it is (arrows.py TREE --table prints it)")


if __name__ == "__main__":
    unittest.main()
