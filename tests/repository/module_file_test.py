"""The built module exports its entry alone and needs nothing but the C library and libm."""
import re
import subprocess
import sys
import unittest

MODULE = sys.argv.pop(1)
SYSTEM_LIBRARIES = re.compile(r"^(libc|libm|ld-linux[-a-z0-9_]*)\.so\.\d+$")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class ModuleFile(unittest.TestCase):
    def test_exports_c4d_main_and_nothing_else(self):
        names = [line.split()[-1] for line in run("nm", "-D", "--defined-only", MODULE).splitlines()]
        self.assertEqual(names, ["c4d_main"])

    def test_needs_only_system_libraries(self):
        needed = re.findall(r"\(NEEDED\).*\[(.+)\]", run("readelf", "-d", MODULE))
        self.assertTrue(needed)
        for library in needed:
            self.assertRegex(library, SYSTEM_LIBRARIES)


if __name__ == "__main__":
    unittest.main()
