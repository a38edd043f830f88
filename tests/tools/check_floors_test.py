#!/usr/bin/env python3
"""What tools/check-floors finds, each on a tree of a few files."""

import pathlib
import subprocess
import tempfile
import unittest

TOOL = pathlib.Path(__file__).parents[2] / "tools/check-floors"

DRAWING = """
```floors
. -> upper lower platform

upper -> lower
lower -> platform

platform/real -> platform
platform ->
```

| Folder | Holds |
|---|---|
| `src/` | the program |
| `src/upper/` | windows |
| `src/lower/` | rules |
| `src/platform/` | ports |
| `src/platform/real/` | a backend |
"""

SOUND = {
    "docs/architecture.md": DRAWING,
    "src/main.cpp": '#include "upper/window.h"\n#include <vector>\n#include <QString>\n',
    "src/upper/window.h": '#include "lower/rule.h"\n#include "button.h"\n',
    "src/upper/button.h": "",
    "src/lower/rule.h": '#include "platform/port.h"\n',
    "src/platform/port.h": "",
    "src/platform/real/real.cpp": '#include "platform/port.h"\n#include <unistd.h>\n#ifdef __linux__\n',
    "tests/lower/rule_test.cpp": "",
    "tests/desktop/real_test.cpp": "",
}


class CheckFloors(unittest.TestCase):
    def findings(self, **changes):
        """The findings in the sound tree with these files in place of its own."""
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["git", "init", "-q", folder], check=True)
            for name, text in {**SOUND, **changes.get("files", {})}.items():
                path = pathlib.Path(folder, name)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text)
            result = subprocess.run([TOOL, folder], capture_output=True, text=True)
            self.assertEqual(result.stderr, "")
            self.assertEqual(result.returncode, 1 if result.stdout else 0)
            return result.stdout.splitlines()

    def test_has_nothing_to_say_of_a_sound_tree(self):
        self.assertEqual(self.findings(), [])

    def test_finds_an_include_that_runs_up(self):
        self.assertEqual(self.findings(files={"src/lower/rule.h": '\n#include "upper/window.h"\n'}),
                         ["src/lower/rule.h:2: upper/window.h is not below lower"])

    def test_finds_an_include_that_skips_what_is_not_drawn(self):
        self.assertEqual(self.findings(files={"src/upper/button.h": '#include "platform/port.h"\n'}),
                         ["src/upper/button.h:1: platform/port.h is not below upper"])

    def test_finds_an_include_of_a_backend(self):
        self.assertEqual(self.findings(files={"src/platform/real/real.h": "",
                                              "src/lower/rule.h": '# include "platform/real/real.h"\n'}),
                         ["src/lower/rule.h:1: platform/real/real.h goes past the ports"])

    def test_finds_a_header_of_the_system_outside_the_backends(self):
        for name in ("unistd.h", "sys/stat.h", "X11/Xlib.h"):
            self.assertEqual(self.findings(files={"src/lower/rule.h": f"#include <{name}>\n"}),
                             [f"src/lower/rule.h:1: <{name}> goes past the ports"])

    def test_finds_a_test_for_the_system_outside_the_backends(self):
        self.assertEqual(self.findings(files={"src/lower/rule.h": "#ifdef Q_OS_WIN\n"}),
                         ["src/lower/rule.h:1: Q_OS_WIN outside src/platform: "
                          "tests for an operating system are a missing port"])

    def test_finds_an_arrow_that_runs_up_in_the_drawing(self):
        drawing = DRAWING.replace("lower -> platform", "lower -> platform upper")
        self.assertEqual(self.findings(files={"docs/architecture.md": drawing}),
                         ["docs/architecture.md: lower -> upper runs up"])

    def test_finds_a_room_that_is_not_drawn(self):
        self.assertEqual(self.findings(files={"src/attic/box.h": ""}),
                         ["src/attic/box.h: the drawing in docs/architecture.md has no room attic",
                          "src/attic: docs/architecture.md says nothing of it"])

    def test_finds_a_room_that_is_gone(self):
        drawing = DRAWING.replace("\n| `src/upper/`", "\n| `src/attic/` | boxes |\n| `src/upper/`")
        drawing = drawing.replace("\nupper ->", "\nattic -> lower\nupper ->")
        self.assertEqual(self.findings(files={"docs/architecture.md": drawing}),
                         ["docs/architecture.md: there is no room attic",
                          "docs/architecture.md: there is no src/attic"])

    def test_finds_a_folder_that_is_too_full(self):
        crowd = {f"src/lower/rule{number}.h": "" for number in range(40)}
        self.assertEqual(self.findings(files=crowd), ["src/lower: 41 files of one level, 40 are enough"])

    def test_finds_tests_of_no_room(self):
        self.assertEqual(self.findings(files={"tests/attic/box_test.cpp": ""}),
                         ["tests/attic: src/ has no such room"])


if __name__ == "__main__":
    unittest.main()
