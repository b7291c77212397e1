"""Graphs in material files as the program bakes and checks them; the examples among them."""
import json
import pathlib
import unittest

from program import FILE_TROUBLE, INVALID_INPUT, ProgramTest

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"
GRAPHS = sorted((EXAMPLES / "graphs").glob("*.json"))


def nested(levels):
    """So many Hue filters before a noise."""
    return ('{"shader": "Hue", "input": ' * levels + '{"shader": "2D Noise"}' + '}' * levels)


class Graphs(ProgramTest):
    def bake_sources(self):
        """The bitmaps that the example graphs read are bakes of the example materials."""
        self.run_program("bake", *sorted((EXAMPLES / "materials").glob("*.json")), "--size", 32,
                         "--quiet", "-o", "bitmaps/<material>.png")

    def setUp(self):
        super().setUp()
        (self.folder / "bitmaps").mkdir()

    def test_every_example_bakes_to_the_same_bytes_on_one_thread_and_on_eight(self):
        self.bake_sources()
        self.assertGreaterEqual(len(GRAPHS), 8)
        for threads in (1, 8):
            self.run_program("bake", *GRAPHS, "--images", "bitmaps", "--size", 80, "--quiet",
                             "--threads", threads, "-o", f"<material>_{threads}.png")
        for graph in GRAPHS:
            with self.subTest(graph.stem):
                self.assertEqual(self.bytes_of(f"{graph.stem}_1.png"),
                                 self.bytes_of(f"{graph.stem}_8.png"))

    def test_the_recipe_in_an_image_bakes_the_same_pixels_again(self):
        self.bake_sources()
        for graph in GRAPHS:
            with self.subTest(graph.stem):
                self.run_program("bake", graph, "--images", "bitmaps", "--size", 32, "--quiet",
                                 "-o", "first.png")
                first = self.json_of("info", "first.png", "--json")
                self.write("again.json", first["recipe"]["material"])
                self.run_program("bake", "again.json", "--images", "bitmaps", "--size", 32,
                                 "--quiet", "-o", "second.png")
                second = self.json_of("info", "second.png", "--json")
                self.assertEqual(first["pixelHash"], second["pixelHash"])

    def test_an_input_may_be_a_bitmap_beside_the_material_or_in_a_folder_of_images(self):
        self.write("red.json", {"shader": "2D Noise", "colorLow": [1, 0, 0],
                                "colorHigh": [1, 0, 0]})
        self.run_program("bake", "red.json", "--size", 4, "-o", "bitmaps/red.png")
        self.write("hue.json", {"shader": "Hue", "input": "red.png"})
        self.fails("bake", "hue.json", expect=INVALID_INPUT,
                   because='hue.json:1:28: /input: there is no bitmap "red.png" in this folder')
        self.run_program("bake", "hue.json", "--images", "bitmaps", "--size", 4)
        self.run_program("bake", "red.json", "--size", 4)
        self.run_program("bake", "hue.json", "--size", 4, "-o", "beside.png")
        self.assertEqual(*(self.json_of("info", name, "--json")["pixelHash"]
                           for name in ("hue.png", "red.png")))
        self.assertEqual(self.bytes_of("hue.png"), self.bytes_of("beside.png"))

    def test_a_bitmap_that_is_no_image_is_told(self):
        self.write("note.png", "no picture")
        self.write("hue.json", {"shader": "Hue", "input": "note.png"})
        self.fails("bake", "hue.json", expect=INVALID_INPUT, because="hue.json:1:28: /input: note.png")
        self.fails("validate", "hue.json", expect=INVALID_INPUT, because="note.png")

    def test_a_cycle_is_refused(self):
        self.write("a.json", {"shader": "Hue", "input": "b.json"})
        self.write("b.json", {"shader": "Hue", "input": "a.json"})
        self.fails("bake", "a.json", expect=INVALID_INPUT,
                   because='b.json:1:28: /input: "a.json" makes a cycle: it stands inside itself')

    def test_a_missing_material_inside_is_told_with_its_place(self):
        self.write("a.json", {"shader": "Hue", "input": "b.json"})
        self.fails("validate", "a.json", expect=INVALID_INPUT,
                   because="a.json:1:28: /input: b.json: there is no such file")
        self.fails("validate", "c.json", expect=FILE_TROUBLE, because="there is no such file")

    def test_depth_is_limited_without_a_stack_running_over(self):
        self.write("deep.json", nested(64))
        self.run_program("bake", "deep.json", "--size", 4)
        for levels in (65, 1000, 100000):
            with self.subTest(levels):
                self.write("deep.json", nested(levels))
                self.fails("bake", "deep.json", expect=INVALID_INPUT, because="deep")

    def test_an_empty_input_is_black(self):
        self.write("empty.json", {"shader": "Hue", "input": None})
        self.write("black.json", {"shader": "2D Noise", "colorHigh": [0, 0, 0]})
        self.run_program("bake", "empty.json", "black.json", "--size", 4)
        self.assertEqual(*(self.json_of("info", name, "--json")["pixelHash"]
                           for name in ("empty.png", "black.png")))

    def test_problems_in_another_file_name_it_in_the_report(self):
        self.write("a.json", {"shader": "Hue", "input": "b.json"})
        self.write("b.json", {"shader": "2D Noise", "octaves": 99})
        report = self.json_of("validate", "a.json", "--json")
        self.assertEqual([problem["file"] for problem in report[0]["problems"]], ["b.json"])


if __name__ == "__main__":
    unittest.main()
