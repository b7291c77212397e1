"""sorvanix bake on surfaces: planes, meshes, normal maps, UDIM tiles."""
import hashlib
import unittest

from program import FILE_TROUBLE, INVALID_INPUT, USAGE, ProgramTest

# A wall of two triangles; the second file lies over two UDIM tiles.
WALL = """v -100 100 0
v 100 100 0
v 100 -100 0
v -100 -100 0
vt 0 1
vt {right} 1
vt {right} 0
vt 0 0
f 1/1 4/4 3/3 2/2
"""


class OnAPlane(ProgramTest):
    def test_a_plane_shows_a_flat_shader_as_a_flat_bake_does(self):
        self.material()
        rows = [self.json_of("bake", "m.json", "--size", 32, "--json", *more)[0]["pixelHash"]
                for more in ((), ("--plane",))]
        self.assertEqual(rows[0], rows[1])

    def test_the_bump_channel_makes_a_normal_map(self):
        self.material()
        for convention, name in (("opengl", "m_normal_gl.png"), ("directx", "m_normal_dx.png")):
            out, _ = self.run_program("bake", "m.json", "--size", 16, "--plane", "--normal",
                                      convention)
            self.assertEqual(out, name + "\n")
            info = self.json_of("info", name, "--json")
            self.assertEqual(info["colourSpace"], "raw")
            self.assertEqual(info["recipe"]["channel"], name[2:-4])
        self.assertNotEqual(self.bytes_of("m_normal_gl.png"), self.bytes_of("m_normal_dx.png"))
        out, _ = self.run_program("bake", "m.json", "--size", 16, "--plane", "--channel", "bump")
        self.assertEqual(out, "m_normal_gl.png\n")

    def test_a_noise_without_contrast_has_a_flat_normal_map(self):
        self.material(contrast=-1)
        self.run_program("bake", "m.json", "--size", 4, "--plane", "--normal", "opengl", "-o",
                         "n.tif")
        expected = hashlib.sha1(bytes([128, 128, 255]) * 16).hexdigest().upper()
        self.assertEqual(self.json_of("info", "n.tif", "--json")["pixelHash"], expected)

    def test_other_channels_are_named(self):
        self.material()
        out, _ = self.run_program("bake", "m.json", "--size", 8, "--channel", "luminance")
        self.assertEqual(out, "m_luminance.png\n")

    def test_options_that_do_not_fit_are_told(self):
        self.material()
        for options, because in ((("--normal", "opengl"), "needs a surface"),
                                 (("--channel", "bump"), "needs a surface"),
                                 (("--plane", "--normal", "opengl", "--channel", "alpha"),
                                  "only the bump channel"),
                                 (("--plane", "--mesh", "a.obj"), "--plane"),
                                 (("--uv-set", "1"), "--mesh"), (("--udim",), "--mesh"),
                                 (("--channel", "smell"), "--channel")):
            self.fails("bake", "m.json", *options, expect=USAGE, because=because)


class OnAMesh(ProgramTest):
    def setUp(self):
        super().setUp()
        self.material()
        self.write("wall.obj", WALL.format(right=1))

    def test_a_wall_shows_a_flat_shader_at_its_texels_middles(self):
        out, err = self.run_program("bake", "m.json", "--mesh", "wall.obj", "--size", 16)
        self.assertEqual((out, err), ("m.png\n", ""))
        recipe = self.json_of("info", "m.png", "--json")["recipe"]
        self.assertEqual((recipe["surface"], recipe["mesh"], recipe["uvSet"]),
                         ("mesh", "wall.obj", 0))

    def test_udim_tiles_are_files_of_their_own(self):
        self.write("wide.obj", WALL.format(right=2))
        out, _ = self.run_program("bake", "m.json", "--mesh", "wide.obj", "--udim", "--size", 16)
        self.assertEqual(out.split(), ["m.1001.png", "m.1002.png"])
        out, _ = self.run_program("bake", "m.json", "--mesh", "wide.obj", "--udim", "--size", 16,
                                  "-o", "x<UDIM>.exr")
        self.assertEqual(out.split(), ["x1001.exr", "x1002.exr"])
        self.fails("bake", "m.json", "--mesh", "wide.obj", "--udim", "-o", "x.exr", expect=USAGE,
                   because="<UDIM>")

    def test_a_mesh_without_coordinates_is_told(self):
        self.write("bare.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n")
        self.fails("bake", "m.json", "--mesh", "bare.obj", expect=INVALID_INPUT,
                   because="no texture coordinates")

    def test_a_set_that_is_missing_is_told(self):
        self.fails("bake", "m.json", "--mesh", "wall.obj", "--uv-set", "3", expect=INVALID_INPUT,
                   because="no set 3")

    def test_overlapping_coordinates_are_a_warning(self):
        self.write("twice.obj", WALL.format(right=1) + "f 2/2 1/1 4/4 3/3\n")
        out, err = self.run_program("bake", "m.json", "--mesh", "twice.obj", "--size", 16)
        self.assertEqual(out, "m.png\n")
        self.assertIn("several polygons share 256 texels", err)

    def test_meshes_that_cannot_be_read_are_told(self):
        self.fails("bake", "m.json", "--mesh", "none.obj", expect=FILE_TROUBLE, because="none.obj")
        self.write("bad.ply", "no mesh")
        self.fails("bake", "m.json", "--mesh", "bad.ply", expect=INVALID_INPUT, because="bad.ply")

    def test_threads_do_not_show(self):
        pictures = set()
        for threads in (1, 8):
            self.run_program("bake", "m.json", "--mesh", "wall.obj", "--size", 64, "--normal",
                             "opengl", "--threads", threads, "-o", "n.png")
            pictures.add(self.bytes_of("n.png"))
        self.assertEqual(len(pictures), 1)


class Resume(ProgramTest):
    def test_frames_that_are_there_are_left_alone(self):
        self.material(speed=1)
        frames = ("bake", "m.json", "--size", 8, "--frames", "1-4", "--resume")
        self.assertEqual(len(self.run_program(*frames)[0].split()), 4)
        self.assertEqual(self.run_program(*frames)[0], "")
        (self.folder / "m.0003.png").unlink()
        self.assertEqual(self.run_program(*frames)[0], "m.0003.png\n")
        self.material(speed=2)
        self.assertEqual(len(self.run_program(*frames)[0].split()), 4)

    def test_what_was_made_from_other_files_is_made_anew(self):
        self.write("m.json", {"shader": "Bright/Contrast", "input": "b.ppm"})
        self.write("b.ppm", "P3 1 1 255 10 20 30")
        self.write("wall.obj", WALL.format(right=1))
        bake = ("bake", "m.json", "--mesh", "wall.obj", "--size", 8, "--resume")
        self.assertEqual(self.run_program(*bake)[0], "m.png\n")
        self.assertEqual(self.run_program(*bake)[0], "")
        for name, text in (("b.ppm", "P3 1 1 255 10 20 31"), ("wall.obj", WALL.format(right=0.5))):
            self.write(name, text)
            self.assertEqual(self.run_program(*bake)[0], "m.png\n", name)
            self.assertEqual(self.run_program(*bake)[0], "", name)


if __name__ == "__main__":
    unittest.main()
