"""What is left when a disk is full, a folder refuses, or the program is killed: whole files or none."""
import json
import os
import random
import resource
import signal
import subprocess
import time
import unittest

from program import FILE_TROUBLE, PROGRAM, ProgramTest

SCENE = {"format": "sorvanix-scene", "version": 1,
         "materials": [{"name": "M", "channels": {"colour": {"graph": {"shader": "2D Noise"}}}}],
         "objects": [{"kind": "sphere", "textures": [{"material": "M"}]},
                     {"kind": "distantLight", "rotation": [30, -40, 0]}]}


def large_scene(nodes):
    return {**SCENE, "objects": [{"kind": "null", "name": f"object {i}"} for i in range(nodes)]}


class FullDisk(ProgramTest):
    """A limit on the size of files fails writes as a full disk does."""

    def run_on_a_full_disk(self, *arguments, bytes_left=1000):
        process = subprocess.run(
            [PROGRAM, *arguments], cwd=self.folder, capture_output=True, text=True, check=False,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (bytes_left, bytes_left)))
        self.assertEqual(process.returncode, FILE_TROUBLE, process.stderr)
        self.assertEqual(process.stderr.count("\n"), 1, process.stderr)
        return process.stderr

    def test_no_verb_leaves_part_of_a_file_or_harms_the_former_one(self):
        self.material()
        self.write("s.json", SCENE)
        self.write("large.json", large_scene(1000))
        self.run_program("convert", "large.json", "large.svx")
        self.write("out.svx", "former")
        before = {name: self.bytes_of(name) for name in self.files()}
        for arguments in (("bake", "m.json", "--size", "256", "-o", "new.png"),
                          ("bake", "m.json", "--size", "256", "-o", "new.exr"),
                          ("render", "s.json", "--size", "256", "-o", "new.png"),
                          ("convert", "large.svx", "new.json"), ("convert", "large.json", "out.svx"),
                          ("upgrade", "large.svx")):
            with self.subTest(arguments):
                self.run_on_a_full_disk(*arguments)
                self.assertEqual({name: self.bytes_of(name) for name in self.files()}, before)


class RefusingFolder(ProgramTest):
    def test_is_told_before_the_work(self):
        self.material()
        self.write("s.json", SCENE)
        # Also the system's administrator cannot make files there.
        for arguments in (("bake", "m.json", "--size", "8", "-o", "/proc/out.png"),
                          ("render", "s.json", "--size", "8", "-o", "/proc/out.png"),
                          ("convert", "s.json", "/proc/out.svx")):
            with self.subTest(arguments):
                self.fails(*arguments, expect=FILE_TROUBLE, because="/proc/out.")

    @unittest.skipIf(os.geteuid() == 0, "the administrator may write everywhere")
    def test_a_folder_without_the_right_to_write_stays_as_it_is(self):
        self.write("s.json", SCENE)
        self.folder.chmod(0o555)
        self.addCleanup(self.folder.chmod, 0o755)
        self.fails("upgrade", "s.json", expect=FILE_TROUBLE, because="s.json: cannot be written")


class Killed(ProgramTest):
    """kill -9 at any time: finished files are whole, unfinished ones are not there."""

    def kill_after(self, seconds, *arguments):
        process = self.start(*arguments)
        time.sleep(seconds)
        process.send_signal(signal.SIGKILL)
        process.communicate()

    def check_resuming(self, arguments, outputs):
        """Kills the program again and again, each time later, then lets it resume."""
        inputs = self.files()
        started = time.monotonic()
        self.run_program(*arguments)
        whole_run = time.monotonic() - started
        whole = {name: self.bytes_of(name) for name in outputs}
        for name in outputs:
            (self.folder / name).unlink()
        chance = random.Random(1)
        for _ in range(8):
            self.kill_after(chance.uniform(0.2, 1) * whole_run, *arguments)
            left = set(self.files()) - set(inputs)
            self.assertLessEqual(left, set(outputs))
            for name in left:
                self.assertEqual(self.bytes_of(name), whole[name], name)
            for name in list(left)[::2]:  # some are missing, and the others need no second time
                (self.folder / name).unlink()
        times = {name: (self.folder / name).stat().st_mtime_ns
                 for name in set(self.files()) - set(inputs)}
        self.run_program(*arguments, "--resume")
        self.assertEqual({name: self.bytes_of(name) for name in outputs}, whole)
        for name, changed in times.items():
            self.assertEqual((self.folder / name).stat().st_mtime_ns, changed, "made again")

    def test_a_set_of_bakes_is_completed(self):
        names = [f"m{i}" for i in range(12)]
        for i, name in enumerate(names):
            self.material(name + ".json", scale=1 + i)
        self.check_resuming(("bake", *(n + ".json" for n in names), "--size", "128"),
                            [n + ".png" for n in names])

    def test_a_set_of_frames_is_completed(self):
        self.write("s.json", SCENE)
        self.check_resuming(
            ("render", "s.json", "--size", "96", "--frames", "1-8", "-o", "f%04d.png"),
            [f"f{i:04}.png" for i in range(1, 9)])

    def test_a_scene_that_is_rewritten_is_the_former_or_the_new_one(self):
        self.write("s.json", large_scene(20000))
        self.run_program("convert", "s.json", "s.svx")
        former = self.bytes_of("s.svx")
        self.write("other.json", large_scene(19000))
        self.run_program("convert", "other.json", "other.svx")
        new = self.bytes_of("other.svx")
        for i in range(12):
            self.kill_after(0.05 * i, "convert", "other.json", "s.svx")
            self.assertIn(self.bytes_of("s.svx"), (former, new))
        self.assertEqual(self.files(), ["other.json", "other.svx", "s.json", "s.svx"])


if __name__ == "__main__":
    unittest.main()
