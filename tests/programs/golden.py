"""Compares pictures with those under tests/goldens.

With SORVANIX_UPDATE_GOLDENS in the environment the pictures are replaced first.
"""
import os
import shutil
import subprocess

from program import ProgramTest

ONE_STEP_AND_A_HALF = str(1.5 / 255)
HALF_A_PERCENT = "0.5"


class GoldenTest(ProgramTest):
    def compare(self, made, golden):
        """Equal but for the last bit of a value, and for one pixel in two hundred."""
        if os.environ.get("SORVANIX_UPDATE_GOLDENS"):
            shutil.copyfile(made, golden)
        told = subprocess.run(["idiff", "-fail", ONE_STEP_AND_A_HALF, "-failpercent",
                               HALF_A_PERCENT, "-hardfail", "1", str(made), str(golden)],
                              capture_output=True, text=True, check=False)
        self.assertEqual(told.returncode, 0, told.stdout + told.stderr)
