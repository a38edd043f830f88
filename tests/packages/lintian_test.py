#!/usr/bin/env python3
"""Lintian has nothing to say of the Debian packages: they are made here of what is built already, since compiling them
as Debian does takes too long for every run; tests/packages/deb_test.py does that.

    lintian_test.py BUILD_FOLDER
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

from lintian import said_by_lintian

TREE = pathlib.Path(__file__).resolve().parents[2]
BUILD = None
# In the place of installing what was compiled there.
BUILT_ALREADY = """
override_dh_auto_install:
	DESTDIR=debian/tmp cmake --install {build} --prefix /usr
"""


# Nobody keeps these packages, and other tests run beside this one.
QUICKLY = {"DEB_BUILD_OPTIONS": "noautodbgsym", "DEB_RULES_REQUIRES_ROOT": "no", "DPKG_DEB_COMPRESSOR_LEVEL": "1",
           "DPKG_DEB_THREADS_MAX": "1"}


def run(*command, folder):
    done = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          env=os.environ | QUICKLY)
    if done.returncode:
        raise AssertionError(f"{command}: status {done.returncode}\n{done.stdout}")


class Lintian(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def packages(self):
        """The tree's packages, and the one of its sources."""
        sources = self.root / "plum"
        run(TREE / "tools/package", "sources", sources, folder=TREE)
        run("dpkg-source", "--compression-level=1", "--threads-max=1", "--build", "plum", folder=self.root)
        with open(sources / "debian/rules", "a") as rules:
            rules.write(BUILT_ALREADY.format(build=BUILD))
        (sources / "debian/debhelper-build-stamp").write_text("plum\nplum-store\n")
        run("debian/rules", "binary", folder=sources)
        return [*self.root.glob("*.deb"), *self.root.glob("*.dsc")]

    def test_it_says_nothing_of_the_packages(self):
        packages = self.packages()
        self.assertEqual(sorted(file.name.split("_")[0] for file in packages), ["plum", "plum", "plum-store"])
        self.assertEqual(said_by_lintian(*packages), "")

    def test_it_says_what_is_wrong(self):
        control = self.root / "wrong/DEBIAN/control"
        control.parent.mkdir(parents=True)
        control.write_text("Package: wrong\nVersion: 1\nArchitecture: all\nMaintainer: nobody\nDescription: wrong\n")
        run("dpkg-deb", "--root-owner-group", "--build", "wrong", folder=self.root)
        self.assertIn("no-copyright-file", said_by_lintian(self.root / "wrong.deb"))


if __name__ == "__main__":
    BUILD = pathlib.Path(sys.argv.pop()).resolve()
    unittest.main()
