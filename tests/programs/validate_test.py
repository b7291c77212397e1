"""sorvanix validate, and how bad materials are told by every verb that reads them."""
import unittest

from program import FILE_TROUBLE, INVALID_INPUT, SOME_FAILED, USAGE, ProgramTest

BAD_MATERIALS = {
    '{"shader": "2D Nose"}':
        'bad.json:1:12: /shader: unknown shader "2D Nose"; did you mean "2D Noise"?',
    '{"shader": "2D Noise",\n "octves": 5}':
        'bad.json:2:12: /octves: unknown parameter of 2D Noise "octves"; did you mean "octaves"?',
    '{"shader": "2D Noise", "octaves": "5"}':
        'bad.json:1:35: /octaves: expected a number, found a text',
    '{"shader": "2D Noise", "noiseType": "CellEdge"}':
        'unknown choice "CellEdge"; did you mean "CellEdgeType"?',
    '{"shader": "2D Noise", "scale": 1, "scale": 2}':
        '/scale: the name "scale" stands here twice',
    '{"shader": "2D Noise", "scale": 1e39}': '/scale: 1e+39 is too large for 32 bits',
    '{"shader": "2D Noise", "scale": NaN}': 'bad.json:1:',
    '{"shader": "2D Noise",\n': 'bad.json:2:',
    '': 'bad.json:1:1:',
    '[1, 2]': 'expected an object',
    '{"shader": "2D Noise", "a\\nb": 1}': 'unknown parameter',
    '[' * 100000: 'nested more than 256 levels deep',
    '{"shader": "Hue", "input": "a\\u0000b.png"}':
        'bad.json:1:28: /input: the name of a file cannot hold a zero character',
}


class BadMaterials(ProgramTest):
    def test_each_is_told_in_one_line_by_bake_and_nothing_is_written(self):
        for text, because in BAD_MATERIALS.items():
            with self.subTest(text[:60]):
                self.write("bad.json", text)
                self.fails("bake", "bad.json", expect=INVALID_INPUT, because=because)

    def test_each_is_told_by_validate(self):
        for text, because in BAD_MATERIALS.items():
            with self.subTest(text[:60]):
                self.write("bad.json", text)
                self.fails("validate", "bad.json", expect=INVALID_INPUT, because=because)

    def test_text_that_is_no_utf8_is_told(self):
        (self.folder / "bad.json").write_bytes(b'{"shader": "\xff\xfe"}')
        self.fails("validate", "bad.json", expect=INVALID_INPUT, because="bad.json:1:")

    def test_files_that_cannot_be_read_are_told(self):
        (self.folder / "folder.json").mkdir()
        for verb in ("bake", "validate"):
            self.fails(verb, "missing.json", expect=FILE_TROUBLE,
                       because="missing.json: there is no such file")
            self.fails(verb, "folder.json", expect=FILE_TROUBLE, because="it is a folder")

    def test_a_file_without_end_is_not_read_for_ever(self):
        self.fails("validate", "/dev/zero", expect=FILE_TROUBLE, because="larger than 64 MB")


class Validate(ProgramTest):
    def test_a_good_file_is_ok(self):
        self.material(octaves=5, noiseType="CellEdgeType")
        self.assertEqual(self.run_program("validate", "m.json"), ("m.json: ok\n", ""))

    def test_a_value_outside_the_dialog_is_ok_with_a_warning(self):
        self.material(octaves=21)
        out, err = self.run_program("validate", "m.json")
        self.assertEqual(out, "m.json: ok\n")
        self.assertEqual(err, "sorvanix: warning: m.json:1:35: /octaves: 21 is above the dialog's "
                              "greatest value, 20\n")
        self.assertEqual(self.run_program("validate", "m.json", "--quiet"), ("", ""))

    def test_all_problems_are_told_one_to_a_line(self):
        self.write("bad.json", '{"shader": "2D Noise",\n"x": 1,\n"scale": true}')
        _, err = self.run_program("validate", "bad.json", expect=INVALID_INPUT)
        self.assertEqual([line.split(": ")[1] for line in err.splitlines()],
                         ["bad.json:2:6", "bad.json:3:10"])

    def test_a_hundred_problems_are_told_and_the_others_counted(self):
        self.write("bad.json", {"shader": "2D Noise", **{f"wrong {i}": 1 for i in range(130)}})
        _, err = self.run_program("validate", "bad.json", expect=INVALID_INPUT)
        lines = err.splitlines()
        self.assertEqual(len(lines), 101)
        self.assertEqual(lines[-1], "sorvanix: bad.json: ... and 30 more")
        (row,) = self.json_of("validate", "bad.json", "--json", expect=INVALID_INPUT)
        self.assertEqual((len(row["problems"]), row["untold"]), (100, 30))
        self.fails("bake", "bad.json", expect=INVALID_INPUT, because="(and 129 more")

    def test_a_file_with_very_many_problems_is_told_at_once(self):
        self.write("bad.json", "{" + ",\n".join(f'"wrong {i}": 1' for i in range(100000)) + "}")
        _, err = self.run_program("validate", "bad.json", expect=INVALID_INPUT)
        self.assertLess(len(err), 20000)

    def test_folders_of_images_must_be_there(self):
        self.material()
        for verb in ("validate", "bake"):
            self.fails(verb, "m.json", "--images", "missing", expect=USAGE, because="--images")
            self.fails(verb, "m.json", "--images", "m.json", expect=USAGE, because="--images")

    def test_bake_tells_the_first_of_several_problems(self):
        self.write("bad.json", '{"shader": "2D Noise",\n"x": 1,\n"scale": true}')
        self.fails("bake", "bad.json", expect=INVALID_INPUT, because="(and 1 more")

    def test_json_tells_every_problem_with_its_place(self):
        self.material("good.json", octaves=-1)
        self.write("bad.json", '{"shader": "2D Noise",\n"x": 1}')
        report = self.json_of("validate", "--json", "good.json", "bad.json", "missing.json",
                              expect=SOME_FAILED)
        self.assertEqual([row["file"] for row in report], ["good.json", "bad.json", "missing.json"])
        self.assertEqual([row["valid"] for row in report], [True, False, False])
        self.assertEqual(report[0]["problems"][0]["severity"], "warning")
        problem = report[1]["problems"][0]
        self.assertEqual((problem["severity"], problem["pointer"], problem["line"],
                          problem["column"]), ("error", "/x", 2, 6))
        self.assertIn("no such file", report[2]["error"])


if __name__ == "__main__":
    unittest.main()
