"""sorvanix schema: agrees with the program itself on what a material file may hold."""
import json
import pathlib
import unittest

import jsonschema

from program import INVALID_INPUT, ProgramTest

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"

NOISE = {"shader": "2D Noise"}
KNOTS = [{"position": 0, "colour": [0, 0, 0]}, {"position": 1, "colour": "#ffffff", "bias": 0.2}]

GOOD = [
    NOISE,
    {"shader": 1001231},
    {"$schema": "schema.json", "shader": "Buffy"},
    {"shader": "2D Noise", "noiseType": "CellEdgeType", "octaves": 2.5, "absolute": True},
    {"shader": "2D Noise", "noiseType": 28},
    {"shader": "2D Noise", "noiseType": 28.0, "octaves": 2},
    {"shader": "2D Noise", "octaves": 1000},  # beyond the dialog's limits
    {"shader": "2D Noise", "colorLow": [0, 0.5, 2], "colorHigh": "#FF8000"},
    {"shader": "Hue", "input": None},
    {"shader": "Hue", "input": NOISE},
    {"shader": "Bright/Contrast", "input": {"shader": "Hue", "input": NOISE}},
    {"shader": "Colorizer", "ramp": KNOTS, "interpolation": "step", "input": NOISE},
    {"shader": "Colorizer", "ramp": KNOTS * 25},
]

BAD = [
    [],
    None,
    {},
    {"shader": "2D Nose"},
    {"shader": 5},
    {"shader": None},
    {"shader": "2D Noise", "octves": 5},
    {"shader": "2D Noise", "octaves": "5"},
    {"shader": "2D Noise", "octaves": 1e39},
    {"shader": "2D Noise", "noiseType": "CellEdge"},
    {"shader": "2D Noise", "noiseType": 1.5},
    {"shader": "2D Noise", "noiseType": 2147483648},
    {"shader": "2D Noise", "absolute": 1},
    {"shader": "2D Noise", "colorLow": [0, 0]},
    {"shader": "2D Noise", "colorLow": [0, 0, 0, 0]},
    {"shader": "2D Noise", "colorLow": [0, 0, "0"]},
    {"shader": "2D Noise", "colorLow": "#fff"},
    {"shader": "2D Noise", "colorLow": "#ff80000"},
    {"shader": "2D Noise", "input": NOISE},
    {"shader": "Hue", "input": 5},
    {"shader": "Hue", "input": ""},
    {"shader": "Hue", "input": []},
    {"shader": "Hue", "input": {}},
    {"shader": "Hue", "input": {"shader": "2D Noise", "octves": 5}},
    {"shader": "Hue", "input": {"$schema": "schema.json", "shader": "2D Noise"}},
    {"shader": "Colorizer", "ramp": []},
    {"shader": "Colorizer", "ramp": KNOTS * 26},
    {"shader": "Colorizer", "ramp": [{"position": 0}]},
    {"shader": "Colorizer", "ramp": [{"position": 0, "color": [0, 0, 0]}]},
    {"shader": "Colorizer", "ramp": [{"position": "0", "colour": [0, 0, 0]}]},
    {"shader": "Colorizer", "ramp": 5},
]


class Schema(ProgramTest):
    def setUp(self):
        super().setUp()
        self.schema = self.json_of("schema")
        self.validator = jsonschema.Draft202012Validator(self.schema)

    def test_is_a_schema_itself(self):
        jsonschema.Draft202012Validator.check_schema(self.schema)

    def test_knows_every_shader_of_the_list(self):
        for shader in self.json_of("list", "--json"):
            self.assertIn(shader["name"], self.schema["$defs"])
            self.validator.validate({"shader": shader["name"]})
            self.validator.validate({"shader": shader["id"]})

    def test_holds_for_every_example(self):
        examples = sorted([*EXAMPLES.glob("materials/*.json"), *EXAMPLES.glob("graphs/*.json")])
        self.assertGreaterEqual(len(examples), 28)
        for example in examples:
            with self.subTest(example.name):
                self.validator.validate(json.loads(example.read_text(encoding="utf-8")))

    def test_allows_what_the_program_reads(self):
        for material in GOOD:
            with self.subTest(material):
                self.validator.validate(material)
                self.write("m.json", material)
                self.run_program("validate", "m.json")

    def test_refuses_what_the_program_refuses(self):
        for material in BAD:
            with self.subTest(material):
                self.assertFalse(self.validator.is_valid(material))
                self.write("m.json", material)
                self.run_program("validate", "m.json", expect=INVALID_INPUT)

    def test_defaults_are_valid_values(self):
        for shader in self.json_of("list", "--json"):
            properties = self.schema["$defs"][shader["name"]]["properties"]
            defaults = {name: row["default"] for name, row in properties.items()
                        if isinstance(row, dict) and "default" in row}
            self.validator.validate({"shader": shader["name"], **defaults})


if __name__ == "__main__":
    unittest.main()
