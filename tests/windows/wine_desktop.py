#!/usr/bin/env python3
"""A desktop of its own with Windows' programs on it: an X server, a window manager and a Wine prefix, all of
which go with it.

    wine_desktop.py PROGRAM.exe [ARGUMENT ...]     runs one program there and ends with its exit status
"""

import ctypes
import fcntl
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import termios
import time

HERE = pathlib.Path(__file__).resolve().parent
SOURCE = HERE.parent.parent
PATIENCE = 60  # seconds; only a test that fails waits so long


def until(condition, what="the condition"):
    """Waits until `condition` gives something true and returns that."""
    end = time.monotonic() + PATIENCE
    while not (found := condition()):
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(0.02)
    return found


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def end_with_parent():
    pr_set_pdeathsig = 1
    ctypes.CDLL(None).prctl(pr_set_pdeathsig, signal.SIGKILL)


def is_running(process_id):
    return pathlib.Path(f"/proc/{process_id}").exists()


class WineDesktop:
    def __init__(self, libraries=(), plugins=None, locale="C.UTF-8", screen="1280x800x24"):
        """`libraries` are folders in which Windows' programs look for libraries, `plugins` is Qt's."""
        self._processes = []
        prefix = pathlib.Path(self._output([SOURCE / "tools/windows/prefix"]).strip())
        self.folder = self._new_folder(prefix.parent / "runs")
        self.prefix = self._copy_of(prefix)
        self.environment = {key: value for key, value in os.environ.items()
                            if key not in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "LANG", "LANGUAGE")}
        self.environment.update(
            WINEPREFIX=str(self.prefix), WINEDEBUG="-all", LC_ALL=locale,
            WINEPATH=";".join(windows_path(folder) for folder in libraries))
        if plugins:
            self.environment["QT_PLUGIN_PATH"] = windows_path(plugins)
        self._start_display(screen)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        subprocess.run(["wineserver", "-k"], env=self.environment, check=False, stderr=subprocess.DEVNULL)
        for process in reversed(self._processes):
            process.terminate()
            process.wait()
        # The last of Wine may still be writing.
        until(lambda: shutil.rmtree(self.folder, ignore_errors=True) or not self.folder.exists(),
              "the folder's end")

    def path(self, name):
        """A file of the test's own, as Linux knows it."""
        return self.folder / name

    def start(self, command, terminal=None, **options):
        """Starts a program of Linux on this display; it ends with the desktop. `terminal` is one that it stands in, as
        a descriptor of its end."""
        def prepare():
            end_with_parent()
            if terminal is not None:
                os.setsid()
                fcntl.ioctl(terminal, termios.TIOCSCTTY, 0)

        if terminal is not None:
            options |= {"stdin": terminal, "stdout": terminal, "stderr": terminal}
        process = subprocess.Popen([str(word) for word in command], env=self.environment, preexec_fn=prepare, **options)
        self._processes.append(process)
        return process

    def wine(self, program, *arguments, **options):
        """Starts a program of Windows."""
        return self.start(["wine", program, *arguments], **options)

    def run(self, *command, **options):
        """Runs a program of Linux to its good end and returns what it wrote."""
        return subprocess.run([str(word) for word in command], env=self.environment, check=True,
                              stdout=subprocess.PIPE, timeout=PATIENCE, text=True, **options).stdout

    def run_wine(self, program, *arguments, **options):
        return self.run("wine", program, *arguments, **options)

    @staticmethod
    def _output(command):
        return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout

    @staticmethod
    def _new_folder(runs):
        """What a run left that was killed goes with the next one."""
        runs.mkdir(exist_ok=True)
        for old in runs.iterdir():
            if not is_running(old.name):
                shutil.rmtree(old, ignore_errors=True)
        folder = runs / str(os.getpid())
        folder.mkdir()
        return folder

    def _copy_of(self, prefix):
        """Wine's own programs and libraries are never written to, so they need not be copied."""
        copy = self.folder / "prefix"
        windows = prefix / "drive_c/windows"
        shutil.copytree(prefix, copy, symlinks=True, ignore=lambda folder, names: (
            ["windows"] if pathlib.Path(folder) == windows.parent else []))
        shutil.copytree(windows, copy / "drive_c/windows", symlinks=True, copy_function=os.link)
        return copy

    def _start_display(self, screen):
        reading, writing = os.pipe()
        self.start(["Xvfb", "-displayfd", writing, "-screen", "0", screen, "-nolisten", "tcp", "-noreset"],
                   pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as number:
            self.environment["DISPLAY"] = ":" + number.readline().strip()
        ready = self.path("window-manager-is-ready")
        self.start(["openbox", "--startup", f"touch {ready}"], stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
        until(ready.exists, "the window manager")


def main():
    libraries = os.environ.get("PLUM_WINDOWS_LIBRARIES", "").split(":")
    with WineDesktop(libraries, os.environ.get("PLUM_WINDOWS_PLUGINS")) as desktop:
        signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
        return desktop.wine(*sys.argv[1:]).wait()


if __name__ == "__main__":
    sys.exit(main())
