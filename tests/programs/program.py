"""The program under test, run as a process in a folder of its own."""
import json
import os
import pathlib
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["SORVANIX_PROGRAM"]
RESOURCES = pathlib.Path(os.environ["SORVANIX_RESOURCES"])

DONE, SOME_FAILED, USAGE, INVALID_INPUT, NO_MODULE, FILE_TROUBLE = range(6)
CANCELLED = 130


class ProgramTest(unittest.TestCase):
    """Each test has an empty folder, in which the program runs."""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="sorvanix-test-")
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def start(self, *arguments, **environment):
        return subprocess.Popen([PROGRAM, *map(str, arguments)], cwd=self.folder,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                env={**os.environ, **environment})

    def run_program(self, *arguments, expect=DONE, **environment):
        """Runs the program to its end, holds its exit code, answers its two outputs."""
        process = self.start(*arguments, **environment)
        out, err = (output.decode("utf-8") for output in process.communicate())
        self.assertEqual(process.returncode, expect, f"{arguments}\n{out}\n{err}")
        return out, err

    def fails(self, *arguments, expect, because):
        """Holds that a call fails with one line that says why, and prints and writes nothing."""
        before = self.files()
        out, err = self.run_program(*arguments, expect=expect)
        self.assertEqual(out, "")
        self.assertEqual(err.count("\n"), 1, err)
        self.assertTrue(err.startswith("sorvanix: "), err)
        self.assertIn(because, err)
        self.assertEqual(self.files(), before)

    def json_of(self, *arguments, **options):
        return json.loads(self.run_program(*arguments, **options)[0])

    def write(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content if isinstance(content, str) else json.dumps(content),
                        encoding="utf-8")
        return path

    def material(self, name="m.json", **parameters):
        return self.write(name, {"shader": "2D Noise", **parameters})

    def bytes_of(self, name):
        return (self.folder / name).read_bytes()

    def files(self):
        return sorted(p.relative_to(self.folder).as_posix() for p in self.folder.rglob("*")
                      if not p.is_dir())
