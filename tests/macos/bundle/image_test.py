"""image_test.py CMAKE: packs the bundle of a small program by packaging/macos/image. The real
cpack installs and signs it; only the format of the image is that of another system."""

import pathlib
import sys
import tarfile
import tempfile
import unittest

import stand_ins
from stand_ins import HERE, PACKAGING

CMAKE = "cmake"
IDENTITY = "Developer ID Application: Somebody (0123456789)"
RECORD = stand_ins.RECORDER

# Packs what it is told to pack, as an archive under the name of an image.
CPACK = """#!/usr/bin/env bash
set -euo pipefail
[[ $1 == -G && $2 == DragNDrop && $5 == -B ]]
"$CPACK" -G TGZ "${@:3}"
for archive in "$6"/*.tar.gz; do mv "$archive" "${archive%.tar.gz}.dmg"; done
echo '["packed"]' >>"$JOURNAL"
"""
ICONUTIL = '#!/bin/sh\necho icns >"$4"\n'
MACDEPLOYQT = f"""#!/usr/bin/env python3
import pathlib, sys
sys.path.insert(0, {str(HERE)!r})
import stand_ins
stand_ins.deploy(pathlib.Path(sys.argv[1]) / "Contents")
"""


class ImageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = tempfile.TemporaryDirectory()
        work = pathlib.Path(cls.work.name)
        cls.build, cls.folder = work / "build", work / "a folder"
        cls.tools = stand_ins.Tools(work, iconutil=ICONUTIL, macdeployqt=MACDEPLOYQT, cpack=CPACK,
                                    codesign=RECORD, xcrun=RECORD, spctl=RECORD)
        cls.tools.environment["CPACK"] = str(pathlib.Path(CMAKE).with_name("cpack"))
        for command in ([CMAKE, "-S", HERE, "-B", cls.build, "-G", "Ninja"],
                        [CMAKE, "--build", cls.build]):
            run = cls.tools.run(*command)
            if run.returncode != 0:
                raise AssertionError(run.stdout + run.stderr)

    @classmethod
    def tearDownClass(cls):
        cls.work.cleanup()

    def setUp(self):
        self.tools.journal.unlink(missing_ok=True)

    def image(self, *arguments, **environment):
        return self.tools.run(PACKAGING / "image", self.build, self.folder, *arguments, **environment)

    def packed_images(self):
        return list(self.folder.iterdir()) if self.folder.exists() else []

    def after_packing(self):
        """The calls that follow, without the folder of the image."""
        calls = self.tools.calls()
        return [[pathlib.Path(word).name if word.endswith(".dmg") else word for word in call]
                for call in calls[calls.index(["packed"]) + 1:]]

    def test_the_image_holds_the_bundle_that_was_deployed_and_signed(self):
        run = self.image(IDENTITY)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        calls = self.tools.calls()
        before = calls[:calls.index(["packed"])]
        self.assertTrue(all(call[0] == "codesign" for call in before), before)
        self.assertEqual([IDENTITY in call for call in before], [True] * 5 + [False])
        self.assertTrue(before[-1][-1].endswith("/KestrelBay.app"), before[-1])
        [image] = self.packed_images()
        self.assertRegex(image.name, r"^KestrelBay-1\.2\.3-\w+\.dmg$")
        with tarfile.open(image) as archive:
            names = archive.getnames()
        self.assertTrue(any(name.endswith("KestrelBay.app/Contents/" + stand_ins.SVG_PLUGIN)
                            for name in names), names)

    def test_the_image_is_signed_then_notarised_stapled_and_tried(self):
        run = self.image(IDENTITY, "profile")
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        [image] = [image.name for image in self.packed_images()]
        self.assertEqual(self.after_packing(), [
            ["codesign", "--sign", IDENTITY, "--timestamp", image],
            ["xcrun", "notarytool", "submit", image, "--keychain-profile", "profile", "--wait"],
            ["xcrun", "stapler", "staple", image],
            ["spctl", "--assess", "--type", "open", "--context", "context:primary-signature",
             "--verbose=2", image]])

    def test_for_this_mac_alone_only_the_bundle_is_signed(self):
        self.assertEqual(self.image().returncode, 0)
        self.assertEqual(self.after_packing(), [])
        self.assertEqual({call[3] for call in self.tools.calls() if "--sign" in call}, {"-"})

    def test_whatever_fails_leaves_no_image(self):
        for failing in ("KestrelBay.app", "codesign", "notarytool", "staple", "spctl"):
            with self.subTest(failing):
                for image in self.packed_images():
                    image.unlink()
                run = self.image(IDENTITY, "profile", FAILING=failing)
                self.assertNotEqual(run.returncode, 0)
                self.assertEqual(self.packed_images(), [])


if __name__ == "__main__":
    CMAKE = sys.argv.pop(1)
    unittest.main()
