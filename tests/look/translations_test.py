#!/usr/bin/env python3
"""Holds the translations against the sources: a text that is shown and has no translation is told, and so are one that
is translated and no longer shown, and a sentence that stands outside of what is translated. The first argument is
lupdate."""
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

ROOT = pathlib.Path(__file__).resolve().parents[2]

# Where the sentences are that people see: windows, library, store, what is said of scripts and of their runs.
SPOKEN = ["main.cpp", "program.cpp", "ui", "picker", "library", "look", "store", "store_index", "helpers/store_window",
          "helpers/download", "download", "engine", "commands", "waits", "values", "http", "modules", "programs", "check",
          "search", "stopping", "guard", "grants", "sheet", "flight", "transport"]

# What stands as it is in every language: boxes whose words are known, what is read by programs, and other people's words.
FIXED = {
    "Keyword is required", "Keyword already exists", "The Keyword already exists, whether it is renamed ?",
    r'Can not exist *[\\/:*?\"<|>]*', "Guide does not exist",
    "Encryption not supported", "UnReduce not supported", "Compression not supported",
    "Invalid signature", "Error creating",  # of the archive reader
    "Download completed",
    "%1:%2: run-time error %3: ",  # a place that editors find
    "can not finf",  # of a picture's file
    "%1 as %2",  # which plumkit prints
    "Which text?", "On the clipboard: {text}",  # a script
}

# The vocabulary's tables, and that of the rules, hold plain literals. Those of commands are translated where they are
# shown, by this context; a test of the checker's looks whether all of them are. Titles of rules are printed for programs.
VOCABULARY = re.compile(r".*_commands?\.cpp|own_words\.cpp|point_actions\.cpp|run_loop\.cpp|field_words\.cpp|check_rules\.cpp")
OF_VOCABULARY = "plum::CommandWords"
JOINED = re.compile(r'"\s*u?"')
PLACE = re.compile(r"%L?\d+|%n")
OF_TABLE = re.compile(r'\bu"((?:[^"\\\n]|\\.)*)"(?!_s)')

TRANSLATES = re.compile(r"\b(?:tr|translate|QT_TRANSLATE_NOOP|QT_TR_NOOP)\s*\(")
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
SENTENCE = re.compile(r"[A-Za-z]{2,} [A-Za-z%]+ [A-Za-z%]+|%\d,? [a-z]{2,}|^[A-Z][a-z]+ [a-z]+[.?]?$")
BESIDE = re.compile(r"//[^\n]*|#include[^\n]*|static_assert[^\n]*")


def without_translated(source):
    """The source without what is handed to translating functions."""
    kept, at = [], 0
    while found := TRANSLATES.search(source, at):
        kept.append(source[at:found.start()])
        depth, at = 1, found.end()
        while depth and at < len(source):
            if literal := LITERAL.match(source, at):
                at = literal.end()
                continue
            depth += {"(": 1, ")": -1}.get(source[at], 0)
            at += 1
    return "".join(kept) + source[at:]


def untranslatable(source):
    """Sentences in a source that can never be in another language."""
    for literal in LITERAL.finditer(BESIDE.sub("", without_translated(source))):
        text = literal.group(1)
        if SENTENCE.search(text) and text not in FIXED:
            yield text


def spoken_sources():
    for place in SPOKEN:
        path = ROOT / "src" / place
        for each in [path] if path.is_file() else sorted(path.rglob("*.cpp")) + sorted(path.rglob("*.h")):
            source = each.read_text()
            yield each, OF_TABLE.sub("", source) if VOCABULARY.fullmatch(each.name) else source


def texts(path):
    for context in xml.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            yield context.find("name").text, message.find("source").text, message.find("translation")


def untranslated(lupdate, translations):
    with tempfile.TemporaryDirectory() as folder:
        fresh = pathlib.Path(folder) / translations.name
        fresh.write_bytes(translations.read_bytes())
        subprocess.run([lupdate, "-silent", "-no-obsolete", "-locations", "none", "-I", ROOT / "src", ROOT / "src",
                        "-ts", fresh],
                       check=True, stderr=subprocess.DEVNULL)
        shown = {(context, source): translation for context, source, translation in texts(fresh)}
    for (context, source), translation in shown.items():
        if translation.get("type") == "unfinished" or not translation.text:
            yield f"{translations.name}: {context} has no translation of \"{source}\""
    written = "".join(JOINED.sub("", path.read_text()) for path in sorted((ROOT / "src").rglob("*.cpp"))
                      if VOCABULARY.fullmatch(path.name))
    for context, source, _ in texts(translations):
        is_shown = f'u"{source.replace(chr(34), chr(92) + chr(34))}"' in written if context == OF_VOCABULARY \
            else (context, source) in shown
        if not is_shown:
            yield f"{translations.name}: {context} no longer shows \"{source}\""


def misplaced(translations):
    """Translations that have other places for values than their sources."""
    for context, source, translation in texts(translations):
        if set(PLACE.findall(source)) != set(PLACE.findall(translation.text or "")):
            yield f"{translations.name}: {context} has other values in the translation of \"{source}\""


def main():
    folder = ROOT / "src/look/translations"
    findings = [finding for path in sorted(folder.glob("*.ts"))
                for finding in [*untranslated(sys.argv[1], path), *misplaced(path)]]
    sample = 'say(tr("Nothing is lost") + name(")") + u"This is never translated."_s); // a word to the reader'
    if list(untranslatable(sample)) != ["This is never translated."]:
        findings.append("a sentence outside of what is translated is not found")
    findings += [f'{path.relative_to(ROOT)}: "{text}" is in no language but English'
                 for path, source in spoken_sources() for text in untranslatable(source)]
    print(*findings, sep="\n")
    return 1 if findings or not list(folder.glob("*.ts")) else 0


if __name__ == "__main__":
    sys.exit(main())
