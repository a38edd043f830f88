#!/usr/bin/env python3
"""The package of the VS Code extension: complete, the same twice, and all that it loads is in it.

extension_test.py SOURCES
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import zipfile
from xml.etree import ElementTree

SKIPPED = 77


def main():
    extension = pathlib.Path(sys.argv[1], "editors", "vscode")
    if not (extension / "node_modules" / "vscode-languageclient").is_dir():
        print("vscode-languageclient is not installed (tools/setup test does that)")
        return SKIPPED
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        packages = [folder / "first.vsix", folder / "second.vsix"]
        for package in packages:
            subprocess.run([extension / "package", package], check=True)
        assert packages[0].read_bytes() == packages[1].read_bytes()

        with zipfile.ZipFile(packages[0]) as archive:
            archive.extractall(folder / "unpacked")
            names = archive.namelist()
        inside = folder / "unpacked" / "extension"
        for description in ("extension.vsixmanifest", "[Content_Types].xml"):
            ElementTree.parse(folder / "unpacked" / description)
        manifest = ElementTree.parse(folder / "unpacked" / "extension.vsixmanifest").getroot()
        kept = json.loads((inside / "package.json").read_text())
        identity = next(node for node in manifest.iter() if node.tag.endswith("Identity"))
        assert identity.get("Version") == kept["version"], identity.attrib
        project = pathlib.Path(sys.argv[1], "CMakeLists.txt").read_text()
        assert re.search(r"project\([^)]*VERSION ([\d.]+)", project).group(1) == kept["version"], kept["version"]
        for asset in manifest.iter():
            if asset.tag.endswith("Asset"):
                assert asset.get("Path") in names, asset.attrib
        types = (folder / "unpacked" / "[Content_Types].xml").read_text()
        for suffix in {pathlib.PurePosixPath(each).suffix[1:] for each in names} - {""}:
            assert suffix == "xml" or f'"{suffix}"' in types, suffix

        contributed = kept["contributes"]
        for file in (kept["main"], contributed["languages"][0]["configuration"], contributed["grammars"][0]["path"]):
            assert (inside / file).is_file(), file
        script = (inside / kept["main"]).read_text()
        registered = set(re.findall(r"registerCommand\('([\w.]+)'", script))
        assert registered == {command["command"] for command in contributed["commands"]}, registered

        # Whatever the client loads, and those that it loads in turn, is there; the editor itself is not.
        loader = """
            const Module = require('module');
            const found = Module._load;
            const editor = new Proxy(function () {}, {
                get: (target, name) => name === Symbol.toPrimitive ? () => 0 : name === 'prototype' ? target.prototype : editor,
                apply: () => editor,
                construct: () => ({}),
            });
            Module._load = (name, ...rest) => name === 'vscode' ? editor : found(name, ...rest);
            const {activate, deactivate} = require(process.argv[1]);
            if (typeof activate !== 'function' || typeof deactivate !== 'function')
                process.exit(1);
        """
        subprocess.run(["node", "-e", loader, inside], check=True)
        assert not [each for each in names if "textmate" in each or "oniguruma" in each]
    return 0


if __name__ == "__main__":
    sys.exit(main())
