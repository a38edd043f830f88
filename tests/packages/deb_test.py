#!/usr/bin/env python3
"""The Debian packages: made twice they are the same bytes, and lintian has nothing to say.

    deb_test.py FOLDER      leaves the packages in FOLDER
"""

import pathlib
import subprocess
import sys
import tempfile
import unittest

from lintian import said_by_lintian

TREE = pathlib.Path(__file__).resolve().parents[2]
FOLDER = None


def build(folder):
    subprocess.run([TREE / "tools/package", "deb", folder], check=True, stdout=subprocess.DEVNULL)
    return {package.name: package.read_bytes() for package in pathlib.Path(folder).glob("*.deb")}


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.packages = build(FOLDER)

    def test_there_are_the_programs_and_their_symbols(self):
        self.assertEqual(sorted(name.split("_")[0] for name in self.packages),
                         ["plum", "plum-dbgsym", "plum-store", "plum-store-dbgsym"])

    def test_lintian_says_nothing(self):
        changes = list(pathlib.Path(FOLDER).glob("*.changes"))
        self.assertEqual(len(changes), 1)
        self.assertEqual(said_by_lintian(changes[0]), "")

    def test_nothing_of_the_project_is_written_by_a_script_of_the_package(self):
        for name in ("plum", "plum-store"):
            package = next(pathlib.Path(FOLDER).glob(f"{name}_*.deb"))
            control = subprocess.run(["dpkg-deb", "--ctrl-tarfile", package], check=True, stdout=subprocess.PIPE)
            files = subprocess.run(["tar", "t"], input=control.stdout, check=True, stdout=subprocess.PIPE).stdout
            self.assertEqual(sorted(files.decode().split()), ["./", "./control", "./md5sums"])

    def test_a_second_build_elsewhere_gives_the_same_bytes(self):
        with tempfile.TemporaryDirectory(dir=pathlib.Path(FOLDER).parent) as folder:
            again = build(folder)
        self.assertEqual(sorted(again), sorted(self.packages))
        self.assertEqual([name for name in again if again[name] != self.packages[name]], [])


if __name__ == "__main__":
    FOLDER = sys.argv.pop()
    unittest.main()
