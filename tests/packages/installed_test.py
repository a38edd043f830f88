#!/usr/bin/env python3
"""What `cmake --install` lays out: a program folder in lib/plum, and what the desktop and the shells read.

    installed_test.py BUILD_FOLDER
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml

TREE = pathlib.Path(__file__).resolve().parents[2]
BUILD = None


def output_of(*command, **options):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          **options).stdout


def warnings_of(page):
    return subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page], check=True,
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                          env={"LC_ALL": "C.UTF-8", "PATH": "/usr/bin:/bin", "MANROFFSEQ": ""}).stderr


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.prefix = pathlib.Path(folder.name)
        output_of("cmake", "--install", BUILD, "--prefix", cls.prefix)

    def shared(self, name):
        return self.prefix / "share" / name

    def help_of(self, program):
        folder = "bin" if program == "plum-store" else "lib/plum"
        return output_of(self.prefix / folder / program, "--help")

    def test_the_program_folder_is_the_one_that_is_laid_out(self):
        with tempfile.TemporaryDirectory() as folder:
            output_of(TREE / "tools/layout", BUILD, folder)
            laid_out = self.programs_in(folder)
        self.assertIn("plum", laid_out)
        self.assertEqual(self.programs_in(self.prefix / "lib/plum"), laid_out)

    @staticmethod
    def programs_in(folder):
        names = (str(file.relative_to(folder)) for file in pathlib.Path(folder).rglob("*") if file.is_file())
        return sorted(name for name in names if not name.startswith("config/apps/"))

    def test_installed_programs_start(self):
        self.assertRegex(output_of(self.prefix / "bin/plum", "--version"), r"^plum \d")
        self.assertRegex(output_of(self.prefix / "bin/plumkit", "--version"), r"^plumkit \d")
        self.assertRegex(output_of(self.prefix / "bin/plum-store", "--version"), r"^plum-store \d")

    def test_plumkit_says_which_folder_is_in_force(self):
        with tempfile.TemporaryDirectory() as data:
            environment = {"XDG_DATA_HOME": data, "PATH": "/usr/bin:/bin"}
            self.assertEqual(output_of(self.prefix / "bin/plumkit", "where", env=environment), f"{data}/plum\n")
            self.assertEqual(output_of(f"{data}/plum/plumkit", "where"), f"{data}/plum\n")
        self.assertEqual(output_of(self.prefix / "lib/plum/plumkit", "where"), f"{self.prefix}/lib/plum\n")

    def test_the_desktop_accepts_the_menu_entry(self):
        for name in ("plum", "plum-open", "plum-kwin", "plumkit-kwin"):
            self.assertEqual(output_of("desktop-file-validate", self.shared(f"applications/{name}.desktop")), "")
        metainfo, = self.shared("metainfo").iterdir()
        output_of("appstreamcli", "validate", "--no-net", "--pedantic", metainfo)

    def test_kwin_is_told_the_programs_by_their_paths(self):
        for name in ("plum", "plumkit"):
            rights = self.shared(f"applications/{name}-kwin.desktop").read_text()
            self.assertIn(f"\nExec={self.prefix}/lib/plum/{name}\n", rights)
            self.assertIn("org_kde_kwin_fake_input", rights)

    def test_pictures_of_the_metainfo_are_there_in_that_size(self):
        metainfo, = self.shared("metainfo").iterdir()
        images = list(xml.parse(metainfo).getroot().iter("image"))
        self.assertTrue(images)
        for image in images:
            head = (TREE / image.text.split("/", 3)[3]).read_bytes()[:24]
            self.assertEqual(head[16:], b"".join(int(image.get(side)).to_bytes(4, "big") for side in ("width", "height")))

    def test_bus_unit_and_metainfo_have_one_name(self):
        service, = self.shared("dbus-1/services").iterdir()
        name = re.search(r"^Name=(.*)$", service.read_text(), re.M)[1]
        self.assertEqual(service.name, f"{name}.service")
        unit = self.prefix / "lib/systemd/user" / re.search(r"^SystemdService=(.*)$", service.read_text(), re.M)[1]
        self.assertIn(f"BusName={name}\n", unit.read_text())
        # Nothing starts the launcher at a login but what the user has switched on.
        self.assertNotIn("[Install]", unit.read_text())
        metainfo, = self.shared("metainfo").iterdir()
        self.assertEqual(next(xml.parse(metainfo).getroot().iter("dbus")).text, name)

    def test_scripts_and_packages_have_types(self):
        output_of("update-mime-database", self.shared("mime"))
        globs = self.shared("mime/globs").read_text()
        self.assertIn("application/x-plum-script:*.wf\n", globs)
        self.assertIn("application/x-plum-package:*.wfp\n", globs)

    def test_the_icon_has_all_sizes(self):
        for side in (16, 22, 24, 32, 48, 64, 128, 256, 512):
            head = self.shared(f"icons/hicolor/{side}x{side}/apps/plum.png").read_bytes()[:24]
            self.assertEqual(head[16:], side.to_bytes(4, "big") * 2)
        self.assertTrue(self.shared("icons/hicolor/scalable/apps/plum.svg").is_file())

    def test_manual_pages_have_no_warnings(self):
        pages = sorted(self.shared("man").glob("man*/*"))
        self.assertEqual([page.name for page in pages], ["plum-store.1", "plum.1", "plumkit.1", "wf.5"])
        for page in pages:
            self.assertEqual(warnings_of(page), "", page)

    def test_a_warning_of_a_manual_page_is_seen(self):
        page = self.prefix / "wrong.1"
        page.write_text('.TH WRONG 1\n.SH NAME\nwrong \\- is\n.nosuch macro\n')
        self.assertIn("nosuch", warnings_of(page))

    def test_manual_and_completions_have_every_option_of_the_help(self):
        for program in ("plum", "plumkit", "plum-store"):
            options = set(re.findall(r"--[a-z][a-z-]*", self.help_of(program)))
            self.assertIn("--help", options)
            page = self.shared(f"man/man1/{program}.1").read_text().replace("\\-", "-")
            for option in options:
                self.assertIn(option, page)
        options = re.findall(r"--[a-z][a-z-]*", self.help_of("plum"))
        completed = output_of("bash", "-c", f"""
            . {self.shared('bash-completion/completions/plum')}
            COMP_WORDS=(plum --) COMP_CWORD=1
            _plum 2>/dev/null
            echo "${{COMPREPLY[@]}}" """).split()
        self.assertEqual(sorted(completed), sorted(set(options)))

    def test_completion_offers_scripts_and_folders(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in ("a.wf", "a.txt"):
                pathlib.Path(folder, name).touch()
            pathlib.Path(folder, "apps").mkdir()
            completed = output_of("bash", "-c", f"""
                . {self.shared('bash-completion/completions/plum')}
                COMP_WORDS=(plum a) COMP_CWORD=1
                _plum 2>/dev/null
                echo "${{COMPREPLY[@]}}" """, cwd=folder).split()
        self.assertEqual(sorted(completed), ["a.wf", "apps"])

    def completed_by_bash(self, *words):
        program = words[0]
        return output_of("bash", "-c", f"""
            . {self.shared('bash-completion/completions')}/{program}
            COMP_WORDS=("$@") COMP_CWORD={len(words) - 1}
            _{program.replace('-', '_')}
            echo "${{COMPREPLY[@]}}" """, "bash", *words).split()

    def completed_by_zsh(self, *words):
        return output_of("zsh", "-f", "-c", f"""
            compadd() {{ shift; print -l -- "$@"; }}
            _files() {{ }}
            complete_it() {{ local -a words=("$@"); local CURRENT=$#; . {self.shared('zsh/vendor-completions')}/_{words[0]}; }}
            complete_it "$@" """, "zsh", *words).split()

    def completed_by_fish(self, *words):
        with tempfile.TemporaryDirectory() as home:
            empty = pathlib.Path(home, "empty")
            empty.mkdir()
            said = output_of("fish", "--no-config", "-c", f"""
                source {self.shared('fish/vendor_completions.d')}/{words[0]}.fish
                complete -C "{' '.join(words)}" """, cwd=empty, env={"HOME": home, "PATH": os.environ["PATH"]})
        return [line.split("\t")[0] for line in said.splitlines()]

    def test_completion_offers_commands_and_what_stands_behind_them(self):
        for program in ("plumkit", "plum-store"):
            commands = set(re.findall(rf"^  {program} ([a-z]+)\b", self.help_of(program), re.M))
            self.assertGreater(len(commands), 3)
            for complete in (self.completed_by_bash, self.completed_by_zsh, self.completed_by_fish):
                self.assertEqual(set(complete(program, "")), commands, complete)
        for complete in (self.completed_by_bash, self.completed_by_zsh, self.completed_by_fish):
            self.assertLessEqual({"--timeout", "--set", "--help"}, set(complete("plumkit", "run", "--")), complete)
            self.assertLessEqual({"show", "new", "store", "run", "stop"}, set(complete("plumkit", "launcher", "")), complete)
            self.assertIn("--keys", complete("plum-store", "sign", "--"), complete)

    def test_other_shells_read_their_completions(self):
        for shell, folder in (("zsh", "zsh/vendor-completions"), ("fish", "fish/vendor_completions.d")):
            self.assertIsNotNone(shutil.which(shell), f"{shell} is missing")
            files = sorted(self.shared(folder).iterdir())
            self.assertEqual(len(files), 3)
            for file in files:
                self.assertEqual(output_of(shell, "-n", file), "")


if __name__ == "__main__":
    BUILD = sys.argv.pop()
    unittest.main()
