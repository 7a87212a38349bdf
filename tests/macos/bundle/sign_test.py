"""packaging/macos/sign: in which order what is signed, and how."""

import pathlib
import tempfile
import unittest

import stand_ins
from stand_ins import PACKAGING

IDENTITY = "Developer ID Application: Somebody (0123456789)"


class SignTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tools = stand_ins.Tools(folder.name, codesign=stand_ins.RECORDER)
        self.bundle = pathlib.Path(folder.name) / "a folder" / "KestrelBay.app"
        contents = self.bundle / "Contents"
        stand_ins.deploy(contents)
        stand_ins.write(contents / "Frameworks/libmd4c.0.dylib", stand_ins.macho())
        self.libraries = {str(path) for path in contents.rglob("*.dylib")}
        self.framework = str(contents / "Frameworks/QtCore.framework")
        self.assertEqual(len(self.libraries), 4)

    def sign(self, identity, **environment):
        return self.tools.run(PACKAGING / "sign", self.bundle, identity, **environment)

    def signed(self):
        """What was signed in this order, and the options of each."""
        calls = [call[1:] for call in self.tools.calls() if "--sign" in call]
        return [call[-1] for call in calls], [call[:-1] for call in calls]

    def test_what_lies_within_is_signed_before_what_it_lies_in(self):
        self.assertEqual(self.sign(IDENTITY).returncode, 0)
        order, _ = self.signed()
        self.assertEqual(set(order[:4]), self.libraries)
        self.assertEqual(order[4:], [self.framework, str(self.bundle)])

    def test_all_of_it_is_signed_for_the_hardened_runtime_with_a_time_stamp(self):
        self.assertEqual(self.sign(IDENTITY).returncode, 0)
        _, options = self.signed()
        within = ["--force", "--sign", IDENTITY, "--options", "runtime", "--timestamp"]
        self.assertEqual(options[:-1], [within] * 5)
        self.assertEqual(options[-1], [*within, "--entitlements", str(PACKAGING / "KestrelBay.entitlements")])

    def test_for_this_mac_alone_the_runtime_could_load_no_library(self):
        self.assertEqual(self.sign("-").returncode, 0)
        order, options = self.signed()
        self.assertEqual(len(order), 6)
        self.assertEqual(options[0], ["--force", "--sign", "-"])

    def test_at_the_end_the_signature_is_verified_as_a_whole(self):
        self.assertEqual(self.sign(IDENTITY).returncode, 0)
        self.assertEqual(self.tools.calls()[-1],
                         ["codesign", "--verify", "--deep", "--strict", "--verbose=2", str(self.bundle)])

    def test_whatever_cannot_be_signed_or_verified_stops_it(self):
        for failing in ("libmd4c.0.dylib", "QtCore.framework", "KestrelBay.app", "--verify"):
            with self.subTest(failing):
                self.assertNotEqual(self.sign(IDENTITY, FAILING=failing).returncode, 0)
                self.assertIn(failing, str(self.tools.calls()[-1]))


if __name__ == "__main__":
    unittest.main()
