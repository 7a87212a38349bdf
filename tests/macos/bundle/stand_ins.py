"""Stand-ins for the tools that only a Mac has, and for what they read and write."""

import json
import os
import pathlib
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent.parent
PACKAGING = ROOT / "packaging" / "macos"

# The header of a 64-bit program for Apple's processors, which is what "file" goes by.
HEADER = bytes.fromhex("cffaedfe 0c000001 00000000 02000000 00000000 00000000 00000000 00000000")

# Answers in the form of the system's otool, which is how macho() has written it down.
OTOOL = f"""#!/bin/sh
case $1 in
    -L) echo "$2:" ;;
    -l) ;;
    *) exit 1 ;;
esac
tail -c +{len(HEADER) + 1} "$2" | sed -n "s/^$1 //p"
"""

# Writes down how it was called. Fails when FAILING is its name, or in its arguments, or the name of
# a file among them.
RECORDER = """#!/usr/bin/env python3
import json, os, pathlib, sys
name = pathlib.Path(sys.argv[0]).name
with open(os.environ["JOURNAL"], "a") as journal:
    journal.write(json.dumps([name, *sys.argv[1:]]) + "\\n")
words = [name, *(pathlib.Path(word).name for word in sys.argv[1:])]
sys.exit(os.environ.get("FAILING") in words)
"""


def macho(needs=(), rpaths=()):
    """What stands for a program, library or plugin."""
    lines = [f"-L \t{name} (compatibility version 6.0.0, current version 6.9.1)" for name in needs]
    for number, name in enumerate(rpaths):
        lines += [f"-l Load command {number}", "-l           cmd LC_RPATH", "-l       cmdsize 48",
                  f"-l          path {name} (offset 12)"]
    return HEADER + "".join(line + "\n" for line in lines).encode()


def write(path, content):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


QT_CORE = "@rpath/QtCore.framework/Versions/A/QtCore"
SYSTEM = "/usr/lib/libSystem.B.dylib"
FRAMEWORKS = "@executable_path/../Frameworks"
SVG_PLUGIN = "PlugIns/iconengines/libqsvgicon.dylib"


def deploy(contents):
    """What macdeployqt leaves in a bundle, in short."""
    write(contents / "Frameworks/QtCore.framework/Versions/A/QtCore",
          macho([QT_CORE, SYSTEM, "/System/Library/Frameworks/AppKit.framework/Versions/C/AppKit"]))
    for plugin in ("PlugIns/platforms/libqcocoa.dylib", "PlugIns/styles/libqmacstyle.dylib", SVG_PLUGIN):
        write(contents / plugin, macho([QT_CORE, SYSTEM], ["@loader_path/../../Frameworks"]))
    write(contents / "Resources/qt.conf", b"[Paths]\nPlugins = PlugIns\n")
    write(contents / "MacOS/KestrelBay", macho([QT_CORE, SYSTEM], [FRAMEWORKS]))


class Tools:
    """A folder of stand-ins, the journal that they write, and the environment to find both."""

    def __init__(self, folder, **tools):
        self.folder = pathlib.Path(folder) / "tools"
        self.journal = self.folder / "journal"
        self.environment = {**os.environ, "JOURNAL": str(self.journal),
                            "PATH": f"{self.folder}:{os.environ['PATH']}"}
        for name, text in {"otool": OTOOL, **tools}.items():
            write(self.folder / name, text.encode())
            (self.folder / name).chmod(0o755)

    def run(self, *command, **environment):
        return subprocess.run(command, text=True, capture_output=True,
                              env={**self.environment, **environment})

    def calls(self):
        if not self.journal.exists():
            return []
        return [json.loads(line) for line in self.journal.read_text().splitlines()]
