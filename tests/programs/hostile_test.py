"""What must not happen: sources overwritten, cut bitmaps taken for black, aborts on closed outputs."""
import subprocess
import unittest

from program import DONE, FILE_TROUBLE, INVALID_INPUT, PROGRAM, USAGE, ProgramTest


class Sources(ProgramTest):
    def test_a_bake_does_not_replace_its_material(self):
        self.material("m.png", noiseType=12)
        self.fails("bake", "m.png", "--size", 8, expect=USAGE, because="is a material to be baked")

    def test_nor_another_material_of_the_call_under_another_name(self):
        self.material("a.json")
        self.material("b.png")
        self.fails("bake", "a.json", "b.png", "--size", 8, "-o", "./../" + self.folder.name +
                   "/<material>.png", expect=USAGE, because="is a material to be baked")

    def test_a_cut_bitmap_is_an_error_and_no_black_picture(self):
        self.material("whole.json")
        self.run_program("bake", "whole.json", "--size", 64)
        content = self.bytes_of("whole.png")
        (self.folder / "cut.png").write_bytes(content[:len(content) // 2])
        self.write("hue.json", {"shader": "Hue", "input": "cut.png"})
        _, err = self.run_program("bake", "hue.json", "--size", 8, expect=INVALID_INPUT)
        self.assertIn("cut.png", err)
        self.assertFalse((self.folder / "hue.png").exists())


class ClosedOutputs(ProgramTest):
    def run_with(self, *arguments, **streams):
        with open("/dev/full", "w", encoding="utf-8") as full:
            streams = {name: full for name in streams}
            return subprocess.run([PROGRAM, *map(str, arguments)], cwd=self.folder, check=False,
                                  **{"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL,
                                     **streams}).returncode

    def test_a_full_error_stream_changes_no_exit_code(self):
        self.material()
        self.assertEqual(self.run_with("lst", stderr="full"), USAGE)
        self.assertEqual(self.run_with("bake", "no.json", stderr="full"), FILE_TROUBLE)
        self.assertEqual(self.run_with("bake", "m.json", "--size", 8, "--progress", "json",
                                       stderr="full"), DONE)
        self.assertTrue((self.folder / "m.png").exists())

    def test_a_lost_result_is_told(self):
        for verb in ("list", "schema"):
            self.assertEqual(self.run_with(verb, stdout="full"), FILE_TROUBLE, verb)


if __name__ == "__main__":
    unittest.main()
