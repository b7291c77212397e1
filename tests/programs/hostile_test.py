"""What must not happen: sources overwritten, cut bitmaps taken for black, aborts on closed outputs."""
import struct
import subprocess
import unittest
import zlib

from program import DONE, FILE_TROUBLE, INVALID_INPUT, PROGRAM, USAGE, ProgramTest


class Sources(ProgramTest):
    def test_a_bake_does_not_replace_its_material(self):
        self.material("m.png", noiseType=12)
        self.fails("bake", "m.png", "--size", 8, expect=USAGE,
                   because="m.png: this is a file that the picture is made from")

    def test_nor_another_material_of_the_call_under_another_name(self):
        self.material("a.json")
        self.material("b.png")
        self.fails("bake", "a.json", "b.png", "--size", 8, "-o", "./../" + self.folder.name +
                   "/<material>.png", expect=USAGE, because="a file that the picture is made from")

    def test_nor_what_a_material_or_a_mesh_is_read_from(self):
        self.material("rock.json")
        self.run_program("bake", "rock.json", "--size", 8, "-o", "photo.png")
        self.write("inner.json", {"shader": "Hue", "input": "photo.png"})
        self.write("m.json", {"shader": "Hue", "input": "inner.json"})
        self.write("plane.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvt 0 1\n"
                                "f 1/1 2/2 3/3\n")
        for link, source in (("inner.png", "inner.json"), ("mesh.png", "plane.obj")):
            (self.folder / link).symlink_to(source)
        for output in ("photo.png", "inner.png", "mesh.png"):
            self.fails("bake", "m.json", "--mesh", "plane.obj", "--size", 8, "-o", output,
                       expect=USAGE, because=output + ": this is a file that the picture is made")

    def test_nothing_is_baked_when_one_of_the_pictures_would(self):
        self.material("a.json")
        self.run_program("bake", "a.json", "--size", 8, "-o", "b.png")
        self.write("b.json", {"shader": "Hue", "input": "b.png"})
        self.fails("bake", "a.json", "b.json", "--size", 8, expect=USAGE,
                   because="b.png: this is a file that the picture is made from")

    def test_a_render_does_not_replace_its_scene_or_a_bitmap_of_it(self):
        self.material("rock.json")
        self.run_program("bake", "rock.json", "--size", 8, "-o", "photo.png")
        materials = [{"name": "A", "channels": {"colour": {"graph": "photo.png"}}},
                     {"name": "B", "channels": {"colour": {
                         "graph": {"shader": "Hue", "input": "photo.png"}}}}]
        for number, material in enumerate(materials):
            scene = f"s{number}.png"
            self.write(scene, {"format": "sorvanix-scene", "version": 1, "materials": [material]})
            for output in (scene, "photo.png"):
                self.fails("render", scene, "--size", 8, "-o", output, expect=USAGE,
                           because=output + ": this is a file that the picture is made from")

    def test_a_header_that_asks_for_more_memory_than_there_is_is_an_error(self):
        def chunk(kind, content):
            return (struct.pack(">I", len(content)) + kind + content +
                    struct.pack(">I", zlib.crc32(kind + content)))
        # 65535 x 65535 pixels of four 16-bit values are 34 GB; hardly a byte of them is there.
        header = struct.pack(">IIBBBBB", 65535, 65535, 16, 6, 0, 0, 0)
        (self.folder / "vast.png").write_bytes(
            b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(b"")) +
            chunk(b"IEND", b""))
        self.write("hue.json", {"shader": "Hue", "input": "vast.png"})
        self.fails("info", "vast.png", expect=INVALID_INPUT, because="vast.png: ")
        self.fails("bake", "hue.json", "--size", 8, expect=INVALID_INPUT, because="vast.png: ")

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
