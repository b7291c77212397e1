"""Equal bakes give equal bytes, and a bake that is cut short leaves nothing."""
import json
import signal
import time
import unittest

from program import CANCELLED, ProgramTest


class Repeat(ProgramTest):
    def bake(self, *options, name):
        self.run_program("bake", "m.json", "--size", "200x130", "-o", name, *options)
        return self.bytes_of(name)

    def test_runs_and_numbers_of_threads_do_not_show_in_the_file(self):
        self.material(noiseType="SparseConvolutionType", speed=1)
        for extension in ("png", "tif", "exr", "jpg"):
            name = "a." + extension
            first = self.bake("--threads", 1, name=name)
            self.assertEqual(self.bake("--threads", 8, name=name), first, extension)
            time.sleep(1.1)  # a file that told the second of its making would differ now
            self.assertEqual(self.bake("--threads", 8, name=name), first, extension)

    def test_random_noise_repeats_too(self):
        self.material(noiseType="WhiteRandomType")
        first = self.bake("--threads", 1, name="a.png")
        self.assertEqual(self.bake("--threads", 8, name="b.png"), first)

    def test_random_noise_does_not_depend_on_what_was_baked_before(self):
        self.material("a.json", noiseType="WhiteRandomType")
        self.material("b.json", noiseType="WhiteRandomType")
        rows = self.json_of("bake", "a.json", "b.json", "--size", 64, "--json")
        self.assertEqual(rows[0]["pixelHash"], rows[1]["pixelHash"])


# Long enough that no machine is done before a signal comes.
ENDLESS = ("bake", "m.json", "--size", "4096", "--samples", "64", "-o", "out.png")


class CutShort(ProgramTest):
    def start_and_wait_for_progress(self):
        self.material()
        process = self.start(*ENDLESS, "--progress", "json")
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.stderr.close)
        while not self.has_begun(process):
            time.sleep(0.01)
        return process

    @staticmethod
    def has_begun(process):
        """Whether the program has loaded its module, and so begun to bake."""
        with open(f"/proc/{process.pid}/maps", encoding="utf-8") as maps:
            return "sorvaNIX.so" in maps.read()

    def test_ctrl_c_ends_the_bake_and_leaves_nothing(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            process = self.start_and_wait_for_progress()
            process.send_signal(number)
            self.assertEqual(process.wait(), CANCELLED)
            self.assertIn(b"sorvanix: cancelled\n", process.stderr.read())
            self.assertEqual(process.stdout.read(), b"")
            self.assertEqual(self.files(), ["m.json"])

    def test_the_former_file_outlives_ctrl_c(self):
        self.write("out.png", "former")
        process = self.start_and_wait_for_progress()
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(), CANCELLED)
        self.assertEqual(self.bytes_of("out.png"), b"former")

    def test_a_killed_bake_leaves_nothing(self):
        process = self.start_and_wait_for_progress()
        process.kill()
        process.wait()
        self.assertEqual(self.files(), ["m.json"])


class ProgressLines(ProgramTest):
    def test_json_lines_rise_to_the_end(self):
        self.material()
        _, err = self.run_program("bake", "m.json", "--size", 512, "--progress", "json")
        rows = [json.loads(line) for line in err.splitlines()]
        done = [row["done"] for row in rows]
        self.assertEqual(done, sorted(set(done)))
        self.assertEqual(rows[-1], {"file": "m.png", "done": 64, "total": 64})  # 8 x 8 tiles of 64

    def test_a_bar_is_drawn_when_asked_for_and_taken_away_at_the_end(self):
        self.material()
        _, err = self.run_program("bake", "m.json", "--size", 64, "--progress", "bar")
        self.assertIn("100% m.png", err)
        self.assertTrue(err.endswith("\r\x1b[K"), repr(err))

    def test_without_a_terminal_there_is_no_bar(self):
        self.material()
        self.assertEqual(self.run_program("bake", "m.json", "--size", 64)[1], "")


if __name__ == "__main__":
    unittest.main()
