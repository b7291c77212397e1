"""The dialogs' icons exist under their names, are TIFF pictures, and fit together in a strip."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

from PIL import Image

RESOURCES = pathlib.Path(sys.argv.pop(1))  # the module's
SOURCES = pathlib.Path(sys.argv.pop(1))  # module/resources

TITLES = ["2D Noise", "3D Noise", "Banj", "Bright Contrast", "Colorizer", "Distorter", "Falloff",
          "Fresnel", "Fusion", "Gradient", "Hue", "Lumas", "Posterizer", "Projector", "Proximal",
          "Tiles"]
STRIP = (470, 40)  # as wide as a ramp's area


def picture(name):
    with Image.open(RESOURCES / f"{name}.tif") as file:
        file.load()
        return file


class Icons(unittest.TestCase):
    def test_each_is_a_tiff_of_eight_bit_rgb(self):
        for name in ["sorvaNIX Logo", "sorvaNIX Spacer", "sorvanix About",
                     *(f"{title} Title" for title in TITLES)]:
            icon = picture(name)
            self.assertEqual(("TIFF", "RGB"), (icon.format, icon.mode), name)
            shades = icon.getextrema()
            self.assertTrue(any(high - low > 20 for low, high in shades), f"{name} is not empty")

    def test_logo_spacer_and_title_fill_a_strip(self):
        parts = picture("sorvaNIX Logo"), picture("sorvaNIX Spacer")
        for title in TITLES:
            icon = picture(f"{title} Title")
            self.assertEqual(STRIP[0], sum(part.width for part in (*parts, icon)), title)
            self.assertEqual({STRIP[1]}, {part.height for part in (*parts, icon)}, title)

    def test_the_spacer_can_be_repeated(self):
        spacer = picture("sorvaNIX Spacer")
        column = spacer.crop((0, 0, 1, spacer.height))
        for x in range(spacer.width):
            self.assertEqual(column.tobytes(), spacer.crop((x, 0, x + 1, spacer.height)).tobytes())

    def test_titles_differ(self):
        self.assertEqual(len(TITLES), len({picture(f"{name} Title").tobytes() for name in TITLES}))

    def test_about_has_the_size_of_its_area(self):
        self.assertEqual((400, 250), picture("sorvanix About").size)

    def test_drawing_again_gives_the_same_bytes(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([sys.executable, SOURCES / "make_icons.py", folder], check=True)
            made = sorted(pathlib.Path(folder).iterdir())
            self.assertEqual(len(TITLES) + 3, len(made))
            for path in made:
                self.assertEqual(path.read_bytes(), (RESOURCES / path.name).read_bytes(), path.name)


if __name__ == "__main__":
    unittest.main()
