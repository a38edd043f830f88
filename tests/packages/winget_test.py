#!/usr/bin/env python3
"""What winget is told of an installer, field by field: its schema (1.6.0) is not in the tree, so what it says of the
fields that are used stands here."""

import hashlib
import pathlib
import re
import subprocess
import tempfile
import unittest

import yaml

TREE = pathlib.Path(__file__).resolve().parents[2]

ADDRESS = r"https?://.+"
TEXT = r"(?s).{3,10000}"
SAME = {"PackageIdentifier": r"[^.\s\\/:*?\"<>|]{1,32}(\.[^.\s\\/:*?\"<>|]{1,32}){1,7}", "PackageVersion": r"[^\\/:*?\"<>|]+",
        "ManifestVersion": r"1\.6\.0"}

# Of each kind: its fields with what they may be, and which of them have to be there. A list's fields are those of each.
VERSION = SAME | {"DefaultLocale": r"en-US", "ManifestType": r"version"}
LOCALE = SAME | {"PackageLocale": r"en-US", "Publisher": TEXT, "PublisherUrl": ADDRESS, "PackageName": r".{2,256}",
                 "PackageUrl": ADDRESS, "License": r".{3,512}", "LicenseUrl": ADDRESS, "Copyright": r".{3,512}",
                 "ShortDescription": r".{3,256}", "Description": TEXT, "Moniker": r".{1,40}", "Tags": r".{1,40}",
                 "ManifestType": r"defaultLocale"}
SWITCHES = {"Silent": r".{1,512}", "SilentWithProgress": r".{1,512}"}
ENTRY = {"DisplayName": r".{1,256}", "Publisher": r".{1,256}", "DisplayVersion": r".{1,128}", "ProductCode": r".{1,255}"}
FILE = {"Architecture": r"x86|x64|arm|arm64|neutral", "InstallerUrl": ADDRESS, "InstallerSha256": r"[A-Fa-f0-9]{64}"}
INSTALLER = SAME | {"Platform": r"Windows\.(Desktop|Universal)", "MinimumOSVersion": r"\d{1,5}(\.\d{1,5}){0,3}",
                    "InstallerType": r"msix|msi|appx|exe|zip|inno|nullsoft|wix|burn|pwa|portable", "Scope": r"user|machine",
                    "InstallModes": r"interactive|silent|silentWithProgress", "InstallerSwitches": SWITCHES,
                    "UpgradeBehavior": r"install|uninstallPrevious", "Commands": r".{1,40}",
                    "FileExtensions": r"[^\\/:*?\"<>|]{1,64}", "ProductCode": r".{1,255}", "AppsAndFeaturesEntries": ENTRY,
                    "Installers": FILE, "ManifestType": r"installer"}
LISTS = {"Platform": 2, "InstallModes": 3, "Commands": 16, "FileExtensions": 512, "Tags": 16, "AppsAndFeaturesEntries": 128,
         "Installers": 1024}
NEEDED = {"": {"PackageIdentifier", "PackageVersion", "DefaultLocale", "ManifestType", "ManifestVersion"},
          ".installer": {"PackageIdentifier", "PackageVersion", "Installers", "ManifestType", "ManifestVersion"},
          ".locale.en-US": {"PackageIdentifier", "PackageVersion", "PackageLocale", "Publisher", "PackageName", "License",
                            "ShortDescription", "ManifestType", "ManifestVersion"}}


class Manifests(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        root = pathlib.Path(folder.name)
        (root / "setup.exe").write_bytes(b"installer")
        subprocess.run([TREE / "tools/package", "winget", root / "setup.exe", root / "made"], check=True,
                       stdout=subprocess.DEVNULL)
        # Every scalar as the text that stands there.
        cls.made = {file.name: yaml.load(file.read_text(), yaml.BaseLoader) for file in (root / "made").iterdir()}

    def manifest(self, kind):
        return self.made[f"PlumAuthors.Plum{kind}.yaml"]

    def check(self, fields, rules):
        for name, value in fields.items():
            self.assertIn(name, rules)
            self.assertEqual(isinstance(value, list), name in LISTS, name)
            values = value if isinstance(value, list) else [value]
            self.assertLessEqual(len(values), LISTS.get(name, 1), name)
            for each in values:
                if isinstance(rules[name], dict):
                    self.check(each, rules[name])
                else:
                    self.assertIsNotNone(re.fullmatch(rules[name], each), (name, each))

    def test_there_are_three(self):
        self.assertEqual(sorted(self.made), sorted(f"PlumAuthors.Plum{kind}.yaml" for kind in NEEDED))

    def test_their_fields_are_those_of_the_schema(self):
        for kind, rules in {"": VERSION, ".installer": INSTALLER, ".locale.en-US": LOCALE}.items():
            self.check(self.manifest(kind), rules)
            self.assertLessEqual(NEEDED[kind], set(self.manifest(kind)))

    def test_they_are_about_this_version_and_this_file(self):
        version = re.search(r"^project\(plum VERSION ([\d.]+)", (TREE / "CMakeLists.txt").read_text(), re.M)[1]
        for manifest in self.made.values():
            self.assertEqual(manifest["PackageVersion"], version)
        file, = self.manifest(".installer")["Installers"]
        self.assertEqual(file["InstallerSha256"], hashlib.sha256(b"installer").hexdigest().upper())
        self.assertIn(f"Plum-{version}-setup-x64.exe", file["InstallerUrl"])

    def test_they_say_what_the_installer_writes_down(self):
        script = (TREE / "packaging/windows/plum.nsi").read_text()
        manifest = self.manifest(".installer")
        entry, = manifest["AppsAndFeaturesEntries"]
        for name in ("DisplayName", "Publisher"):
            self.assertIn(f'"{name}" "{entry[name]}"', script)
        self.assertRegex(script, rf'!define UNINSTALL ".*\\Uninstall\\{manifest["ProductCode"]}"')
        for extension in manifest["FileExtensions"]:
            self.assertIn(f'Type ".{extension}"', script)
        self.assertIn("RequestExecutionLevel user", script)


if __name__ == "__main__":
    unittest.main()
