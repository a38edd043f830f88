#!/usr/bin/env python3
"""The archive and the installer for Windows: made twice, in different places and circumstances, they are the same bytes."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parents[2]
# As a file system lists its folders that keeps them in another order.
FIND = "#!/bin/bash\nset -o pipefail\n/usr/bin/find \"$@\" | tac\n"


def tree_at(place):
    """The tree with the changes in its files, elsewhere."""
    subprocess.run(["git", "clone", "-q", "--shared", TREE, place], check=True)
    changed = subprocess.run(["git", "-C", TREE, "stash", "create"], check=True, stdout=subprocess.PIPE,
                             text=True).stdout.strip()
    if changed:
        subprocess.run(["git", "-C", place, "read-tree", "-u", "--reset", changed], check=True)
    return place


def packages(tree, umask=0o022, **environment):
    subprocess.run([tree / "tools/package", "windows", tree / "made"], check=True, stdout=subprocess.DEVNULL,
                   env=os.environ | environment, umask=umask)
    return {file.name: file.read_bytes() for file in (tree / "made").rglob("*") if file.is_file()}


class WindowsPackages(unittest.TestCase):
    def test_the_same_tree_gives_the_same_bytes(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            first = packages(tree_at(root / "one"))
            (root / "shims").mkdir()
            (root / "shims/find").write_text(FIND)
            (root / "shims/find").chmod(0o755)
            again = packages(tree_at(root / "another/place"), umask=0o077, TZ="Asia/Shanghai",
                             PATH=f"{root / 'shims'}:{os.environ['PATH']}")
        self.assertEqual(sorted(pathlib.Path(name).suffix for name in first), [".exe", ".yaml", ".yaml", ".yaml", ".zip"])
        self.assertEqual(sorted(again), sorted(first))
        self.assertEqual([name for name in first if first[name] != again[name]], [])


if __name__ == "__main__":
    if subprocess.run([TREE / "tools/windows/qt", "--if-built"], stdout=subprocess.DEVNULL).returncode != 0:
        print("Qt for Windows is not built here; tools/windows/qt builds it.")
        sys.exit(77)
    unittest.main()
