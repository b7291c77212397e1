"""The C host loads the module under Wine and prints a colour, whatever letters the path holds.

64-bit programs run under Debian's wine64. 32-bit ones need a Wine of 32 bits: `./dev wine32` puts
one into a folder of its own, since adding an architecture would change the machine.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

BITS, BUILD, HOST, MODULE = int(sys.argv[1]), *(pathlib.Path(a).resolve() for a in sys.argv[2:5])
ROOT = (BUILD / "wine32").resolve()  # a small Debian for 32 bits, or absent
SKIPPED = 77


def inside(path):
    """The path as the programs see it that run in ROOT."""
    return pathlib.Path("/") / path.relative_to(ROOT) if BITS == 32 else path


def run(*command):
    if BITS == 32:
        # Wine finds its own parts through /proc; the mount ends with the command.
        mount = 'mount -t proc proc "$0/proc" && exec chroot "$0" "$@"'
        command = ["unshare", "--mount", "sh", "-c", mount, ROOT, *command]
    environment = dict(
        PATH="/usr/sbin:/usr/bin:/sbin:/bin",
        LC_ALL="C.UTF-8",  # decides how Wine reads file names
        HOME=str(inside(PREFIX)),
        WINEPREFIX=str(inside(PREFIX / "prefix")),
        WINEDEBUG="-all",
        WINEDLLOVERRIDES="mscoree=;mshtml=")  # no question about optional parts
    return subprocess.run(list(map(str, command)), env=environment, capture_output=True, text=True)


class MinimalHost(unittest.TestCase):
    def samples(self, module):
        done = run("wine", inside(HOST), inside(module))
        self.assertEqual(done.returncode, 0, done.stderr)
        # x = 0.25 * 12.8 = 3.2, y = 0.5 * 12.8 = 6.4: 0.5 + 0.25 sin(3.2) cos(6.4) = 0.4855.
        self.assertIn("0.4855 0.4855 0.4855", done.stdout)

    def test_samples_a_shader(self):
        self.samples(MODULE)

    def test_finds_a_module_whose_path_holds_spaces_and_letters_of_any_language(self):
        folder = PREFIX / "shaders \u00fc \u65e5\u672c" / "sorvaNIX"
        shutil.copytree(MODULE.parent, folder)
        self.samples(folder / MODULE.name)

    def test_says_what_it_wants_without_a_module(self):
        done = run("wine", inside(HOST), "no such module.dll")
        self.assertEqual(done.returncode, 1)
        self.assertIn("usage", done.stderr)


def missing():
    if BITS == 32 and not (ROOT / "usr/lib/wine/wine").exists():
        return "no 32-bit Wine; ./dev wine32 makes one"
    if BITS == 32 and os.geteuid() != 0:
        return "only root may enter build/wine32"
    if BITS == 64 and not pathlib.Path("/usr/lib/wine/wine64").exists():
        return "no 64-bit Wine; ./dev setup installs it"
    return None


if __name__ == "__main__":
    if reason := missing():
        print(f"SKIPPED: {HOST.name} of {BITS} bits: {reason}")
        sys.exit(SKIPPED)
    with tempfile.TemporaryDirectory(dir=ROOT / "tmp" if BITS == 32 else None,
                                     ignore_cleanup_errors=True) as folder:
        PREFIX = pathlib.Path(folder)
        if BITS == 32:  # what is run must lie inside
            HOST = pathlib.Path(shutil.copy(HOST, PREFIX))
            MODULE = pathlib.Path(shutil.copytree(MODULE.parent, PREFIX / "module")) / MODULE.name
        program = unittest.main(argv=sys.argv[:1], exit=False)
        run("/usr/lib/wine/wineserver", "-k")  # it would outlive its folder by some seconds
    sys.exit(not program.result.wasSuccessful())
