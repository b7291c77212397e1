"""sorvanix bake and info: files, names, formats, errors."""
import hashlib
import json
import os
import resource
import struct
import subprocess
import unittest

from program import (FILE_TROUBLE, INVALID_INPUT, PROGRAM, SOME_FAILED, USAGE, ProgramTest)


def png_header(data):
    """Width, height, bits and colour type of a PNG file: its first chunk, as ISO 15948 has it."""
    assert data[:8] == b"\x89PNG\r\n\x1a\n" and data[12:16] == b"IHDR"
    return struct.unpack(">IIBB", data[16:26])


TRUE_COLOUR = 2


class Bake(ProgramTest):
    def test_the_usual_picture_is_a_png_of_the_materials_name(self):
        self.write("folder/rock.json", {"shader": "2D Noise"})
        out, err = self.run_program("bake", "folder/rock.json")
        self.assertEqual((out, err), ("rock.png\n", ""))
        self.assertEqual(png_header(self.bytes_of("rock.png")), (512, 512, 8, TRUE_COLOUR))
        self.assertEqual(self.files(), ["folder/rock.json", "rock.png"])

    def test_size_and_depth_are_those_asked_for(self):
        self.material()
        self.run_program("bake", "m.json", "--size", "30x20", "--depth", "16")
        self.assertEqual(png_header(self.bytes_of("m.png")), (30, 20, 16, TRUE_COLOUR))
        self.run_program("bake", "m.json", "--size", "7")
        self.assertEqual(png_header(self.bytes_of("m.png")), (7, 7, 8, TRUE_COLOUR))

    def test_every_format_and_depth_is_written(self):
        self.material()
        for name, depth in (("a.png", "8"), ("b.png", "16"), ("a.tif", "8"), ("b.tiff", "16"),
                            ("c.tif", "float"), ("a.exr", "half"), ("b.exr", "float"),
                            ("a.jpg", "8")):
            self.run_program("bake", "m.json", "--size", 16, "-o", name, "--depth", depth)
            info = self.json_of("info", name, "--json")
            self.assertEqual((info["width"], info["height"], info["channels"], info["depth"]),
                             (16, 16, 3, depth), name)
            self.assertEqual(info["colourSpace"], "sRGB")

    def test_one_colour_is_that_colour_in_every_pixel(self):
        self.material(colorLow="#204080", colorHigh="#204080")
        self.run_program("bake", "m.json", "--size", 4, "-o", "m.tif")
        # The pixel hash is the SHA-1 of the pixels' bytes: 16 times 20 40 80.
        expected = hashlib.sha1(bytes([0x20, 0x40, 0x80]) * 16).hexdigest().upper()
        self.assertEqual(self.json_of("info", "m.tif", "--json")["pixelHash"], expected)

    def test_time_and_samples_change_the_picture(self):
        self.material(speed=1, noiseType="TurbulentThresholdType")
        hashes = {self.json_of("bake", "m.json", "--size", 32, "--json", *more)[0]["pixelHash"]
                  for more in ((), ("--time", "1.5"), ("--samples", "3"))}
        self.assertEqual(len(hashes), 3)

    def test_json_tells_what_was_baked(self):
        self.material()
        (row,) = self.json_of("bake", "m.json", "--size", "8x4", "--time", "0.5", "--json")
        self.assertEqual(row["pixelHash"], self.json_of("info", "m.png", "--json")["pixelHash"])
        del row["pixelHash"]
        self.assertEqual(row, {"material": "m.json", "output": "m.png", "width": 8, "height": 4,
                               "depth": "8", "time": 0.5})

    def test_a_file_that_is_there_is_replaced(self):
        self.material()
        self.write("m.png", "former")
        self.run_program("bake", "m.json", "--size", 8)
        self.assertEqual(png_header(self.bytes_of("m.png"))[0], 8)

    def test_what_a_link_leads_to_is_replaced_and_the_link_kept(self):
        self.material()
        (self.folder / "elsewhere").mkdir()
        (self.folder / "m.png").symlink_to("elsewhere/picture.png")
        for _ in ("a file that is not there yet", "and one that is"):
            self.run_program("bake", "m.json", "--size", 8)
            self.assertTrue((self.folder / "m.png").is_symlink())
            self.assertEqual(png_header(self.bytes_of("elsewhere/picture.png"))[0], 8)
        self.assertEqual(self.files(), ["elsewhere/picture.png", "m.json", "m.png"])

    def test_quiet_says_nothing(self):
        self.material(octaves=99)
        self.assertEqual(self.run_program("bake", "m.json", "--size", 8, "--quiet"), ("", ""))

    def test_a_value_outside_the_dialog_is_baked_with_a_warning(self):
        self.material(octaves=99)
        _, err = self.run_program("bake", "m.json", "--size", 8)
        self.assertIn("warning: m.json:1:35: /octaves: 99 is above", err)


class Frames(ProgramTest):
    def test_each_frame_is_a_file_of_its_own(self):
        self.material(speed=1)
        out, _ = self.run_program("bake", "m.json", "--size", 8, "--frames", "9-11")
        self.assertEqual(out.split(), ["m.0009.png", "m.0010.png", "m.0011.png"])
        self.assertEqual(self.files(), ["m.0009.png", "m.0010.png", "m.0011.png", "m.json"])

    def test_tokens_stand_for_the_frame_the_material_and_the_channel(self):
        self.material()
        for template, name in (("a_%04d.png", "a_0007.png"), ("a_%d.png", "a_7.png"),
                               ("<material>_<channel>.<frame>.png", "m_colour.0007.png"),
                               ("%03d_%s_100%.png", "007_%s_100%.png")):
            out, _ = self.run_program("bake", "m.json", "--size", 4, "--frames", "7", "-o", template)
            self.assertEqual(out, name + "\n")

    def test_the_time_of_a_frame_is_its_number_by_the_rate(self):
        self.material(speed=1)
        for more, time in (((), 10 / 25), (("--fps", "4"), 2.5)):
            (row,) = self.json_of("bake", "m.json", "--size", 8, "--frames", "10", "--json", *more)
            self.assertAlmostEqual(row["time"], time, places=6)
            self.assertEqual(row["frame"], 10)

    def test_a_frame_is_the_picture_at_its_time(self):
        self.material(speed=1)
        self.run_program("bake", "m.json", "--size", 32, "--frames", "3", "--fps", "2", "-o", "a.png")
        self.run_program("bake", "m.json", "--size", 32, "--time", "1.5", "-o", "b.png")
        self.assertEqual(self.bytes_of("a.png"), self.bytes_of("b.png"))

    def test_wrong_frames_are_told(self):
        self.material()
        for frames in ("3-1", "a-b", "1-", "-1", "1-2-3", "", "1-99999999"):
            self.fails("bake", "m.json", f"--frames={frames}", expect=USAGE, because="--frames")
        self.fails("bake", "m.json", "--frames", "1-2", "-o", "a.png", expect=USAGE,
                   because="several frames need <frame> or %04d")
        self.fails("bake", "m.json", "--frames", "1", "--time", "1", expect=USAGE, because="--time")
        self.fails("bake", "m.json", "--fps", "30", expect=USAGE, because="--frames")
        self.fails("bake", "m.json", "--frames", "1", "--fps", "0", expect=USAGE, because="--fps")


class SeveralMaterials(ProgramTest):
    def test_each_has_its_picture(self):
        self.material("a.json")
        self.material("b.json", scale=2)
        out, _ = self.run_program("bake", "a.json", "b.json", "--size", 8, "-o", "x_<material>.exr")
        self.assertEqual(out.split(), ["x_a.exr", "x_b.exr"])

    def test_a_bad_one_does_not_stop_the_others(self):
        self.write("bad.json", "{}")
        self.material("good.json")
        out, err = self.run_program("bake", "bad.json", "good.json", "missing.json", "--size", 8,
                                    expect=SOME_FAILED)
        self.assertEqual(out, "good.png\n")
        self.assertEqual(err.count("\n"), 2)
        self.assertEqual(self.files(), ["bad.json", "good.json", "good.png"])

    def test_json_tells_failures_beside_results(self):
        self.write("bad.json", "{}")
        self.material("good.json")
        rows = self.json_of("bake", "bad.json", "good.json", "--size", 8, "--json",
                            expect=SOME_FAILED)
        self.assertIn("missing", rows[0]["error"])
        self.assertEqual(rows[1]["output"], "good.png")

    def test_when_none_is_made_the_first_failure_counts(self):
        self.write("bad.json", "{}")
        self.run_program("bake", "bad.json", "missing.json", expect=INVALID_INPUT)
        self.run_program("bake", "missing.json", "bad.json", expect=FILE_TROUBLE)

    def test_two_must_not_be_written_to_one_file(self):
        self.material("a.json")
        self.material("b/a.json")
        self.fails("bake", "a.json", "b/a.json", expect=USAGE,
                   because="a.json and b/a.json would both be written to a.png")
        self.fails("bake", "a.json", "b/a.json", "-o", "./x.png", expect=USAGE, because="both")


class Errors(ProgramTest):
    def test_wrong_sizes_are_told(self):
        self.material()
        for size in ("0", "65537", "512x0", "0x512", "1x65537", "-5", "axb", "8x", "x8", "8x8x8",
                     "1e3", "99999999999", ""):
            self.fails("bake", "m.json", f"--size={size}", expect=USAGE, because="--size")

    def test_the_longest_sides_are_accepted(self):
        self.material()
        self.run_program("bake", "m.json", "--size", "65536x1", "-o", "wide.png")
        self.run_program("bake", "m.json", "--size", "1x65536", "-o", "tall.png")

    def test_a_side_that_the_format_cannot_hold_is_refused_at_once(self):
        self.material()
        self.write("s.json", {"format": "sorvanix-scene", "version": 1})
        for verb in (("bake", "m.json"), ("render", "s.json")):
            for size in ("65501x1", "1x65501"):
                self.fails(*verb, "--size", size, "-o", "a.jpg", expect=USAGE,
                           because="a.jpg: files of this format hold at most 65500 pixels")
        self.run_program("bake", "m.json", "--size", "65500x1", "-o", "a.jpg")

    def test_a_picture_larger_than_the_memory_is_refused_at_once(self):
        memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE")
        if memory >= 65536 * 65536 * 18:
            self.skipTest("this machine could hold it")
        self.material()
        self.fails("bake", "m.json", "--size", "65536", expect=USAGE, because="GB of memory")

    def test_other_wrong_options_are_told(self):
        self.material()
        for option, value in (("--depth", "32"), ("--threads", "-1"), ("--threads", "x"),
                              ("--samples", "0"), ("--samples", "65"), ("--time", "nan"),
                              ("--time", "1e39"), ("--time", "soon"), ("--progress", "loud")):
            self.fails("bake", "m.json", f"{option}={value}", expect=USAGE, because=option)

    def test_formats_that_cannot_be_written_are_told(self):
        self.material()
        self.fails("bake", "m.json", "-o", "a.bmp", expect=USAGE, because="'.bmp'")
        self.fails("bake", "m.json", "-o", "noextension", expect=USAGE, because="extension")
        self.fails("bake", "m.json", "-o", "a.png", "--depth", "half", expect=USAGE,
                   because=".png files hold a depth of 8 or 16, not half")
        self.fails("bake", "m.json", "-o", "a.exr", "--depth", "8", expect=USAGE, because="a.exr")

    def test_places_that_cannot_be_written_are_told(self):
        self.material()
        (self.folder / "folder.png").mkdir()
        for place in ("missing/a.png", "m.json/a.png", "/proc/a.png", "folder.png"):
            self.fails("bake", "m.json", "-o", place, expect=FILE_TROUBLE,
                       because=f"{place}: cannot be written: ")

    def test_a_full_disk_is_told_and_leaves_the_former_file(self):
        self.material(noiseType="WhiteRandomType")
        for name in ("a.png", "a.tif", "a.exr", "a.jpg"):
            self.write(name, "former")
            process = subprocess.run(
                [PROGRAM, "bake", "m.json", "--size", "256", "-o", name], cwd=self.folder,
                capture_output=True, text=True, check=False,
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000)))
            self.assertEqual(process.returncode, FILE_TROUBLE, process.stderr)
            self.assertEqual(process.stdout, "")
            self.assertIn(f"{name}: cannot be written: ", process.stderr)
            self.assertEqual(process.stderr.count("\n"), 1, process.stderr)
            self.assertEqual(self.bytes_of(name), b"former")
            self.assertEqual([f for f in self.files() if f.startswith(".")], [])


class Info(ProgramTest):
    def test_it_tells_the_hash_and_the_recipe_of_every_format(self):
        self.material(octaves=2.5)
        for name in ("a.png", "a.tif", "a.exr", "a.jpg"):
            (row,) = self.json_of("bake", "m.json", "--size", "8x4", "-o", name, "--json",
                                  "--samples", 2, "--time", "0.25")
            info = self.json_of("info", name, "--json")
            self.assertEqual(info["recipe"],
                             {"material": {"shader": "2D Noise", "octaves": 2.5},
                              "channel": "colour", "size": [8, 4], "samples": 2, "time": 0.25})
            self.assertRegex(info["program"], r"^sorvaNIX \d")
            if name == "a.jpg":  # whose pixels are not exactly those that went in
                for told in (row, info):
                    self.assertFalse({"recordedHash", "intact"} & set(told), told)
                self.assertNotIn("pixelHash", row)
            else:
                self.assertEqual(info["recordedHash"], row["pixelHash"])
                self.assertTrue(info["intact"])

    def test_the_text_tells_the_same(self):
        self.material()
        self.run_program("bake", "m.json", "--size", 8)
        out, _ = self.run_program("info", "m.png")
        info = self.json_of("info", "m.png", "--json")
        for word in ("png", "8x8, 3 channels", info["pixelHash"], '{"shader":"2D Noise"}'):
            self.assertIn(word, out)

    def test_the_recipe_bakes_the_same_picture_again(self):
        self.material(noiseType=28, octaves=3.3, scale=0.7, colorLow="#102030", absolute=True)
        self.run_program("bake", "m.json", "--size", 64, "-o", "first.png")
        recipe = self.json_of("info", "first.png", "--json")["recipe"]
        self.write("again.json", json.dumps(recipe["material"]))
        self.run_program("bake", "again.json", "--size", "{}x{}".format(*recipe["size"]),
                         "--samples", recipe["samples"], "--time", recipe["time"],
                         "-o", "second.png")
        self.assertEqual(self.bytes_of("first.png"), self.bytes_of("second.png"))

    def test_files_that_are_no_images_are_told(self):
        self.write("a.png", "no image")
        out, err = self.run_program("info", "a.png", expect=INVALID_INPUT)
        self.assertEqual(out, "")
        self.assertTrue(err.startswith("sorvanix: a.png: "), err)
        self.fails("info", "missing.png", expect=FILE_TROUBLE, because="missing.png: ")
        self.fails("info", ".", expect=FILE_TROUBLE, because=".: it is a folder")

    def test_a_truncated_picture_is_told(self):
        self.material()
        self.run_program("bake", "m.json", "--size", 64, "-o", "a.exr")
        (self.folder / "a.exr").write_bytes(self.bytes_of("a.exr")[:2000])
        self.run_program("info", "a.exr", expect=INVALID_INPUT)


if __name__ == "__main__":
    unittest.main()
