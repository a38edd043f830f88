#!/usr/bin/env python3
"""The version stands in one place, and everything that says one says the same.

    version_test.py PROGRAM ...
"""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml

TREE = pathlib.Path(__file__).resolve().parents[2]
PROGRAMS = {}


def cmake_version():
    return re.search(r"^project\(plum VERSION ([\d.]+)", (TREE / "CMakeLists.txt").read_text(), re.M)[1]


def said_by(source_tree):
    """The version that a build of this tree would say."""
    with tempfile.TemporaryDirectory() as folder:
        output = pathlib.Path(folder, "version.cpp")
        subprocess.run(["cmake", "-DVERSION=1.2.3", f"-DTREE={source_tree}", f"-DOUTPUT={output}",
                        f"-DTEMPLATE={TREE / 'src/version/version.cpp.in'}",
                        "-P", TREE / "cmake/version_source.cmake"], check=True)
        return re.search(r'version = "(.*)";', output.read_text())[1]


class Version(unittest.TestCase):
    def test_programs_say_number_and_commit(self):
        for name, program in PROGRAMS.items():
            said = subprocess.run([program, "--version"], check=True, stdout=subprocess.PIPE, text=True).stdout
            self.assertRegex(said, rf"\A{name} {re.escape(cmake_version())}( \([0-9a-f]{{10}}\+?\))?\n\Z")

    def test_the_lists_of_changes_begin_with_this_version(self):
        debian = (TREE / "debian/changelog").read_text().splitlines()[0]
        self.assertRegex(debian, rf"^plum \({re.escape(cmake_version())}\)")
        readable = re.findall(r"^## (\S+)", (TREE / "CHANGELOG.md").read_text(encoding="utf-8"), re.M)
        self.assertEqual(readable[0], cmake_version())
        releases = xml.parse(TREE / "packaging/linux/plum.metainfo.xml").getroot().iter("release")
        self.assertEqual([release.get("version") for release in releases], readable)

    def test_a_library_of_each_version_is_kept(self):
        """tests/library/earlier_libraries_test.cpp opens them."""
        kept = sorted(folder.name for folder in (TREE / "tests/library/earlier").iterdir())
        self.assertEqual(kept, sorted(re.findall(r"^## (\S+)", (TREE / "CHANGELOG.md").read_text(), re.M)))

    def test_a_tree_of_git_says_its_commit(self):
        with tempfile.TemporaryDirectory() as folder:
            git = ["git", "-C", folder, "-c", "user.name=a", "-c", "user.email=a@b"]
            subprocess.run([*git, "init", "-q"], check=True)
            pathlib.Path(folder, "file").write_text("one")
            subprocess.run([*git, "add", "file"], check=True)
            subprocess.run([*git, "commit", "-q", "-m", "one"], check=True)
            commit = subprocess.run([*git, "rev-parse", "--short=10", "HEAD"], check=True, stdout=subprocess.PIPE,
                                    text=True).stdout.strip()
            self.assertEqual(said_by(folder), f"1.2.3 ({commit})")
            pathlib.Path(folder, "file").write_text("two")
            self.assertEqual(said_by(folder), f"1.2.3 ({commit}+)")

    def test_an_archive_says_the_commit_that_git_wrote_into_it(self):
        for written, said in {"$Format:%H$\n": "1.2.3", "0123456789abcdef0123\n": "1.2.3 (0123456789)",
                              "0123456789abcdef0123+\n": "1.2.3 (0123456789+)"}.items():
            with tempfile.TemporaryDirectory() as folder:
                pathlib.Path(folder, "cmake").mkdir()
                pathlib.Path(folder, "cmake/commit.txt").write_text(written)
                self.assertEqual(said_by(folder), said)

    def test_an_archive_of_this_tree_names_its_commit(self):
        if not (TREE / ".git").exists():
            self.skipTest("this tree is not git's")
        archive = subprocess.Popen(["git", "-C", TREE, "archive", "HEAD", "cmake/commit.txt"], stdout=subprocess.PIPE)
        content = subprocess.run(["tar", "xO"], stdin=archive.stdout, check=True, stdout=subprocess.PIPE).stdout
        self.assertEqual(archive.wait(), 0)
        head = subprocess.run(["git", "-C", TREE, "rev-parse", "HEAD"], check=True, stdout=subprocess.PIPE).stdout
        self.assertEqual(content, head)


if __name__ == "__main__":
    PROGRAMS = {pathlib.Path(program).name: program for program in sys.argv[1:]}
    unittest.main(argv=sys.argv[:1])
