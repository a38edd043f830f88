#!/usr/bin/env python3
"""The first start of an installed Plum, and later ones, as an ordinary user: what its starter makes and leaves.

    home_test.py STARTER

The program that it starts is one that says how it was called.
"""

import os
import pathlib
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parents[2]
STARTER = None
NOBODY = 65534
PROGRAM = """#!/bin/sh
printf '%s\\n' "$0" "$@"
"""


class Home(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.root.chmod(0o755)
        self.prefix = self.install("usr")
        self.user = self.root / "user"
        self.user.mkdir()
        self.give(self.user)
        self.home = self.user / ".local/share/plum"

    def install(self, name):
        prefix = self.root / name
        lib = prefix / "lib/plum"
        for file in ("plum", "plumkit", "config/module/download/download.exe", "config/module/net/browser/browser.exe"):
            (lib / file).parent.mkdir(parents=True, exist_ok=True)
            (lib / file).write_text(PROGRAM)
            (lib / file).chmod(0o755)
        (prefix / "bin").mkdir()
        shutil.copy(STARTER, prefix / "bin/plum")
        (prefix / "bin/plumkit").symlink_to("plum")
        shutil.copytree(TREE / "apps", prefix / "share/plum/apps")
        for file in (prefix / "share").rglob("*"):
            if file.is_file():
                file.chmod(0o444)
        return prefix

    def give(self, place):
        if os.getuid() == 0:
            os.chown(place, NOBODY, NOBODY)

    def as_user(self):
        return ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"] if os.getuid() == 0 else []

    def start(self, *arguments, program=None, status=0, path=os.environ["PATH"], **environment):
        """What the program was called by, and its arguments; and what was said on standard error."""
        environment = {"HOME": str(self.user), "PATH": path} | environment
        done = subprocess.run([*self.as_user(), "env", "-i", *(f"{k}={v}" for k, v in environment.items()),
                               program or self.prefix / "bin/plum", *arguments],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, cwd=self.root)
        self.assertEqual(done.returncode, status, done.stderr)
        self.said = done.stderr
        return done.stdout.splitlines()

    def write(self, file, content):
        file.write_text(content)
        self.give(file)

    @staticmethod
    def picture(folder):
        """Every name below a folder, with what a write would change."""
        return {str(file.relative_to(folder)): (file.lstat().st_mode, file.lstat().st_mtime_ns, file.lstat().st_size)
                for file in folder.rglob("*")}

    def test_the_first_start_makes_the_program_folder(self):
        before = self.picture(self.prefix)
        self.assertEqual(self.start(), [str(self.home / "plum")])
        self.assertEqual(self.said, "")
        self.assertEqual(os.readlink(self.home / "plum"), str(self.prefix / "lib/plum/plum"))
        module = self.home / "config/module"
        self.assertTrue(os.access(module / "net/browser/browser.exe", os.X_OK))
        self.assertTrue(os.access(module / "download/download.exe", os.X_OK))
        self.assertTrue((self.home / "config/load").is_dir())
        self.assertEqual(sorted(app.name for app in (self.home / "config/apps").iterdir()),
                         sorted(app.name for app in (TREE / "apps").iterdir()))
        self.assertEqual((self.home / "config/apps/hello/main.wf").read_bytes(),
                         (TREE / "apps/hello/main.wf").read_bytes())
        self.assertEqual(self.picture(self.prefix), before)

    def test_starter_apps_and_downloads_are_the_users(self):
        self.start()
        owner = self.user.stat().st_uid
        for file in [*(self.home / "config/apps").rglob("*"), self.home / "config/module/download"]:
            self.assertEqual(file.stat().st_uid, owner, file)
            self.assertTrue(file.stat().st_mode & stat.S_IWUSR, file)

    def test_plumkit_has_the_same_folder(self):
        for _ in range(2):
            self.assertEqual(self.start("run", "a.wf", program=self.prefix / "bin/plumkit"),
                             [str(self.home / "plumkit"), "run", "a.wf"])
        self.assertEqual(self.start(), [str(self.home / "plum")])

    def test_arguments_arrive_as_they_are(self):
        arguments = ["a b.wf", "", "-x", "*", "'\"\\", "中文"]
        self.assertEqual(self.start(*arguments), [str(self.home / "plum"), *arguments])
        self.assertEqual(self.start(*arguments), [str(self.home / "plum"), *arguments])

    def test_later_starts_leave_the_library_alone_and_need_no_other_program(self):
        self.start()
        shutil.rmtree(self.home / "config/apps/hello")
        self.write(self.home / "config/apps/note/main.wf", "//mine\r\n")
        before = self.picture(self.home)
        self.assertEqual(self.start(path="/nowhere", program=self.prefix / "bin/plum"), [str(self.home / "plum")])
        self.assertEqual(self.picture(self.home), before)

    def test_an_empty_library_stays_empty(self):
        self.start()
        shutil.rmtree(self.home / "config/apps")
        (self.home / "config/apps").mkdir()
        (self.home / "plum").unlink()
        self.start()
        self.assertEqual(list((self.home / "config/apps").iterdir()), [])

    def test_the_data_folder_is_the_desktops(self):
        data = self.root / "data"
        data.mkdir()
        self.give(data)
        self.assertEqual(self.start(XDG_DATA_HOME=str(data)), [str(data / "plum/plum")])
        self.assertFalse(self.home.exists())

    def test_a_relative_data_folder_does_not_count(self):
        self.assertEqual(self.start(XDG_DATA_HOME="data"), [str(self.home / "plum")])

    def test_links_follow_a_program_that_has_moved(self):
        self.start()
        self.prefix.rename(self.root / "moved")
        self.start(program=self.root / "moved/bin/plum")
        for name in ("plum", "plumkit", "config/module/net", "config/module/download/download.exe"):
            self.assertEqual(os.readlink(self.home / name), str(self.root / "moved/lib/plum" / name))

    def test_another_program_of_the_users_stays(self):
        other = self.install("other")
        self.start()
        (self.home / "plum").unlink()
        (self.home / "plum").symlink_to(other / "lib/plum/plum")
        self.start()
        self.assertEqual(os.readlink(self.home / "plum"), str(other / "lib/plum/plum"))

    def test_a_portable_folder_in_that_place_stays_portable(self):
        self.start()
        (self.home / "plum").unlink()
        self.write(self.home / "plum", PROGRAM)
        (self.home / "plum").chmod(0o755)
        self.assertEqual(self.start(), [str(self.home / "plum")])
        self.assertFalse((self.home / "plum").is_symlink())

    def test_it_may_be_called_through_a_link(self):
        link = self.root / "p"
        link.symlink_to(self.prefix / "bin/plum")
        self.assertEqual(self.start(program=link), [str(self.home / "plum")])
        self.assertEqual(os.readlink(self.home / "plum"), str(self.prefix / "lib/plum/plum"))

    def test_the_version_needs_no_library(self):
        self.assertEqual(self.start("--version"), [str(self.prefix / "lib/plum/plum"), "--version"])
        self.assertFalse((self.user / ".local").exists())

    def test_a_script_runs_where_no_library_can_be(self):
        installed = str(self.prefix / "lib/plum/plum")
        (self.prefix / "lib/plum").chmod(0o555)
        self.addCleanup((self.prefix / "lib/plum").chmod, 0o755)
        self.assertEqual(self.start("a.wf", HOME="/proc/nothing"), [installed, "a.wf"])
        self.assertIn("there is no library in /proc/nothing/.local/share/plum", self.said)

    def test_nobody_keeps_a_library_where_the_program_lies(self):
        self.give(self.prefix / "lib/plum")
        self.assertEqual(self.start("a.wf", HOME="/proc/nothing", status=1), [])
        self.assertIn("there is no library in /proc/nothing/.local/share/plum, and none can be where", self.said)

    def test_without_a_home_the_root_is_asked(self):
        done = subprocess.run([*self.as_user(), "env", "-i", self.prefix / "bin/plumkit", "--version"],
                              stdout=subprocess.PIPE, text=True)
        self.assertEqual(done.stdout.splitlines(), [str(self.prefix / "lib/plum/plumkit"), "--version"])

    def test_the_first_start_needs_no_other_program(self):
        self.assertEqual(self.start(path="/nowhere"), [str(self.home / "plum")])
        self.assertEqual(self.said, "")

    def test_the_status_is_the_programs(self):
        (self.prefix / "lib/plum/plum").write_text("#!/bin/sh\nexit 42\n")
        self.start("a.wf", status=42)
        self.start("a.wf", status=42)

    def test_rights_are_by_the_users_mask(self):
        for file in (self.prefix / "share").rglob("*"):
            file.chmod(0o555 if file.is_dir() else 0o444)
        self.assertEqual(self.start(program="/bin/sh", *["-c", f"umask 077; exec {self.prefix}/bin/plum"]),
                         [str(self.home / "plum")])
        for file in [self.home, *self.home.rglob("*")]:
            mode = file.lstat().st_mode
            if not stat.S_ISLNK(mode):
                self.assertEqual(stat.S_IMODE(mode), 0o700 if file.is_dir() else 0o600, file)

    def test_what_is_there_stays(self):
        self.start()
        (self.home / "plum").unlink()
        shutil.rmtree(self.home / "config/apps")
        (self.home / "config/apps").symlink_to("/nowhere")
        (self.home / "config/module/net").unlink()
        (self.home / "config/module/net").mkdir()
        self.assertEqual(self.start(), [str(self.home / "plum")])
        self.assertEqual(os.readlink(self.home / "config/apps"), "/nowhere")
        self.assertTrue((self.home / "config/module/net").is_dir())

    def test_a_link_that_has_gone_is_made_anew(self):
        self.start()
        for name in ("plum", "config/module/net", "config/module/download/download.exe"):
            (self.home / name).unlink()
            self.assertEqual(self.start(), [str(self.home / "plum")])
            self.assertTrue((self.home / name).exists())

    def test_starter_apps_that_cannot_be_read_leave_none_of_them(self):
        file = self.prefix / "share/plum/apps/hello/main.wf"
        file.chmod(0)
        self.assertEqual(self.start("a.wf"), [str(self.prefix / "lib/plum/plum"), "a.wf"])
        self.assertIn(f"{file}", self.said)
        self.assertIn(f"there is no library in {self.home}; starting without one.", self.said)
        self.assertEqual(sorted(each.name for each in (self.home / "config").iterdir()), ["load", "module"])
        file.chmod(0o444)
        self.assertEqual(self.start("a.wf"), [str(self.home / "plum"), "a.wf"])
        self.assertTrue((self.home / "config/apps/hello/main.wf").is_file())

    def test_a_file_in_the_place_of_the_library(self):
        self.write(self.user / ".local", "mine")
        self.assertEqual(self.start("a.wf"), [str(self.prefix / "lib/plum/plum"), "a.wf"])
        self.assertIn(f"{self.user}/.local", self.said)
        self.assertIn("Not a directory", self.said)
        self.assertEqual((self.user / ".local").read_text(), "mine")

    def test_a_path_that_is_too_long_is_none(self):
        self.assertEqual(self.start("a.wf", HOME="/" + "a" * 5000), [str(self.prefix / "lib/plum/plum"), "a.wf"])
        self.assertIn("File name too long", self.said)

    def test_a_package_without_its_program_says_so(self):
        self.start()
        (self.prefix / "lib/plum/plum").unlink()
        self.assertEqual(self.start("a.wf", status=127), [])
        self.assertIn(f"{self.home}/plum", self.said)

    def test_a_program_that_is_none_says_so(self):
        self.start()
        (self.prefix / "lib/plum/plum").write_bytes(b"\x7fELF")
        self.assertEqual(self.start("a.wf", status=126), [])
        self.assertIn(f"{self.home}/plum", self.said)

    def test_first_starts_at_once_make_one_whole_library(self):
        command = [*self.as_user(), "env", "-i", f"HOME={self.user}", f"PATH={os.environ['PATH']}",
                   self.prefix / "bin/plum"]
        starts = [subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
                  for _ in range(12)]
        for start in starts:
            self.assertEqual(start.communicate(), (f"{self.home / 'plum'}\n", ""))
        self.assertEqual(sorted(file.name for file in (self.home / "config").iterdir()), ["apps", "load", "module"])
        self.assertEqual(sorted(str(file.relative_to(self.home / "config/apps"))
                                for file in (self.home / "config/apps").rglob("*")),
                         sorted(str(file.relative_to(TREE / "apps")) for file in (TREE / "apps").rglob("*")))


if __name__ == "__main__":
    STARTER = sys.argv.pop()
    unittest.main()
