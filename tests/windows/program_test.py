#!/usr/bin/env python3
"""The whole program on Wine, driven from outside as a user does:
    program_test.py Launcher.test_runs_the_app_whose_keyword_is_typed
"""

import contextlib
import http.server
import itertools
import os
import pty
import shutil
import subprocess
import threading
import time
import unittest

from plum_test import PEER, PlumTest
from wine_desktop import PATIENCE, until


class Launcher(PlumTest):
    def setUp(self):
        super().setUp()
        self.write("config/load/set.ini", "[hotkey]\r\nhotkey=Alt+Z\r\n")

    def start_launcher(self):
        launcher = self.start_plum()
        until(self.is_in_front, "the launcher")
        return launcher

    def is_shown(self):
        return len(self.windows_of("plum.exe")) > 0

    def is_in_front(self):
        return self.has_keyboard("plum.exe")

    def enter(self, text):
        self.xdotool("type", text)
        self.press("Return")

    def test_hotkey_brings_it_and_takes_it_away(self):
        self.start_notepad()  # Wine sees the keys only while one of its windows has the keyboard
        self.start_launcher()
        for _ in range(3):
            self.press("alt+z")
            until(lambda: not self.is_shown(), "the launcher's going")
            self.xdotool("windowactivate", "--sync", self.windows_of("notepad.exe")[0])
            until(lambda: self.has_keyboard("notepad.exe"), "notepad")
            self.press("alt+z")
            until(self.is_in_front, "the launcher's coming")

    def test_runs_the_app_whose_keyword_is_typed(self):
        self.write("config/apps/greet/main.wf",
                   'me.enter "who"\r\nfile.save "C:\\Plum\\result.txt","who","append"\r\n')
        self.start_launcher()
        self.enter("greet Ann")
        until(lambda: self.read("result.txt") == b"Ann\r\n", "the result")

    def test_second_start_leaves_the_first_alone(self):
        first = self.start_launcher()
        shown = self.windows_of("plum.exe")
        self.assertEqual(self.start_plum().wait(timeout=60), 0)
        self.assertIsNone(first.poll())
        self.assertEqual(self.windows_of("plum.exe"), shown)

    def test_another_folder_has_a_launcher_of_its_own(self):
        self.start_launcher()
        first = len(self.windows_of("plum.exe"))
        other = self.drive / "Other"
        shutil.copytree(self.plum, other, copy_function=self.link_or_copy)
        second = self.desktop.wine(other / "plum.exe")
        until(lambda: len(self.windows_of("plum.exe")) > first, "the second launcher")
        self.assertIsNone(second.poll())

    def test_takes_a_page_from_the_clipboard(self):
        """A helper program leaves a page there; the store window takes it and the clipboard is empty."""
        page = "##tarnwick:send##<p>page</p>"
        shutil.copy2(PEER, self.plum / "page.exe")
        self.write("config/apps/page/main.wf",
                   f'file.call "C:\\Plum\\page.exe","put {page}","html","400:300"\r\n')
        self.start_launcher()
        self.desktop.run_wine(PEER, "put", "before")
        until(lambda: self.clipboard() == "before", "another program's text")
        self.enter("page")
        until(lambda: self.windows_of("plum-store-window.exe"), "the store window")
        until(lambda: self.clipboard() == "", "the empty clipboard")

    def test_reads_settings_that_the_system_wrote(self):
        settings = "C:\\Plum\\config\\load\\set.ini"
        self.desktop.run_wine(PEER, "write", settings, "hotkey", "hotkey", "Ctrl+M")
        self.start_notepad()
        self.start_launcher()
        self.press("ctrl+m")
        until(lambda: not self.is_shown(), "the launcher's going")


class Scripts(PlumTest):
    def test_types_into_notepad_and_saves(self):
        self.start_notepad(cwd=self.plum)
        self.run_script('keyboard.key "p","l","u","m","enter"', 'keyboard.send "Äpfel: a, b"',
                        'keyboard.hotkey "ctrl","s"', encoding="cp1252")
        self.save_as("note")
        until(lambda: self.read("note.txt") == "plum\r\nÄpfel: a, b".encode("cp1252"),
              f"the saved bytes, not {self.read('note.txt')}")

    def test_moves_and_closes_a_window(self):
        self.start_notepad()
        self.run_script('window.get "active_window","h"', 'window.set "move_window",set.h,"123:77"',
                        'window.get "window_xy",set.h,"at"', 'window.get "window_width",set.h,"width"',
                        'file.save "C:\\Plum\\at.txt","at","append"',
                        'window.set "max_window",set.h', 'window.get "window_width",set.h,"wide"',
                        'file.save "C:\\Plum\\at.txt","wide","append"')
        at, wide = self.read("at.txt").decode().split()
        self.assertEqual(at, "123:77")
        self.assertGreaterEqual(int(wide), 1280)
        self.run_script('window.get "active_window","h"', 'window.set "close",set.h')
        until(lambda: not self.windows_of("notepad.exe"), "notepad's end")

    def pixels_of(self, picture):
        """The rows of a picture, a row being a list of pixels of three bytes."""
        size = self.desktop.run("identify", "-format", "%w %h", picture).split()
        width, height = int(size[0]), int(size[1])
        data = subprocess.run(["convert", picture, "-depth", "8", "rgb:-"], check=True,
                              stdout=subprocess.PIPE).stdout
        row = width * 3
        return [[data[y * row + x * 3:y * row + x * 3 + 3] for x in range(width)]
                for y in range(height)]

    def test_finds_a_picture_and_a_colour_on_a_window(self):
        (self.plum / "text.txt").write_text("A text in notepad, to be found\r\n")
        self.start_notepad("C:\\Plum\\text.txt")
        self.run_script('window.get "active_window","h"', 'window.set "move_window",set.h,"123:77"',
                        'mouse.move "1270:790"')
        self.xdotool("mousemove", 1270, 790)
        screen = self.take_screenshot("screen.png")
        rows = self.pixels_of(screen)
        # A part of the menu that begins with a dark pixel of a letter.
        width, height = 40, 10
        x, y = next((x, y) for y in range(100, 115) for x in range(130, 170) if max(rows[y][x]) < 64)
        self.desktop.run("convert", screen, "-crop", f"{width}x{height}+{x}+{y}", "+repage",
                         f"BMP3:{self.plum / 'part.bmp'}")
        part = [row[x:x + width] for row in rows[y:y + height]]
        # The first pixel of the screen, row by row, of a colour of that part.
        colour = min({pixel for row in part for pixel in row},
                     key=lambda wanted: sum(row.count(wanted) for row in rows))
        first = next((row.index(colour), number) for number, row in enumerate(rows) if colour in row)
        self.run_script('os.find_pic "_pfold_\\part.bmp","","","spot"',
                        'file.save "C:\\Plum\\found.txt","spot","append"',
                        f'os.find_color "{colour.hex().upper()}","","","dot"',
                        'file.save "C:\\Plum\\found.txt","dot","append"',
                        f'os.find_pic "_pfold_\\part.bmp","","5:6","move"',
                        'mouse.get_xy "there"',
                        'file.save "C:\\Plum\\found.txt","there","append"')
        self.assertEqual(self.read("found.txt").decode().split(),
                         [f"{x}:{y}", f"{first[0]}:{first[1]}", f"{x + 5}:{y + 6}"])
        at = dict(line.split("=") for line in self.xdotool("getmouselocation", "--shell").splitlines())
        self.assertEqual((int(at["X"]), int(at["Y"])), (x + 5, y + 6))

    def test_waits_reads_and_writes(self):
        (self.plum / "Notes.txt").write_bytes(b"one\r\ntwo\r\nthree\r\n")
        begin = time.monotonic()
        self.run_script('file.read "_pfold_\\notes.TXT","2","second"',
                        'file.save "C:\\Plum\\out.txt","second","append"',
                        'time.sleep "700"',
                        'while.start "count","3"', 'file.save "C:/Plum/out.txt","second","append"', 'while.end')
        self.assertGreaterEqual(time.monotonic() - begin, 0.7)
        self.assertEqual(self.read("out.txt"), b"two\r\n" * 4)

    def test_runs_javascript(self):
        self.write("sum.js", "function sum(a, b)\r\n{ return a + b; }\r\n")
        self.write("has.js", "function has()\r\n{ return typeof ActiveXObject; }\r\n")
        self.run_script('file.call_js "_pfold_\\sum.js","sum","0.1_,_0.2","total"',
                        'file.save "C:\\Plum\\out.txt","total","append"',
                        'file.call_js "_pfold_\\has.js","has","","has"',
                        'file.save "C:\\Plum\\out.txt","has","append"')
        self.assertEqual(self.read("out.txt"), b"0.3\r\nfunction\r\n")

    def serve(self):
        """A server on this machine and the bodies that were posted to it."""
        posted = []

        class Handler(http.server.BaseHTTPRequestHandler):
            def answer(self, body):
                self.send_response(200)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def do_GET(self):
                self.answer("página 你好".encode() if self.path == "/page" else bytes(range(256)) * 4000)

            def do_HEAD(self):
                self.send_response(200)
                self.send_header("Content-Length", "1024000")
                self.end_headers()

            def do_POST(self):
                posted.append(self.rfile.read(int(self.headers["Content-Length"])))
                self.answer(b"thanks")

            def log_message(self, *_):
                pass

        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return f"http://127.0.0.1:{server.server_port}", posted

    def test_fetches_and_uploads(self):
        address, posted = self.serve()
        (self.plum / "report.txt").write_bytes(b"the report")
        self.run_script(f'net.get "{address}/page","page"',
                        'file.save "C:\\Plum\\out.txt","page","append"',
                        'set.path +?+\\report.txt+(os.path_pfold)',
                        f'net.upload "{address}/up",set.path,"file","text/plain","answer"',
                        'file.save "C:\\Plum\\out.txt","answer","append"')
        # The code page of Western Europe lacks the Chinese.
        self.assertEqual(self.read("out.txt"), "página ??\r\nthanks\r\n".encode("cp1252"))
        self.assertEqual(len(posted), 1)
        self.assertIn(b"the report", posted[0])

    def test_downloads_with_the_helper(self):
        address, _ = self.serve()
        self.run_script(f'net.download "{address}/data.bin","C:\\Plum\\in","got.bin","Data"')
        until(lambda: self.read("in/got.bin") == bytes(range(256)) * 4000, "the file")

    def test_leaves_text_on_the_clipboard(self):
        self.run_script('os.set_clipboard "Äpfel"', encoding="cp1252")
        until(lambda: self.clipboard() == "Äpfel", "the text")

    def test_tells_the_line_of_an_error(self):
        script = self.write("bad.wf", 'set.a "1"\r\nmouse.move "here"\r\n')
        said = self.desktop.path("said")
        with said.open("wb") as stream:
            self.start_plum(script, stderr=stream)  # which goes on afterwards, as a launcher that is hidden
            line = until(said.read_text, "a line about the error").strip()
        self.assertIn("bad.wf", line)
        self.assertIn("2", line)

    def test_runs_below_a_folder_with_blanks_and_chinese(self):
        folder = self.drive / "Program Files" / "Plum 梅子"
        self.plum.rename(folder)
        self.plum = folder
        self.write("config/load/set.ini", "[hotkey]\r\nhotkey=Alt+Z\r\n")
        self.write("config/apps/greet/main.wf",
                   'set.a os.path_package_name\r\nset.to +?+\\result.txt+(os.path_package)\r\n'
                   'file.save set.to,"a","append"\r\n')
        self.start_plum()
        until(lambda: self.has_keyboard("plum.exe"), "the launcher")
        self.xdotool("type", "greet")
        self.press("Return")
        until(lambda: self.read("config/apps/greet/result.txt") == b"greet\r\n", "the result")


class ChineseScripts(PlumTest):
    locale = "zh_CN.UTF-8"

    def test_saves_chinese_in_the_code_page_of_china(self):
        self.assertEqual(self.desktop.run_wine(PEER, "code-page").strip(), "936")
        self.start_notepad(cwd=self.plum)
        self.run_script('keyboard.send "梅子, 苹果"', 'keyboard.hotkey "ctrl","s"', encoding="gbk")
        self.save_as("note")
        until(lambda: self.read("note.txt") == "梅子, 苹果".encode("gbk"),
              f"the saved bytes, not {self.read('note.txt')}")


class Kit(PlumTest):
    """plumkit, as a terminal sees it."""

    def start_kit(self, *arguments):
        with self.desktop.path("said").open("wb") as said, self.desktop.path("errors").open("wb") as errors:
            return self.desktop.wine(self.plum / "plumkit.exe", *arguments, stdout=said, stderr=errors)

    def end_of(self, process):
        """Its status and what it wrote, the lines of both streams."""
        status = process.wait(timeout=PATIENCE)
        return status, self.lines_of("said"), self.lines_of("errors")

    def lines_of(self, name):
        return self.desktop.path(name).read_text(errors="replace").splitlines()

    def kit(self, *arguments):
        return self.end_of(self.start_kit(*arguments))

    def test_runs_scripts_with_a_status_each(self):
        done = self.write("done.wf", '//edition:2\nfile.save "C:\\Plum\\out.txt",who\n')
        self.assertEqual(self.kit("run", "--set", "who=Ann", done), (0, [], []))
        self.assertEqual(self.read("out.txt"), b"Ann\r\n")
        fails = self.write("fails.wf", "//edition:2\nset.a set.b\n")
        self.assertEqual(self.kit("run", fails), (1, [], [f"{fails}:2:7: b was never set"]))
        wrong = self.write("wrong.wf", "//edition:2\nmouse.clik\n")
        self.assertEqual(self.kit("run", wrong), (1, [], [f'{wrong}:2:7: mouse has no command "clik"']))
        self.assertEqual(self.kit("run", "C:\\Plum\\none.wf")[0], 2)
        self.assertEqual(self.kit("run", "--fast", done)[0], 2)
        lasts = self.write("lasts.wf", "//edition:2\ntime.sleep 600000\n")
        self.assertEqual(self.kit("run", "--timeout", "0.5", lasts)[0], 124)

    def test_says_what_a_script_would_do(self):
        script = self.write("some.wf", '//edition:2\nmouse.move 3:4\nkeyboard.key a\n'
                                       'file.save "C:\\Plum\\out.txt",who\n')
        status, said, errors = self.kit("dry", "--set", "who=Ann", script)
        self.assertEqual((status, errors), (0, []))
        self.assertIn("2: move 3 4", said)
        self.assertIn("3: key 65 1", said)
        self.assertFalse((self.plum / "out.txt").exists())

    def test_checks_scripts(self):
        good = self.write("good.wf", "//edition:2\nmouse.click\n")
        self.assertEqual(self.kit("check", good), (0, [], []))
        wrong = self.write("wrong.wf", "//edition:2\nmouse.clik\n")
        status, said, _ = self.kit("check", wrong)
        self.assertEqual(status, 1)
        self.assertTrue(any(line.startswith(f"{wrong}:2:7: error: ") for line in said), said)

    def test_shows_what_a_run_did_and_lays_another_one_beside_it(self):
        before = self.write("before.wf", "//edition:2\nset.x 3\nmouse.move $\"{x}:4\"\n")
        self.assertEqual(self.kit("run", "--trace", "C:\\Plum\\page.html", before), (0, [], []))
        self.assertIn("pointer to 3:4", self.read("page.html").decode())
        now = self.write("now.wf", "//edition:2\nset.x 3\nmouse.move $\"{x}:5\"\n")
        self.assertEqual(self.kit("dry", "--replay", "C:\\Plum\\page.html", now),
                         (0, ["  2: set.x 3", '- 3: mouse.move $"{x}:4"', "    was: 3:4; pointer to 3:4",
                              '+ 3: mouse.move $"{x}:5"', "    now: 3:5; pointer to 3:5"], []))

    def test_is_stopped_by_the_hand(self):
        """Esc that is held; Wine hears of keys while one of its windows has the keyboard."""
        self.start_notepad()
        script = self.write("lasts.wf", '//edition:2\nset.a 1\nfile.save "C:\\Plum\\begun.txt",a\n'
                                        'keyboard.key_down shift\ntime.sleep 600000\n')
        process = self.start_kit("run", script)
        until(lambda: self.read("begun.txt"), "the run's begin")
        self.stop_by_hand(process)

    def test_is_not_stopped_by_keys_that_a_script_presses(self):
        self.start_notepad()
        script = self.write("some.wf", "//edition:2\nkeyboard.key_down esc\ntime.sleep 1500\nkeyboard.key_up esc\n")
        self.assertEqual(self.kit("run", script), (0, [], []))

    def stop_by_hand(self, process):
        self.xdotool("keydown", "Escape")
        try:
            self.assertEqual(self.end_of(process)[0], 130)
        finally:
            self.xdotool("keyup", "Escape")

    def test_is_stopped_by_the_hotkey(self):
        """Which counts from a hand, and not from the script itself."""
        self.write("config/load/options.ini", "[stop]\r\nhotkey=Ctrl+Alt+S\r\n")
        self.start_notepad()
        presses = self.write("presses.wf", "//edition:2\nkeyboard.hotkey ctrl,alt,s\ntime.sleep 300\n")
        self.assertEqual(self.kit("run", presses), (0, [], []))
        script = self.write("lasts.wf", '//edition:2\nset.a 1\nfile.save "C:\\Plum\\begun.txt",a\n'
                                        'time.sleep 600000\n')
        process = self.start_kit("run", script)
        until(lambda: self.read("begun.txt"), "the run's begin")
        # Not before somebody looks at the keyboard, which is a moment after the run's begin.
        until(lambda: self.press("ctrl+alt+s") or process.poll() is not None, "the run's end")
        self.assertEqual(self.end_of(process)[0], 130)

    def test_is_stopped_by_ctrl_c_in_its_terminal(self):
        script = self.write("lasts.wf", '//edition:2\nset.a 1\nfile.save "C:\\Plum\\begun.txt",a\n'
                                        'time.sleep 600000\n')
        terminal, end_of_program = pty.openpty()
        process = self.desktop.wine(self.plum / "plumkit.exe", "run", script, terminal=end_of_program)
        os.close(end_of_program)
        threading.Thread(target=self.drain, args=(terminal,), daemon=True).start()
        until(lambda: self.read("begun.txt"), "the run's begin")
        os.write(terminal, b"\x03")
        self.assertEqual(process.wait(timeout=PATIENCE), 130)

    @staticmethod
    def drain(terminal):
        """Whoever writes to a terminal that nobody reads stands still. Its end is an error."""
        with contextlib.suppress(OSError):
            while os.read(terminal, 4096):
                pass

    def test_waits_while_the_hand_works(self):
        self.write("config/load/options.ini", "[stop]\r\nyield=on\r\n")
        self.start_notepad()
        script = self.write("taps.wf", "//edition:2\nrepeat.while 1,is,1\nkeyboard.key shift\nrepeat.end\n")
        process = self.start_kit("run", script)
        window = self.xdotool("getactivewindow")
        places = itertools.cycle((100, 110))
        until(lambda: self.xdotool("mousemove", "--window", window, next(places), 100)
              or any("waits while you use the mouse" in line for line in self.lines_of("errors")), "the pause")
        self.stop_by_hand(process)

    def test_keeps_keys_from_another_window(self):
        self.start_notepad()
        first = self.xdotool("getactivewindow")
        script = self.write("taps.wf", '//edition:2\nset.a 1\nrepeat.while 1,is,1\nkeyboard.key shift\n'
                                       'file.save "C:\\Plum\\begun.txt",a\nrepeat.end\n')
        process = self.start_kit("run", "--scoped", script)
        until(lambda: self.read("begun.txt"), "the first key")
        self.desktop.wine("notepad")
        until(lambda: len(self.windows_of("notepad.exe")) > 1, "another window")
        other = next(window for window in self.windows_of("notepad.exe") if window != first)
        self.xdotool("windowactivate", "--sync", other)
        until(lambda: any("waits until its window is in front" in line for line in self.lines_of("errors")),
              "the pause")
        self.stop_by_hand(process)


if __name__ == "__main__":
    unittest.main()
