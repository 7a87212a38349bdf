"""packaging/macos/check, on bundles of which each has another fault."""

import pathlib
import tempfile
import unittest

import stand_ins
from stand_ins import QT_CORE, SYSTEM, macho, write


class CheckTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tools = stand_ins.Tools(folder.name)
        self.bundle = pathlib.Path(folder.name) / "a folder" / "KestrelBay.app"
        self.contents = self.bundle / "Contents"
        stand_ins.deploy(self.contents)

    def complaints(self):
        run = self.tools.run(stand_ins.PACKAGING / "check", self.bundle)
        said = run.stderr.splitlines()
        self.assertEqual(run.returncode, 1 if said else 0, said)
        return said

    def test_a_bundle_that_holds_all_it_needs_is_good(self):
        self.assertEqual(self.complaints(), [])

    def test_each_file_that_qt_loads_by_itself_has_to_be_there(self):
        for file in ("PlugIns/platforms/libqcocoa.dylib", "PlugIns/styles/libqmacstyle.dylib",
                     "PlugIns/iconengines/libqsvgicon.dylib", "Resources/qt.conf"):
            with self.subTest(file):
                content = (self.contents / file).read_bytes()
                (self.contents / file).unlink()
                self.assertEqual(self.complaints(), [f"check: Contents/{file} is missing"])
                write(self.contents / file, content)

    def test_a_path_outside_the_bundle_and_the_system(self):
        brew = "/opt/homebrew/opt/glib/lib/libglib-2.0.0.dylib"
        write(self.contents / "Frameworks/libmd4c.0.dylib", macho([brew, SYSTEM]))
        self.assertEqual(self.complaints(), [
            f"check: Contents/Frameworks/libmd4c.0.dylib needs {brew}, "
            "which is neither the system's nor in the bundle"])

    def test_what_a_library_calls_itself_counts_too(self):
        name = "/opt/homebrew/lib/libb2.1.dylib"
        write(self.contents / "Frameworks/libb2.1.dylib", macho([name]))
        self.assertIn(name, "".join(self.complaints()))

    def test_a_name_for_the_search_paths_that_none_of_them_has(self):
        write(self.contents / stand_ins.SVG_PLUGIN,
              macho([QT_CORE, "@rpath/QtSvg.framework/Versions/A/QtSvg"], ["@loader_path/../../Frameworks"]))
        self.assertEqual(self.complaints(), [
            f"check: Contents/{stand_ins.SVG_PLUGIN} needs @rpath/QtSvg.framework/Versions/A/QtSvg, "
            "which is neither the system's nor in the bundle"])

    def test_names_from_the_program_and_from_the_file_itself(self):
        write(self.contents / "Frameworks/libone.dylib", macho())
        write(self.contents / "Frameworks/libtwo.dylib",
              macho(["@loader_path/libone.dylib", "@executable_path/../Frameworks/libone.dylib"]))
        self.assertEqual(self.complaints(), [])
        (self.contents / "Frameworks/libone.dylib").unlink()
        self.assertEqual(len(self.complaints()), 2)

    def test_a_name_that_leads_out_of_the_bundle(self):
        write(self.bundle.parent / "libout.dylib", macho())
        write(self.contents / "Frameworks/libone.dylib", macho(["@loader_path/../../../libout.dylib"]))
        self.assertEqual(len(self.complaints()), 1)

    def test_a_link_to_another_place(self):
        framework = self.contents / "Frameworks/QtCore.framework"
        (framework / "QtCore").symlink_to("Versions/A/QtCore")
        self.assertEqual(self.complaints(), [])
        (framework / "QtSvg").symlink_to("/opt/homebrew/lib/QtSvg.framework/QtSvg")
        self.assertEqual(self.complaints(), [
            "check: Contents/Frameworks/QtCore.framework/QtSvg is a link out of the bundle"])

    def test_a_search_path_where_another_qt_may_be(self):
        write(self.contents / "MacOS/KestrelBay",
              macho([QT_CORE], ["/opt/homebrew/lib", stand_ins.FRAMEWORKS]))
        self.assertEqual(self.complaints(), [
            "check: Contents/MacOS/KestrelBay looks for libraries in /opt/homebrew/lib"])

    def test_a_program_without_a_search_path_finds_no_qt(self):
        write(self.contents / "MacOS/KestrelBay", macho([QT_CORE, SYSTEM]))
        self.assertIn(f"Contents/MacOS/KestrelBay needs {QT_CORE}", "".join(self.complaints()))

    def test_without_otool_nothing_is_known_to_be_good(self):
        write(self.tools.folder / "otool", b"#!/bin/sh\nexit 1\n")
        run = self.tools.run(stand_ins.PACKAGING / "check", self.bundle)
        self.assertNotEqual(run.returncode, 0)


if __name__ == "__main__":
    unittest.main()
