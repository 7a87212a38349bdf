"""Syntax trees, as clang prints them."""

import json
import re
import subprocess

_FILE = re.compile(r'"file": ("(?:[^"\\]|\\.)*"),\s*"line"')


class DoesNotCompile(Exception):
    """With what clang says."""


def dump(clang, flags, text, only=None):
    """The tree of an Objective-C++ source, as text; only: of names with this in them."""
    # By its names for the functions of methods, clang 14 falls over those of protocols where the
    # runtime is GNU's.
    command = [clang, *flags, "-fobjc-runtime=macosx", "-w", "-fsyntax-only"]
    command += ["-Xclang", "-ast-dump=json"]
    command += ["-Xclang", f"-ast-dump-filter={only}"] if only else []
    result = subprocess.run(
        [*command, "-x", "objective-c++", "-"],
        input=text, capture_output=True, check=False, encoding="utf-8",
    )
    if result.returncode:
        raise DoesNotCompile(result.stderr)
    return result.stdout


class _Places:
    """A place is printed without what it has in common with the one before."""

    def __init__(self):
        self.file = ""
        self.line = 0

    def read(self, place):
        """File, line, offset in the file; None for what stands nowhere."""
        if "expansionLoc" in place:
            self.read(place["spellingLoc"])
            return self.read(place["expansionLoc"])
        if "offset" not in place:
            return None
        self.file = place.get("file", self.file)
        self.line = place.get("line", self.line)
        return self.file, self.line, place["offset"]

    def mark(self, node):
        """Gives all in it "at", where it is named, and "from", where it begins."""
        at = self.read(node.get("loc", {}))
        span = node.get("range", {})
        node["from"] = self.read(span.get("begin", {}))
        self.read(span.get("end", {}))
        node["at"] = at or node["from"]
        # Where a statement has none of a kind, there is a node without one.
        node["inner"] = [child for child in node.get("inner", []) if "kind" in child]
        for child in node["inner"]:
            self.mark(child)


def nodes(text, is_wanted=lambda file: True):
    """The outermost nodes of the wanted files. Others are let go of at once: the whole tree of
    a source that includes Foundation takes more than a gigabyte."""
    decoder = json.JSONDecoder()
    places = _Places()
    position = 0
    if text.find('"TranslationUnitDecl"', 0, 100) >= 0:
        position = text.index('"inner": [') + len('"inner": [')
    while (start := _next_node(text, position)) >= 0:
        node, position = decoder.raw_decode(text, start)
        if is_wanted(_file(node.get("loc", {})) or places.file):
            places.mark(node)
            yield node
        else:
            files = _FILE.findall(text, start, position)
            places.file = json.loads(files[-1]) if files else places.file


def _file(place):
    ends = place.get("expansionLoc", {}), place.get("spellingLoc", {}), place
    return next((end["file"] for end in ends if "file" in end), None)


def _next_node(text, position):
    found = re.compile(r"[\s,]*(?=\{)").match(text, position)
    return found.end() if found else -1


def walk(node):
    """It and all below it."""
    yield node
    for child in node["inner"]:
        yield from walk(child)


def type_of(node):
    return node.get("type", {}).get("qualType", "")
