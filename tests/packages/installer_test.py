#!/usr/bin/env python3
"""The installer for Windows, on Wine: installation, an update over a running program, removal.

The program that it installs is a small one that writes down how it was started. Wine 8 does not look for types of files
where one user's are, so the command that belongs to a script's type is read and run here.
"""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

TREE = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = r"""
#include <stdio.h>
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR line, int show)
{
    char place[MAX_PATH + 20];
    GetModuleFileNameA(NULL, place, MAX_PATH);
    strcpy(strrchr(place, '\\') + 1, "config\\started.txt");
    FILE *file = fopen(place, "a");
    fprintf(file, "%s|%s\n", VERSION, line);
    fclose(file);
    if (!*line)
        Sleep(INFINITE);
    return 0;
}
"""
UNINSTALL = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Plum"
RUN = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Run"


class Installer(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.root = pathlib.Path(folder.name)
        cls.installers = [cls.make("one"), cls.make("two")]
        cls.server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "800x600x24", "-noreset"],
                                      stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        cls.addClassCleanup(cls.server.wait)
        cls.addClassCleanup(cls.server.terminate)
        cls.display = ":" + cls.server.stdout.readline().strip()
        cls.clean_prefix = subprocess.run([TREE / "tools/windows/prefix"], check=True, stdout=subprocess.PIPE,
                                          text=True).stdout.strip()

    @classmethod
    def make(cls, version):
        """An installer of a program folder whose program says this version."""
        folder = cls.root / version
        source = cls.root / f"{version}.c"
        source.write_text(PROGRAM)
        for part in ("config/apps/hello", "config/load", "config/module/download", "platforms"):
            (folder / part).mkdir(parents=True)
        subprocess.run(["x86_64-w64-mingw32-gcc", f'-DVERSION="{version}"', "-mwindows", source,
                        "-o", folder / "plum.exe"], check=True)
        shutil.copy(folder / "plum.exe", folder / "plumkit.exe")
        shutil.copy(folder / "plum.exe", folder / "config/module/download/download.exe")
        (folder / "platforms/qwindows.dll").write_text(version)
        (folder / "config/apps/hello/main.wf").write_text("//hello\r\n")
        return cls.pack(folder, cls.root / f"Plum-{version}.exe")

    @staticmethod
    def pack(folder, installer, **environment):
        subprocess.run([TREE / "tools/package", "installer", folder, installer], check=True, env=os.environ | environment)
        return installer

    def setUp(self):
        self.prefix = self.root / "prefix"
        shutil.copytree(self.clean_prefix, self.prefix, symlinks=True)
        self.addCleanup(shutil.rmtree, self.prefix)
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.root), "DISPLAY": self.display,
                            "WINEPREFIX": str(self.prefix), "WINEDEBUG": "-all", "LC_ALL": "C.UTF-8"}
        self.addCleanup(subprocess.run, ["wineserver", "-k"], env=self.environment)

    def wine(self, *command, check=True):
        return subprocess.run(["wine", *command], env=self.environment, check=check, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True, timeout=120).stdout

    def install(self, number, *options):
        self.wine(self.installers[number], "/S", *options)
        self.folder = next(self.prefix.glob("drive_c/users/*/AppData/Local/Plum"))

    def uninstall(self, *options):
        self.wine(self.folder / "uninstall.exe", "/S", *options)
        # It goes on in a copy of its own, so that it can delete itself.
        self.wait(lambda: self.value(UNINSTALL, "DisplayName") is None)

    def wait(self, holds):
        end = time.monotonic() + 60
        while not holds():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.1)

    def value(self, key, name):
        """A value of the registry; None where there is none."""
        said = self.wine("reg", "query", key, *(["/v", name] if name else ["/ve"]), check=False)
        found = re.search(r"REG_\w+ +(.*?)\r?$", said, re.M)
        return found[1] if found else None

    def files(self):
        """Folders may go meanwhile."""
        return sorted(os.path.relpath(os.path.join(folder, name), self.folder)
                      for folder, _, names in os.walk(self.folder) for name in names)

    def started(self):
        file = self.folder / "config/started.txt"
        return file.read_text().splitlines() if file.exists() else []

    def start(self, *arguments):
        return subprocess.Popen(["wine", self.folder / "plum.exe", *arguments], env=self.environment,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def test_an_installation_is_complete(self):
        self.install(0)
        self.assertEqual(self.files(), ["config/apps/hello/main.wf", "config/module/download/download.exe",
                                        "platforms/qwindows.dll", "plum.exe", "plumkit.exe", "uninstall.exe"])
        self.assertTrue(list(self.prefix.rglob("Start Menu/Programs/Plum.lnk")))
        version = re.search(r"VERSION ([\d.]+)", (TREE / "CMakeLists.txt").read_text().split("project(plum ")[1])[1]
        self.assertEqual(self.value(UNINSTALL, "DisplayVersion"), version)
        self.assertIsNone(self.value(RUN, "Plum"))

    def test_files_are_opened_by_their_types(self):
        self.install(0)
        for file, started in ((r"C:\my files\a.wf", r'one|open "C:\my files\a.wf"'),
                              (r"C:\my files\a.wfp", r'one|open "C:\my files\a.wfp"')):
            kind = self.value(rf"HKCU\Software\Classes\.{file.split('.')[1]}", "")
            command = self.value(rf"HKCU\Software\Classes\{kind}\shell\open\command", "")
            program, words = re.fullmatch(r'"([^"]*)"(.*) "%1"', command).groups()
            self.wine(program, *words.split(), file)
            self.assertEqual(self.started()[-1], started)

    def test_starting_with_windows_is_a_choice_that_updates_keep(self):
        self.install(0, "/AUTOSTART")
        self.assertIn(r"Plum\plum.exe", self.value(RUN, "Plum"))
        self.install(1)
        self.assertIn(r"Plum\plum.exe", self.value(RUN, "Plum"))

    def test_an_update_over_a_running_program_keeps_the_library(self):
        self.install(0)
        running = self.start()
        self.wait(lambda: self.started() == ["one|"])
        (self.folder / "config/apps/mine").mkdir()
        (self.folder / "config/apps/mine/main.wf").write_text("//mine\r\n")
        shutil.rmtree(self.folder / "config/apps/hello")
        self.install(1)
        self.assertIsNone(running.poll())
        self.assertEqual((self.folder / "platforms/qwindows.dll").read_text(), "two")
        self.wine(self.folder / "plum.exe", "x")
        self.assertEqual(self.started(), ["one|", "two|x"])
        self.assertEqual([file for file in self.files() if "apps" in file], ["config/apps/mine/main.wf"])
        running.send_signal(signal.SIGKILL)
        running.wait()

    def test_a_removal_leaves_the_library_and_nothing_else(self):
        self.install(0, "/AUTOSTART")
        self.uninstall()
        self.wait(lambda: self.files() == ["config/apps/hello/main.wf"])
        for key, name in ((RUN, "Plum"), (UNINSTALL, "DisplayName"),
                          *((rf"HKCU\Software\Classes\{kind}", "") for kind in
                            (".wf", ".wfp", "Plum.Script", "Plum.Package"))):
            self.assertIsNone(self.value(key, name), key)
        self.assertFalse(list(self.prefix.rglob("Plum.lnk")))

    def test_a_removal_takes_the_library_along_when_asked(self):
        self.install(0)
        self.uninstall("/LIBRARY")
        self.wait(lambda: not self.folder.exists())

    def test_a_type_that_another_program_has_taken_stays(self):
        self.install(0)
        self.wine("reg", "add", r"HKCU\Software\Classes\.wf", "/ve", "/d", "Other", "/f")
        self.uninstall()
        self.assertEqual(self.value(r"HKCU\Software\Classes\.wf", ""), "Other")

    def test_the_same_files_give_the_same_bytes(self):
        for copy in ("first", "second"):
            shutil.copytree(self.root / "one", self.root / copy, copy_function=shutil.copyfile)
            (self.root / copy / "config/apps/bye").mkdir()
            for file in ("main.wf", "about.json", "bye.png"):
                (self.root / copy / "config/apps/bye" / file).write_text(file)
        # A file system that lists its folders in another order.
        (self.root / "find").write_text('#!/bin/bash\nset -o pipefail\n/usr/bin/find "$@" | tac\n')
        (self.root / "find").chmod(0o755)
        again = self.pack(self.root / "second", self.root / "Plum-second.exe", PATH=f"{self.root}:{os.environ['PATH']}")
        self.assertEqual(again.read_bytes(), self.pack(self.root / "first", self.root / "Plum-first.exe").read_bytes())


if __name__ == "__main__":
    unittest.main()
