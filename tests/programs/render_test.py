"""sorvanix render: pictures of scenes, sequences, resume, errors."""
import json
import unittest

from program import CANCELLED, FILE_TROUBLE, INVALID_INPUT, RESOURCES, USAGE, ProgramTest

SIZE = ("--size", "24x16", "--samples", "1")


def scene(**parts):
    """A sphere with a noise on it, in the light of one lamp."""
    return {"format": "sorvanix-scene", "version": 1,
            "materials": [{"name": "Rock", "channels": {
                "colour": {"on": True, "graph": {"shader": "2D Noise", "speed": 1,
                                                 "noiseType": "TurbulentThresholdType"}}}}],
            "objects": [{"kind": "sphere", "textures": [{"material": "Rock"}]},
                        {"kind": "distantLight", "rotation": [30, -40, 0]}], **parts}


class Render(ProgramTest):
    def info(self, name):
        return self.json_of("info", name, "--json")

    def test_the_usual_picture_has_the_scenes_name_and_the_cameras_size(self):
        self.write("ball.scene.json", scene(camera={"width": 30, "height": 20}))
        out, err = self.run_program("render", "ball.scene.json")
        self.assertEqual((out, err), ("ball.scene.png\n", ""))
        info = self.info("ball.scene.png")
        self.assertEqual((info["width"], info["height"], info["colourSpace"]), (30, 20, "sRGB"))

    def test_every_preview_scene_renders(self):
        for shape in ("Sphere", "Cube", "Plane", "Cylinder", "Torus"):
            file = RESOURCES / f"Preview_{shape}_C.c4d"
            out, err = self.run_program("render", file, *SIZE, "-o", f"{shape}.png")
            self.assertEqual((out, err), (f"{shape}.png\n", ""))

    def test_runs_and_numbers_of_threads_do_not_show_in_the_file(self):
        self.write("s.json", scene())
        for extension in ("png", "tif", "exr", "jpg"):
            name = "a." + extension
            pictures = []
            for threads in (1, 8, 8):
                self.run_program("render", "s.json", "--size", "64x48", "--threads", threads,
                                 "-o", name)
                pictures.append(self.bytes_of(name))
            self.assertEqual(pictures[0], pictures[1], extension)
            self.assertEqual(pictures[1], pictures[2], extension)

    def test_random_noise_repeats_too(self):
        made = scene()
        graph = made["materials"][0]["channels"]["colour"]["graph"]
        graph["noiseType"] = "WhiteRandomType"
        self.write("s.json", made)
        rows = [self.json_of("render", "s.json", *SIZE, "--threads", threads, "--json")[0]
                for threads in (1, 8)]
        self.assertEqual(rows[0]["pixelHash"], rows[1]["pixelHash"])

    def test_json_tells_what_was_rendered(self):
        self.write("s.json", scene())
        (row,) = self.json_of("render", "s.json", *SIZE, "--time", "0.5", "--json")
        self.assertEqual(row.pop("pixelHash"), self.info("s.png")["pixelHash"])
        self.assertEqual(row, {"scene": "s.json", "output": "s.png", "width": 24, "height": 16,
                               "depth": "8", "time": 0.5})

    def test_the_recipe_is_the_scene(self):
        self.write("s.json", scene())
        self.run_program("render", "s.json", *SIZE)
        recipe = self.info("s.png")["recipe"]
        self.assertEqual((recipe["size"], recipe["samples"], recipe["time"]), ([24, 16], 1, 0))
        self.write("again.json", recipe["scene"])
        self.run_program("render", "again.json", *SIZE)
        self.assertEqual(self.bytes_of("again.png"), self.bytes_of("s.png"))

    def test_without_filter_the_picture_is_another_one(self):
        self.write("s.json", scene())
        hashes = {self.json_of("render", "s.json", *SIZE, "--json", *more)[0]["pixelHash"]
                  for more in ((), ("--no-filter",))}
        self.assertEqual(len(hashes), 2)


class Sequences(ProgramTest):
    def test_each_frame_is_a_file_of_its_own(self):
        self.write("s.json", scene())
        out, _ = self.run_program("render", "s.json", *SIZE, "--frames", "1-3")
        self.assertEqual(out.split(), ["s.0001.png", "s.0002.png", "s.0003.png"])
        self.assertEqual(len({self.bytes_of(name) for name in out.split()}), 3)

    def test_resume_leaves_finished_frames_alone(self):
        self.write("s.json", scene())
        frames = ("render", "s.json", *SIZE, "--frames", "1-3")
        self.run_program(*frames)
        whole = {name: self.bytes_of(name) for name in self.files()}
        (self.folder / "s.0002.png").unlink()
        out, _ = self.run_program(*frames, "--resume")
        self.assertEqual(out, "s.0002.png\n")
        self.assertEqual({name: self.bytes_of(name) for name in self.files()}, whole)

    def test_resume_makes_what_was_made_in_another_way(self):
        self.write("s.json", scene())
        self.run_program("render", "s.json", *SIZE)
        self.assertEqual(self.run_program("render", "s.json", *SIZE, "--resume")[0], "")
        for other in (("--size", "24x17", "--samples", "1"), ("--size", "24x16", "--samples", "2"),
                      (*SIZE, "--time", "1"), (*SIZE, "--depth", "16")):
            out, _ = self.run_program("render", "s.json", *other, "--resume")
            self.assertEqual(out, "s.png\n", other)
        self.write("s.json", scene(camera={"position": [0, 0, -400]}))
        self.assertEqual(self.run_program("render", "s.json", *SIZE, "--resume")[0], "s.png\n")

    def test_resume_makes_what_was_made_from_other_files(self):
        made = scene()
        made["materials"][0]["channels"]["colour"]["graph"] = "m.json"
        made["materials"].append({"name": "Wall", "channels": {
            "luminance": {"graph": {"shader": "Bright/Contrast", "input": "b.ppm"}}}})
        made["objects"].append({"kind": "mesh", "file": "w.obj",
                                "textures": [{"material": "Wall"}]})
        self.write("s.json", made)
        self.write("m.json", {"shader": "2D Noise"})
        self.write("b.ppm", "P3 1 1 255 10 20 30")
        self.write("w.obj", "v 0 0 0\nv 0 1 0\nv 1 0 0\nf 1 2 3\n")
        self.run_program("render", "s.json", *SIZE)
        self.assertEqual(self.run_program("render", "s.json", *SIZE, "--resume")[0], "")
        for name, text in (("m.json", {"shader": "2D Noise", "octaves": 7}),
                           ("b.ppm", "P3 1 1 255 10 20 31"),
                           ("w.obj", "v 0 0 0\nv 0 2 0\nv 1 0 0\nf 1 2 3\n")):
            self.write(name, text)
            out, _ = self.run_program("render", "s.json", *SIZE, "--resume")
            self.assertEqual(out, "s.png\n", name)
            self.assertEqual(self.run_program("render", "s.json", *SIZE, "--resume")[0], "", name)

    def test_resume_goes_by_the_recipe_where_pixels_are_not_kept(self):
        self.write("s.json", scene())
        self.run_program("render", "s.json", *SIZE, "-o", "a.jpg")
        whole = self.bytes_of("a.jpg")
        resume = ("render", "s.json", "-o", "a.jpg", "--resume")
        self.assertEqual(self.run_program(*resume, *SIZE)[0], "")
        self.assertEqual(self.run_program(*resume, *SIZE, "--time", 1)[0], "a.jpg\n")
        (self.folder / "a.jpg").write_bytes(whole[:100])
        self.assertEqual(self.run_program(*resume, *SIZE)[0], "a.jpg\n")

    def test_resume_makes_what_is_no_whole_picture(self):
        self.write("s.json", scene())
        self.run_program("render", "s.json", *SIZE)
        whole = self.bytes_of("s.png")
        for broken in (b"", whole[:-100], b"no picture at all"):
            (self.folder / "s.png").write_bytes(broken)
            out, _ = self.run_program("render", "s.json", *SIZE, "--resume")
            self.assertEqual(out, "s.png\n")
            self.assertEqual(self.bytes_of("s.png"), whole)


class Errors(ProgramTest):
    def test_a_scene_that_is_wrong_is_told_with_its_place(self):
        self.write("s.json", '{"format": "sorvanix-scene", "version": 1, "objects": [{"kind": 3}]}')
        self.fails("render", "s.json", expect=INVALID_INPUT, because="/objects/0/kind")

    def test_a_scene_that_is_not_there_is_told(self):
        self.fails("render", "none.json", expect=FILE_TROUBLE, because="none.json")

    def test_a_folder_that_is_not_there_is_told_before_the_work(self):
        self.write("s.json", scene())
        self.fails("render", "s.json", "-o", "no/such/a.png", expect=FILE_TROUBLE,
                   because="no/such/a.png")

    def test_wrong_options_are_told(self):
        self.write("s.json", scene())
        self.fails("render", "s.json", "--size", "0", expect=USAGE, because="--size")
        self.fails("render", "s.json", "--frames", "1-2", "-o", "a.png", expect=USAGE,
                   because="several frames need <frame> or %04d")
        self.fails("render", "s.json", "-o", "a.gif", expect=USAGE, because="a.gif")

    def test_a_failure_is_a_row_of_the_json(self):
        out, _ = self.run_program("render", "none.json", "--json", expect=FILE_TROUBLE)
        (row,) = json.loads(out)
        self.assertIn("none.json", row["error"])


class CutShort(ProgramTest):
    def test_a_killed_render_leaves_nothing(self):
        self.write("s.json", scene())
        process = self.start("render", "s.json", "--size", "8000", "--samples", "16",
                             "--progress", "json")
        process.stderr.readline()  # the work has begun
        process.kill()
        process.communicate()
        self.assertEqual(self.files(), ["s.json"])

    def test_ctrl_c_leaves_nothing_behind(self):
        self.write("s.json", scene())
        process = self.start("render", "s.json", "--size", "8000", "--samples", "16",
                             "--progress", "json")
        process.stderr.readline()  # the work has begun
        process.send_signal(2)
        process.communicate()
        self.assertEqual(process.returncode, CANCELLED)
        self.assertEqual(self.files(), ["s.json"])


if __name__ == "__main__":
    unittest.main()
