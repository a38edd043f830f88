#!/usr/bin/env python3
"""The life of an installed Plum on Wine, with the program that people get: tests/packages/installer_test.py has the
installer's other cases, with a small program in its place.
"""

import os
import re
import shutil
import subprocess
import unittest

from plum_test import PROGRAM_FOLDER, PlumTest
from wine_desktop import SOURCE, WineDesktop, until

PATIENCE = 240  # seconds, for what unpacks everything
UNINSTALL = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Plum"
CLASSES = r"HKCU\Software\Classes"


class Installed(PlumTest):
    def setUp(self):
        self.desktop = WineDesktop()
        self.addCleanup(self.desktop.close)
        self.drive = self.desktop.prefix / "drive_c"

    def install(self, program_folder):
        installer = self.desktop.path("Plum-setup.exe")
        subprocess.run([SOURCE / "tools/package", "installer", program_folder, installer], check=True)
        self.assertEqual(self.desktop.wine(installer, "/S").wait(timeout=PATIENCE), 0)
        self.plum, = self.drive.glob("users/*/AppData/Local/Plum")

    def next_version(self):
        """The same with a program that is other bytes."""
        folder = self.desktop.path("next")
        shutil.copytree(PROGRAM_FOLDER, folder)
        for name in ("plum.exe", "Qt6Core.dll"):
            with open(folder / name, "ab") as file:
                file.write(b"next")
        return folder

    def value(self, key, *name):
        """A value of the registry, by default the nameless one of its key; None where there is none."""
        said = self.desktop.run("sh", "-c", 'wine reg query "$@" || true', "sh", key, *(["/v", *name] if name else ["/ve"]))
        found = re.search(r"REG_\w+ +(.*?)\r?$", said, re.M)
        return found[1] if found else None

    def open_by_type(self, file):
        """Does what a double click does. Wine 8 itself does not look for types where one user's are."""
        kind = self.value(rf"{CLASSES}\{file[file.rindex('.'):]}")
        command = self.value(rf"{CLASSES}\{kind}\shell\open\command")
        program, words = re.fullmatch(r'"([^"]*)"(.*) "%1"', command).groups()
        self.desktop.run_wine(program, *words.split(), file)

    @staticmethod
    def version_of(program):
        """What the system shows of it."""
        found = re.search("ProductVersion\0+([\\d.]+)\0", program.read_bytes().decode("utf-16-le", errors="replace"))
        return found[1] if found else None

    def start_launcher(self):
        launcher = self.start_plum()
        until(lambda: self.has_keyboard("plum.exe"), "the launcher")
        return launcher

    def enter(self, text):
        self.xdotool("type", text)
        self.press("Return")

    def leaves_word(self, line):
        """A script that sets its entry by this line and writes it down."""
        return f'{line}\r\nfile.save "{self.on_drive(self.plum)}\\ran","entry","append"\r\n'

    def programs(self):
        """What is there but the library; folders may go meanwhile."""
        files = [os.path.relpath(os.path.join(folder, name), self.plum)
                 for folder, _, names in os.walk(self.plum) for name in names]
        return sorted(file for file in files if not file.startswith(("config/apps", "config/load")))

    def test_it_runs_scripts_takes_the_next_version_and_goes(self):
        self.install(PROGRAM_FOLDER)
        self.assertTrue((self.plum / "config/apps/hello/main.wf").is_file())
        for program in (self.desktop.path("Plum-setup.exe"), self.plum / "plum.exe"):
            self.assertEqual(self.version_of(program), self.value(UNINSTALL, "DisplayVersion"))
        launcher = self.start_launcher()
        shown = self.windows_of("plum.exe")

        script = self.write("my script.wf", self.leaves_word('set.entry "it ran"'))
        self.open_by_type(script)
        until(lambda: set(self.windows_of("plum.exe")) - set(shown), "the question whether to run it")
        until(lambda: self.has_keyboard("plum.exe") and self.xdotool("getactivewindow") not in shown, "its keyboard")
        # "Edit" is under Enter, and "Run" before it.
        self.press("shift+Tab", "space")
        until(lambda: self.read("ran") == b"it ran\r\n", "the script")
        os.remove(self.plum / "ran")
        os.remove(self.plum / "my script.wf")

        self.write("config/apps/mine/main.wf", self.leaves_word("set.entry os.path_package_name"))
        shutil.rmtree(self.plum / "config/apps/hello")
        following = self.next_version()
        self.install(following)
        self.assertIsNone(launcher.poll())
        for name in ("plum.exe", "Qt6Core.dll"):
            self.assertEqual((self.plum / name).read_bytes(), (following / name).read_bytes(), name)
        self.assertTrue((self.plum / "config/apps/mine/main.wf").is_file())
        self.assertFalse((self.plum / "config/apps/hello").exists())
        launcher.kill()
        launcher.wait()
        until(lambda: not self.windows_of("plum.exe"), "its end")
        launcher = self.start_launcher()
        self.enter("mine")
        until(lambda: self.read("ran") == b"mine\r\n", "an app in the next version")
        os.remove(self.plum / "ran")
        launcher.kill()
        launcher.wait()

        kept = sorted((self.plum / "config/apps").rglob("*"))
        self.desktop.wine(self.plum / "uninstall.exe", "/S").wait(timeout=PATIENCE)
        # It goes on in a copy of its own, so that it can delete itself.
        until(lambda: self.programs() == [], "the end of the programs")
        until(lambda: self.value(UNINSTALL, "DisplayName") is None, "the end of its entry")
        self.assertIsNone(self.value(rf"{CLASSES}\.wf"))
        self.assertEqual(sorted((self.plum / "config/apps").rglob("*")), kept)
        self.assertFalse(list(self.drive.rglob("Plum.lnk")))


if __name__ == "__main__":
    unittest.main()
