"""Whether the check of the declarations would notice: fixtures that agree with their table, and
what it says when one place of them is changed."""

import pathlib
import shutil
import sys
import tempfile
import unittest

import check_declarations
import facts

CLANG = sys.argv.pop(1)
FIXTURES = pathlib.Path(__file__).parent / "fixtures"
FLAGS = ["-fblocks"]

# What is changed, to what, and what is then said.
HEADER = [
    ("openBoxOf:(nonnull Thing *)otherThing mode:", "openBoxOf:(nonnull Thing *)otherThing inMode:",
     "Thing -openBoxOf:inMode: has no row"),
    ("typedef struct {", "typedef long Unknown;\ntypedef struct {", "Unknown has no row"),
    ("count);\nvoid", "count);\nvoid BoxClose(BoxRef box);\nvoid", "BoxClose has no row"),
    ("- (bool)openBoxOf", "- (int)openBoxOf", "-openBoxOf:mode: has int, not bool"),
    ("bytes, Count count", "bytes, int count", "BoxCreate takes const void *; int, not"),
    ("Thing *> *)things", "Base *> *)things",
     "+things has NSArray<Base *> *, not NSArray<Thing *> *"),
    ("+ (nonnull NSArray", "- (nonnull NSArray", "Thing -things has no row"),
    ("Thing : Base", "Thing : NSObject", "Thing has NSObject, not Base"),
    ("readonly, getter", "getter", "Thing open is readwrite"),
    (", getter=isOpen", "", "Thing open has no row"),
    ("(nullable) Thing", "(nonnull) Thing", "Thing next is nonnull, not nullable"),
    ("(nullable) Thing", "() Thing", "Thing next is not said to be null or not, not nullable"),
    ("BoxRef _Nullable Box", "BoxRef Box", "BoxCreate is not said to be null or not, not nullable"),
    ("_Nullable bytes", "_Nonnull bytes", "BoxCreate takes bytes as nonnull, not as nullable"),
    ("(nonnull Thing *)otherThing", "(Thing *)otherThing", "takes otherThing as neither"),
    ("*_Nullable bytes", "*_Nullable data", "BoxCreate calls no argument bytes"),
    ("ModeOn = 1", "ModeOn = 2", "ModeOn is 2, not 1"),
    ("ModeOff = 0", "ModeOff = 5", "ModeOff is 5, not 0"),
    ("ModeOff = 0", "ModeOff = 5", "the back end does not compile"),
    ("SideLeft = 0", "SideLeft = 2", "SideLeft is 2, not 0 on arm64, 1 on x86_64"),
    ("kLimit = 3", "kLimit = -3", "kLimit is -3, not 3"),
    ("static const Count", "static const int", "kLimit has int, not Count"),
    ("typedef unsigned long Count", "typedef unsigned int Count", "Count has 4 bytes, not 8"),
    ("struct __Box", "struct Other", "BoxRef has const struct Other *, not const struct __Box *"),
    ("    Count length;\n", "", "Span takes first Count, not first Count; length Count"),
    ("typedef enum Mode : Count {\n    ModeOff = 0,\n    ModeOn = 1,\n} Mode;",
     "typedef Count Mode;\nenum : Mode { ModeOff = 0, ModeOn = 1 };",
     "Mode is a type of the form typedef, but the row says an enumeration"),
    ("typedef Count Marks;\nenum : Marks { MarkBold = 2 };",
     "typedef enum Marks : Count { MarkBold = 2 } Marks;",
     "Marks is a type of the form enum, but the row says none of its own"),
    ("13.0", "12.0", "Newer is available from 12.0 on, not 13.0"),
    ("__attribute__((availability(macos, introduced = 13.0)))", "",
     "Newer +current is available from the oldest on, not 13.0"),
    ("@property(nullable)",
     "- (void)hide __attribute__((availability(macos, introduced = 12.0)));\n@property(nullable)",
     "Thing -hide has no row"),
]
FOUNDATION = [
    ("- (NSUInteger)hash", "- (double)hash", "NSObject -hash has double, not NSUInteger"),
    ("(NSUInteger)count;", "(double)count;", "not void *; id *; NSUInteger"),
]
BACK_END = [
    ("for (Thing *each in [Thing things])\n        each.next",
     "for (Thing *each in [Thing things])\n        [NSObject alloc], each.next",
     "NSObject +alloc has no row"),
    ("BoxCreate(nullptr, kLimit)", "[[Thing things] firstObject]",
     "NSArray -firstObject has no row"),
    ("const char *const name", "id any = thing;\n    [any firstObject];\n    const char *name",
     "id -firstObject has no row"),
    ("openBoxOf:thing", "openBoxOf:nil", "-openBoxOf:mode: may get null for otherThing"),
    ("openBoxOf:thing", "openBoxOf:found()", "-openBoxOf:mode: may get null for otherThing"),
    ("openBoxOf:thing", "openBoxOf:thing.next", "-openBoxOf:mode: may get null for otherThing"),
    ("BoxOpen(kestrelbayConstantString(\"AKey\"))", "BoxOpen(BoxCreate(nullptr, 1))",
     "BoxOpen may get null for box"),
    ("\"AKey\"", "\"AnotherKey\"", "no constant of the table has the text AnotherKey"),
    ("\"a.name\"", "\"b.name\"", "a.name is in the table, but in no source"),
    ("static_assert(ModeOff == 0)", "static_assert(SideLeft == 0)",
     "SideLeft is asserted, but is 0 on"),
    ("mode:ModeOn", "mode:Mode(MarkBold)", "MarkBold is deprecated"),
    ("isMacOSAtLeast(13)", "isMacOSAtLeast(12)", "Service is not guarded: it needs 13.0"),
    ("if (isMacOSAtLeast(13))", "if (thing)", "Service is not guarded: it needs 13.0"),
    ("class __attribute__((availability(macos, introduced = 13.0)))", "class",
     "hashOfNewer is not guarded: it needs 13.0"),
    ("Service().ask()", "0;\n    hashOfNewer()", "hashOfNewer is not guarded: it needs 13.0"),
    ("13.0))) Count", "12.0))) Count", "Newer +current is not guarded: it needs 13.0"),
    ("hashOf(thing)", "[Newer current]", "Newer +current is not guarded: it needs 13.0"),
]
TABLE = [
    ("class-method\tThing\tthings", "class-method\tThing\tnothings", "Thing +things has no row"),
    ("enum-value\tThing.h\tModeOn", "enum-value\tThing.h\tModeOff2", "ModeOn has no row"),
    ("method\tNSArray (NSEnumerator.h)", "method\tNSSet",
     "NSArray -countByEnumeratingWithState:objects:count: has no row"),
]


def problems(folder):
    include = folder / "include"
    return check_declarations.check(
        CLANG, [*FLAGS, "-isystem", str(include), "-isystem", str(folder / "foundation")],
        include, [folder / "back_end/Use.mm"], facts.Table([folder / "facts.tsv"]),
        facts.version("11.0"), [f"{folder}/foundation/"])


class SelfTest(unittest.TestCase):
    def test_what_agrees_is_accepted(self):
        found, declared, used = problems(FIXTURES)
        self.assertEqual(found, [])
        self.assertEqual(declared, 23)
        names = {each.name for each in used.values()}
        self.assertEqual(names, {
            "BoxCreate", "BoxOpen", "CFSTR", "ModeOff", "ModeOn", "current", "hash", "kLimit",
            "countByEnumeratingWithState:objects:count:", "next", "open", "openBoxOf:mode:",
            "things"})

    def test_a_row_stands_once(self):
        with self.assertRaisesRegex(SystemExit, "facts.tsv:2: NSObject also stands in facts.tsv:2"):
            facts.Table([FIXTURES / "facts.tsv", FIXTURES / "facts.tsv"])

    def test_header(self):
        self.try_all("include/Thing.h", HEADER)

    def test_foundation(self):
        self.try_all("foundation/Foundation.h", FOUNDATION)

    def test_back_end(self):
        self.try_all("back_end/Use.mm", BACK_END)

    def test_table(self):
        self.try_all("facts.tsv", TABLE)

    def try_all(self, file, changes):
        for old, new, said in changes:
            with self.subTest(f"{old!r} becomes {new!r}"), tempfile.TemporaryDirectory() as folder:
                copy = pathlib.Path(folder) / "fixtures"
                shutil.copytree(FIXTURES, copy)
                text = (copy / file).read_text()
                self.assertIn(old, text)
                (copy / file).write_text(text.replace(old, new, 1))
                found, _, _ = problems(copy)
                self.assertTrue(any(said in each for each in found), found)


if __name__ == "__main__":
    unittest.main()
