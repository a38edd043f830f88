#!/usr/bin/env python3
"""Holds the translations against the sources: a text that is shown and has no translation is told, and so is one that
is translated and no longer shown. The first argument is lupdate."""
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

ROOT = pathlib.Path(__file__).resolve().parents[2]


def texts(path):
    for context in xml.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            yield context.find("name").text, message.find("source").text, message.find("translation")


def untranslated(lupdate, translations):
    with tempfile.TemporaryDirectory() as folder:
        fresh = pathlib.Path(folder) / translations.name
        fresh.write_bytes(translations.read_bytes())
        subprocess.run([lupdate, "-silent", "-no-obsolete", "-locations", "none", ROOT / "src", "-ts", fresh],
                       check=True, stderr=subprocess.DEVNULL)
        shown = {(context, source): translation for context, source, translation in texts(fresh)}
    for (context, source), translation in shown.items():
        if translation.get("type") == "unfinished" or not translation.text:
            yield f"{translations.name}: {context} has no translation of \"{source}\""
    for context, source, _ in texts(translations):
        if (context, source) not in shown:
            yield f"{translations.name}: {context} no longer shows \"{source}\""


def main():
    folder = ROOT / "src/look/translations"
    findings = [finding for path in sorted(folder.glob("*.ts")) for finding in untranslated(sys.argv[1], path)]
    print(*findings, sep="\n")
    return 1 if findings or not list(folder.glob("*.ts")) else 0


if __name__ == "__main__":
    sys.exit(main())
