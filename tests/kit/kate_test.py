#!/usr/bin/env python3
"""The colours that Kate's own highlighter gives to a script, and the page's lines for its client of the language server.

kate_test.py FOLDER_OF_EDITORS DOCUMENT
"""
import html
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
TOOL = "kate-syntax-highlighter"

SCRIPT = """//edition:2
set.who "Ann // no comment" // why
    os.tips $"Hello {who}"
mouse.move 100:200
keyboard.send a +?++(set.who)
"""

# Words that are to stand in a colour of their own, by line, and words that are to have the same one.
SAME = [((1, "//edition:2"), (2, "// why")), ((2, '"Ann // no comment"'), (3, '$"Hello ')),
        ((3, "{who}"), (5, "+?++(set.who)")), ((2, "set"), (4, "mouse")), ((2, ".who"), (4, ".move"))]
APART = [(2, "set"), (2, ".who"), (2, "// why"), (2, '"Ann // no comment"'), (3, "{who}"), (4, "100:200")]


def spans(folder, script):
    """The highlighter's pieces of each line: their style and text."""
    with tempfile.TemporaryDirectory() as data:
        syntax = pathlib.Path(data, "org.kde.syntax-highlighting", "syntax")
        syntax.mkdir(parents=True)
        shutil.copy(folder / "kate" / "plum.xml", syntax)
        path = pathlib.Path(data, "script.wf")
        path.write_text(script)
        page = subprocess.run([TOOL, "--output-format", "html", path], check=True, capture_output=True, text=True,
                              env={**os.environ, "XDG_DATA_HOME": data, "QT_QPA_PLATFORM": "offscreen"})
    if page.stderr.strip():
        print(page.stderr)
    body = page.stdout[page.stdout.index("<pre>") + len("<pre>"):].lstrip("\n")
    return [[(style, html.unescape(text)) for style, text in
             re.findall(r'<span style="([^"]*)">([^<]*)</span>', line)] for line in body.split("\n")]


def style_of(lines, number, word):
    for style, text in lines[number - 1]:
        if text == word:
            return style
    sys.exit(f"line {number}: {word!r} is no piece of {lines[number - 1]}")


def main():
    folder, document = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    lines = re.search(r"```json\n(.*?)```", document.read_text(), re.DOTALL).group(1)
    server = json.loads(lines)["servers"]["plum"]
    assert server["command"] == ["plumkit", "lsp"] and re.match(server["highlightingModeRegex"], "Plum")
    if not shutil.which(TOOL):
        print(f"{TOOL} is not here")
        sys.exit(SKIPPED)
    found = spans(folder, SCRIPT)
    for first, second in SAME:
        if style_of(found, *first) != style_of(found, *second):
            sys.exit(f"{first} and {second} differ in colour")
    styles = {style_of(found, *place) for place in APART}
    if len(styles) != len(APART):
        sys.exit(f"of {APART} some have one colour")


if __name__ == "__main__":
    main()
