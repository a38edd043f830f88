"""What the tests of the whole program have alike: a copy of the program folder on a drive of Wine's."""

import os
import pathlib
import shutil
import subprocess
import unittest

from wine_desktop import PATIENCE, WineDesktop, until

PROGRAM_FOLDER = pathlib.Path(os.environ["PLUM_WINDOWS_FOLDER"])
PEER = pathlib.Path(os.environ["PLUM_WINDOWS_PEER"])


class PlumTest(unittest.TestCase):
    locale = "C.UTF-8"
    folder = "Plum"  # of the program on drive C

    def setUp(self):
        self.desktop = WineDesktop(locale=self.locale)
        self.addCleanup(self.desktop.close)
        self.drive = self.desktop.prefix / "drive_c"
        self.plum = self.drive / self.folder
        shutil.copytree(PROGRAM_FOLDER, self.plum, copy_function=self.link_or_copy)

    @staticmethod
    def link_or_copy(source, target):
        """Libraries are large and only read."""
        if source.endswith((".dll", ".exe")):
            try:
                return os.link(source, target)
            except OSError:
                pass
        return shutil.copy2(source, target)

    def write(self, name, content):
        """Writes a file below the program folder and returns its path on drive C."""
        path = self.plum / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return self.on_drive(path)

    def on_drive(self, path):
        return "C:\\" + str(path.relative_to(self.drive)).replace("/", "\\")

    def read(self, name):
        """What is in a file below the program folder; nothing while there is none."""
        path = self.plum / name
        return path.read_bytes() if path.exists() else b""

    def start_plum(self, *arguments, **options):
        return self.desktop.wine(self.plum / "plum.exe", *arguments, **options)

    def run_script(self, *lines, encoding="utf-8"):
        """Runs a script to its end; what it says is an error."""
        self.assertEqual(self.said_by(self.write("test.wf", "".join(line + "\r\n" for line in lines)
                                                 .encode(encoding))), "")

    def said_by(self, script):
        """Runs a script to its good end and returns what the program wrote to its standard error."""
        said = self.desktop.path("said")
        with said.open("wb") as stream:
            program = self.start_plum(script, stderr=stream)
            self.assertEqual(program.wait(timeout=PATIENCE), 0)
        return said.read_text(errors="replace").strip()

    # The other side, with the eyes and hands of an X program.

    def xdotool(self, *words):
        return subprocess.run(["xdotool", *[str(word) for word in words]], env=self.desktop.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                              check=False).stdout.strip()

    def press(self, *keys):
        self.xdotool("key", *keys)

    def windows_of(self, program):
        """The windows of a program of Windows that are on the screen."""
        return self.xdotool("search", "--onlyvisible", "--class", f"^{program}$").split()

    def has_keyboard(self, program):
        return self.xdotool("getactivewindow") in self.windows_of(program)

    def start_notepad(self, *arguments, **options):
        self.desktop.wine("notepad", *arguments, **options)
        until(lambda: self.has_keyboard("notepad.exe"), "notepad")
        until(lambda: self.focus() == "Edit", "notepad's text")

    def focus(self):
        """The class of the control that has the keyboard; "dialog" behind it when that is in a dialog."""
        return self.desktop.run_wine(PEER, "focus").strip()

    def save_as(self, name):
        """Answers notepad's dialog for a file of letters in the folder in which it was started."""
        until(lambda: len(self.windows_of("notepad.exe")) > 1, "the dialog")
        dialog = self.windows_of("notepad.exe")
        until(lambda: self.xdotool("getactivewindow") in dialog and self.focus() == "Edit dialog",
              "the dialog's entry")
        keys = ",".join(f'"{letter}"' for letter in name)
        self.run_script(f'keyboard.key {keys},"enter"')

    def clipboard(self):
        return subprocess.run(["xclip", "-o", "-selection", "clipboard", "-target", "UTF8_STRING"],
                              env=self.desktop.environment, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, check=False).stdout.decode()

    def take_screenshot(self, name):
        self.desktop.run("import", "-window", "root", self.desktop.path(name))
        return self.desktop.path(name)
