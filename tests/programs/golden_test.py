"""The preview scenes with shaders on them look as they did; see tests/goldens/preview/README.md."""
import json
import os
import pathlib
import shutil
import subprocess
import unittest

from program import RESOURCES, ProgramTest

GOLDENS = pathlib.Path(__file__).resolve().parent.parent / "goldens" / "preview"
SHAPES = ("Sphere", "Cube", "Plane", "Cylinder", "Torus")
SHADERS = {"noise": {"shader": "2D Noise", "scale": 2, "colorLow": "#203050"},
           "buffy": {"shader": "Buffy"}}

ONE_STEP_AND_A_HALF = str(1.5 / 255)
HALF_A_PERCENT = "0.5"


def objects_of(tree):
    for node in tree:
        yield node
        yield from objects_of(node.get("children", []))


class Goldens(ProgramTest):
    def scene(self, shape, graph):
        """The preview scene as the module fills it: a material on the object named "Object"."""
        scene = json.loads((RESOURCES / f"Preview_{shape}_C.c4d").read_text(encoding="utf-8"))
        scene.setdefault("materials", []).append(
            {"name": "Preview", "channels": {"luminance": {"on": True, "graph": graph}}})
        (target,) = [o for o in objects_of(scene["objects"]) if o.get("name") == "Object"]
        target.setdefault("textures", []).append({"material": "Preview"})
        return scene

    def compare(self, made, golden):
        if os.environ.get("SORVANIX_UPDATE_GOLDENS"):
            shutil.copyfile(made, golden)
        told = subprocess.run(["idiff", "-fail", ONE_STEP_AND_A_HALF, "-failpercent",
                               HALF_A_PERCENT, "-hardfail", "1", str(made), str(golden)],
                              capture_output=True, text=True, check=False)
        self.assertEqual(told.returncode, 0, told.stdout + told.stderr)

    def test_preview_scenes(self):
        for shape in SHAPES:
            for name, graph in SHADERS.items():
                with self.subTest(shape=shape, shader=name):
                    self.write("scene.json", self.scene(shape, graph))
                    self.run_program("render", "scene.json", "--size", "128", "-o", "made.png")
                    self.compare(self.folder / "made.png", GOLDENS / f"{shape}_{name}.png")


if __name__ == "__main__":
    unittest.main()
