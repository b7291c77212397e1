"""Holds the rule of dependency: module -> contract <- host <- apps, and nothing across."""
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(sys.argv.pop(1) if len(sys.argv) > 1 else ".").resolve()

# What each room may include by quoted path. Tests and benchmarks may look into every room.
ALLOWED = {
    "include": (),
    "module": ("module/",),
    "host": ("host/",),
    "apps": ("host/", "apps/"),
}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^">]+)[">]', re.MULTILINE)

# The module stands on the standard library and the contract alone.
STANDARD = re.compile(r"^[a-z_0-9]+(\.h)?$")
# The one build tool in module/ that is not part of the plug-in.
BUILD_TOOLS = {"module/resources/write_shaders_json.cpp"}


def sources(room):
    for path in sorted((ROOT / room).rglob("*")):
        if path.suffix in (".h", ".c", ".cpp"):
            yield path.relative_to(ROOT).as_posix(), path.read_text(encoding="utf-8")


class Dependencies(unittest.TestCase):
    def test_quoted_includes_stay_in_their_rooms(self):
        seen = 0
        for room, allowed in ALLOWED.items():
            for name, text in sources(room):
                for bracket, target in INCLUDE.findall(text):
                    seen += 1
                    if bracket == '"':
                        self.assertTrue(target.startswith(allowed), f"{name} includes {target}")
        self.assertGreater(seen, 50, "the sources were found")

    def test_angled_includes_name_no_room(self):
        for room in ALLOWED:
            for name, text in sources(room):
                for bracket, target in INCLUDE.findall(text):
                    rooms = tuple(r + "/" for r in ALLOWED)
                    if bracket == "<":
                        self.assertFalse(target.startswith(rooms), f"{name} includes {target}")

    def test_the_module_uses_the_standard_library_only(self):
        for name, text in sources("module"):
            if name in BUILD_TOOLS:
                continue
            for bracket, target in INCLUDE.findall(text):
                if bracket == "<":
                    fits = target.startswith("sorvanix/") or STANDARD.match(target)
                    self.assertTrue(fits, f"{name} includes <{target}>")

    def test_the_contract_uses_c_headers_only(self):
        for name, text in sources("include"):
            for _, target in INCLUDE.findall(text):
                fits = target.startswith("sorvanix/") or target in (
                    "assert.h", "stddef.h", "stdint.h")
                self.assertTrue(fits, f"{name} includes <{target}>")


if __name__ == "__main__":
    unittest.main()
