#!/usr/bin/env python3
"""The README says in bold what the program says, word for word, with "…" for a name."""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent


def read(name):
    return (ROOT / name).read_text(encoding="utf-8")


def program_texts(header):
    """Its literals, those that stand side by side as the one text that they are."""
    literals = re.findall(r'(?:u"(?:[^"\\]|\\.)*"\s*)+', header)
    parts = [re.findall(r'u"((?:[^"\\]|\\.)*)"', literal) for literal in literals]
    return {"".join(part).replace('\\"', '"').replace("%1", "…") for part in parts}


def untrue_quotes(readme, header):
    quotes = {" ".join(quote.split()) for quote in re.findall(r"\*\*(.+?)\*\*", readme, re.DOTALL)}
    return quotes - program_texts(header)


def unknown_options(readme, command_line):
    known = set(re.findall(r'QStringLiteral\("([a-z-]+)"\)', command_line))
    commands = re.findall(r"\bkestrelbay --.*", readme)
    return {option for line in commands for option in re.findall(r" --([a-z-]+)", line)} - known


def missing_files(readme):
    names = re.findall(r"\]\((?!#|https?:)([^)#]+)", readme)
    names += re.findall(r"\bscript/[\w.-]*\w", readme)
    return {name for name in names if not (ROOT / name).exists()}


class ReadmeTest(unittest.TestCase):
    HEADER = 'LText a{u"Check " u"Again", u"x"}; LSentence b{u"Probably %1 has \\"it\\"", u"y"};'

    def test_quotes_what_the_program_says(self):
        self.assertEqual(set(), untrue_quotes(read("README.md"), read("src/settings/L.h")))

    def test_quotes_something(self):
        self.assertIn("**Disable All Shortcuts**", read("README.md"))

    def test_finds_untrue_quotes(self):
        true = '**Check\nAgain**, then **Probably … has "it"**'
        self.assertEqual(set(), untrue_quotes(true, self.HEADER))
        self.assertEqual({"Look Again"}, untrue_quotes(true + " **Look Again**", self.HEADER))

    def test_names_options_that_there_are(self):
        known = read("src/app/CommandLine.cpp")
        self.assertEqual(set(), unknown_options(read("README.md"), known))

    def test_finds_unknown_options(self):
        options = unknown_options("kestrelbay --rule=1 --dig", 'QStringLiteral("rule")')
        self.assertEqual({"dig"}, options)

    def test_names_files_that_there_are(self):
        self.assertEqual(set(), missing_files(read("README.md")))

    def test_finds_missing_files(self):
        readme = "[a](README.md) [b](docs/no.md) [c](#use) script/run, script/walk."
        self.assertEqual({"docs/no.md", "script/walk"}, missing_files(readme))


if __name__ == "__main__":
    unittest.main()
