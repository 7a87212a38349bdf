"""bundle_test.py CMAKE: builds and installs the bundle of a small program by
packaging/macos/bundle.cmake, with stand-ins for the tools that only a Mac has, and looks
at what came out."""

import os
import pathlib
import plistlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent.parent
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
MACDEPLOYQT = """#!/usr/bin/env python3
import pathlib, sys
(pathlib.Path(sys.argv[1]) / "Contents" / "deployed").write_text(" ".join(sys.argv[2:]))
"""


def png_size(path):
    return struct.unpack(">II", path.read_bytes()[16:24])


class BundleTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        work = pathlib.Path(cls.folder.name)
        for name, text in (("iconutil", ICONUTIL), ("macdeployqt", MACDEPLOYQT)):
            tool = work / name
            tool.write_text(text)
            tool.chmod(0o755)
        cls.build, cls.prefix = work / "build", work / "prefix"
        environment = {**os.environ, "PATH": f"{work}:{os.environ['PATH']}"}
        for command in ([CMAKE, "-S", HERE, "-B", cls.build, "-G", "Ninja"],
                        [CMAKE, "--build", cls.build],
                        [CMAKE, "--install", cls.build, "--prefix", cls.prefix]):
            run = subprocess.run(command, text=True, capture_output=True, env=environment)
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
        self.assertTrue((self.contents / "deployed").is_file())
        self.assertFalse((self.build / "KestrelBay.app" / "Contents" / "deployed").exists())

    def test_entitlements_keep_the_program_out_of_the_sandbox(self):
        path = ROOT / "packaging" / "macos" / "KestrelBay.entitlements"
        self.assertEqual(plistlib.loads(path.read_bytes()), {"com.apple.security.app-sandbox": False})

    def test_the_oldest_system_is_the_one_that_is_built_for(self):
        text = (ROOT / "CMakeLists.txt").read_text()
        self.assertRegex(text, r"set\(CMAKE_OSX_DEPLOYMENT_TARGET 11\.0 CACHE STRING")


if __name__ == "__main__":
    CMAKE = sys.argv.pop(1)
    unittest.main()
