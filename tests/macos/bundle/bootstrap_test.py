"""script/bootstrap as on a Mac: what Homebrew is asked for."""

import tempfile
import unittest

import stand_ins

DARWIN = "#!/bin/sh\necho Darwin\n"


class BootstrapTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tools = stand_ins.Tools(folder.name, uname=DARWIN, brew=stand_ins.RECORDER)

    def installed_for(self, *needs, **environment):
        run = self.tools.run(stand_ins.ROOT / "script/bootstrap", *needs, **environment)
        self.assertEqual(run.returncode, 0, run.stderr)
        return [call[-1] for call in self.tools.calls() if call[1] == "install"]

    def test_of_qt_only_what_the_program_is_built_with(self):
        installed = self.installed_for("build", "run", FAILING="list")
        self.assertEqual(installed, ["cmake", "librsvg", "ninja", "nlohmann-json", "qtbase", "qtsvg"])

    def test_what_is_there_is_left_alone(self):
        self.assertEqual(self.installed_for("build"), [])

    def test_without_a_need_all_of_it(self):
        installed = self.installed_for(FAILING="list")
        self.assertIn("googletest", installed)
        self.assertIn("google-benchmark", installed)

    def test_the_needs_of_a_mac_are_known(self):
        for line in (stand_ins.ROOT / "script/packages.homebrew").read_text().splitlines():
            if line.startswith("["):
                self.installed_for(line.strip("[]"))


if __name__ == "__main__":
    unittest.main()
