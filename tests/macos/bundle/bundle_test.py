"""bundle_test.py CMAKE: builds and installs the bundle of a small program by
packaging/macos/bundle.cmake, with stand-ins for the tools that only a Mac has, and looks
at what came out."""

import os
import pathlib
import plistlib
import re
import struct
import sys
import tempfile
import unittest

import stand_ins
from stand_ins import HERE, ROOT

CMAKE = "cmake"

# iconutil's, from the manual page: points, then pixels, by file name.
ICONS = {f"icon_{points}x{points}{suffix}.png": points * scale
         for points in (16, 32, 128, 256, 512) for suffix, scale in (("", 1), ("@2x", 2))}

ICONUTIL = """#!/usr/bin/env python3
import pathlib, shutil, sys
option, kind, output, target, folder = sys.argv[1:]
assert (option, kind, output) == ("--convert", "icns", "--output"), sys.argv
assert folder.endswith(".iconset"), folder
pathlib.Path(target).write_text("icns of " + folder)
"""
# Keeps what it was given, and leaves what the real one would.
MACDEPLOYQT = f"""#!/usr/bin/env python3
import os, pathlib, shutil, sys
sys.path.insert(0, {str(stand_ins.HERE)!r})
import stand_ins
[bundle, verbosity] = sys.argv[1:]
assert verbosity == "-verbose=1", verbosity
contents = pathlib.Path(bundle) / "Contents"
shutil.copy(contents / "MacOS" / "KestrelBay", os.environ["GIVEN"])
stand_ins.deploy(contents)
if "FORGETS" in os.environ:
    (contents / os.environ["FORGETS"]).unlink()
sys.exit("FAILS" in os.environ)
"""


def png_size(path):
    return struct.unpack(">II", path.read_bytes()[16:24])


class BundleTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        work = pathlib.Path(cls.folder.name)
        cls.build, cls.prefix, cls.given = work / "build", work / "prefix", work / "given"
        cls.tools = stand_ins.Tools(work, iconutil=ICONUTIL, macdeployqt=MACDEPLOYQT)
        cls.tools.environment["GIVEN"] = str(cls.given)
        for command in ([CMAKE, "-S", HERE, "-B", cls.build, "-G", "Ninja"],
                        [CMAKE, "--build", cls.build],
                        [CMAKE, "--install", cls.build, "--prefix", cls.prefix]):
            run = cls.tools.run(*command)
            if run.returncode != 0:
                raise AssertionError(run.stdout + run.stderr)
        cls.contents = cls.prefix / "KestrelBay.app" / "Contents"

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_the_program_and_its_icons_are_where_the_system_looks(self):
        self.assertTrue(os.access(self.contents / "MacOS" / "KestrelBay", os.X_OK))
        self.assertTrue((self.contents / "Resources" / "KestrelBay.icns").is_file())

    def test_info_dictionary(self):
        info = plistlib.loads((self.contents / "Info.plist").read_bytes())
        self.assertEqual(info, {
            "CFBundleDevelopmentRegion": "en",
            "CFBundleDisplayName": "KestrelBay",
            "CFBundleExecutable": "KestrelBay",
            "CFBundleIconFile": "KestrelBay.icns",
            "CFBundleIdentifier": "org.kestrelbay.KestrelBay",
            "CFBundleInfoDictionaryVersion": "6.0",
            "CFBundleLocalizations": ["en", "zh-Hans"],
            "CFBundleName": "KestrelBay",
            "CFBundlePackageType": "APPL",
            "CFBundleShortVersionString": "1.2.3",
            "CFBundleVersion": "1.2.3",
            "LSApplicationCategoryType": "public.app-category.utilities",
            "LSMinimumSystemVersion": "11.0",
            "LSUIElement": True,
            "NSHighResolutionCapable": True,
            "NSHumanReadableCopyright": "Copyright © 2026 The KestrelBay authors",
            "NSPrincipalClass": "NSApplication",
            "NSSupportsAutomaticGraphicsSwitching": True,
        })

    def test_the_identifier_is_that_of_the_login_item_and_the_log(self):
        for file in ("src/platform/macos/desktop/MacLoginItem.mm", "src/platform/macos/desktop/MacServices.mm"):
            self.assertIn('"org.kestrelbay.KestrelBay"', (ROOT / file).read_text(), file)

    def test_the_copyright_is_the_licence_s(self):
        holder = re.search(r"Copyright \(c\) (.+)", (ROOT / "LICENSE").read_text())[1]
        info = plistlib.loads((self.contents / "Info.plist").read_bytes())
        self.assertEqual(info["NSHumanReadableCopyright"], f"Copyright © {holder}")

    def test_the_icon_set_has_every_size(self):
        found = {path.name: png_size(path)
                 for path in (self.build / "KestrelBay.iconset").iterdir()}
        self.assertEqual(found, {name: (pixels, pixels) for name, pixels in ICONS.items()})

    def test_qt_is_deployed_into_the_installed_bundle_alone(self):
        self.assertTrue((self.contents / stand_ins.SVG_PLUGIN).is_file())
        self.assertFalse((self.build / "KestrelBay.app" / "Contents" / stand_ins.SVG_PLUGIN).exists())

    def test_the_installed_program_looks_for_libraries_in_its_bundle_alone(self):
        # The linker of this system writes the same list, with colons in between.
        self.assertIn(b"\0@executable_path/../Frameworks\0", self.given.read_bytes())

    def install_again(self, **environment):
        prefix = self.prefix.parent / "again"
        return self.tools.run(CMAKE, "--install", self.build, "--prefix", prefix, **environment)

    def test_when_macdeployqt_fails_the_installation_fails(self):
        # Also when all that is looked at afterwards is there.
        self.assertNotEqual(self.install_again(FAILS="1").returncode, 0)

    def test_when_a_part_of_qt_was_forgotten_the_installation_fails(self):
        run = self.install_again(FORGETS=stand_ins.SVG_PLUGIN)
        self.assertNotEqual(run.returncode, 0)
        self.assertIn(f"Contents/{stand_ins.SVG_PLUGIN} is missing", run.stderr)

    def test_entitlements_keep_the_program_out_of_the_sandbox(self):
        path = ROOT / "packaging" / "macos" / "KestrelBay.entitlements"
        self.assertEqual(plistlib.loads(path.read_bytes()), {"com.apple.security.app-sandbox": False})

    def test_the_oldest_system_is_the_one_that_is_built_for(self):
        text = (ROOT / "CMakeLists.txt").read_text()
        self.assertRegex(text, r"set\(CMAKE_OSX_DEPLOYMENT_TARGET 11\.0 CACHE STRING")


if __name__ == "__main__":
    CMAKE = sys.argv.pop(1)
    unittest.main()
