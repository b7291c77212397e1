"""The patterns of Tiles look as they did; see tests/goldens/tiles/README.md."""
import pathlib
import subprocess
import unittest

from golden import GoldenTest

GOLDENS = pathlib.Path(__file__).resolve().parent.parent / "goldens" / "tiles"
SIZE = "64"
COLOURS = {"groutColor": "#e8dcc0", "color1": "#b03a2e", "color2": "#2e6fb0", "color3": "#3f9b57"}
VARIANTS = (
    {},
    {"bevel": 0},
    {"groutWidth": 0.2, "bevel": 0.8, "smoothBevel": False},
    {"randomColor": True},
    {"orientation": "alongV", "scaleU": 2},
    {"scaleV": 2.5, "bevel": 0.1},
    {"globalScale": 3, "arms": 2},
    {"globalScale": 0.1, "arms": 0.55},
)


class TileGoldens(GoldenTest):
    def patterns(self):
        parameters = self.json_of("describe", "Tiles", "--json")["parameters"]
        (pattern,) = [row for row in parameters if row["name"] == "pattern"]
        return [choice["name"] for choice in pattern["choices"]]

    def test_every_pattern_in_every_variant(self):
        patterns = self.patterns()
        self.assertEqual(len(patterns), 28)
        materials = []
        for pattern in patterns:
            for number, variant in enumerate(VARIANTS):
                materials.append(f"{pattern}_{number}.json")
                self.write(materials[-1], {"shader": "Tiles", "pattern": pattern, **COLOURS,
                                           **variant})
        self.run_program("bake", *materials, "--size", SIZE, "--quiet", "-o", "<material>.png")
        for pattern in patterns:
            with self.subTest(pattern=pattern):
                row = [self.folder / f"{pattern}_{i}.png" for i in range(len(VARIANTS))]
                made = self.folder / f"{pattern}.png"
                subprocess.run(["oiiotool", *row, "--mosaic", f"{len(row)}x1", "-o", made],
                               check=True)
                self.compare(made, GOLDENS / f"{pattern}.png")


if __name__ == "__main__":
    unittest.main()
