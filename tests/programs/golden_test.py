"""The preview scenes with shaders on them look as they did; see tests/goldens/preview/README.md."""
import json
import pathlib
import unittest

from golden import GoldenTest
from program import RESOURCES

GOLDENS = pathlib.Path(__file__).resolve().parent.parent / "goldens" / "preview"
SHAPES = ("Sphere", "Cube", "Plane", "Cylinder", "Torus")
SHADERS = {"noise": {"shader": "2D Noise", "scale": 2, "colorLow": "#203050"},
           "buffy": {"shader": "Buffy"}}
# The spaces of 3D Noise, with scales that give cells of about one size on the sphere: the screen's
# unit is ten of the camera's, and the picture of this camera is some 0.06 wide.
NOISE_SPACES = {"texture": 0.05, "object": 0.05, "world": 0.05, "camera": 0.05, "screen": 0.5,
                "raster": 150}


def objects_of(tree):
    for node in tree:
        yield node
        yield from objects_of(node.get("children", []))


class Goldens(GoldenTest):
    def scene(self, shape, graph):
        """The preview scene as the module fills it: a material on the object named "Object"."""
        scene = json.loads((RESOURCES / f"Preview_{shape}_C.c4d").read_text(encoding="utf-8"))
        scene.setdefault("materials", []).append(
            {"name": "Preview", "channels": {"luminance": {"on": True, "graph": graph}}})
        (target,) = [o for o in objects_of(scene["objects"]) if o.get("name") == "Object"]
        target.setdefault("textures", []).append({"material": "Preview"})
        return scene

    def test_preview_scenes(self):
        for shape in SHAPES:
            for name, graph in SHADERS.items():
                with self.subTest(shape=shape, shader=name):
                    self.write("scene.json", self.scene(shape, graph))
                    self.run_program("render", "scene.json", "--size", "128", "-o", "made.png")
                    self.compare(self.folder / "made.png", GOLDENS / f"{shape}_{name}.png")

    def test_the_spaces_of_3d_noise(self):
        for space, scale in NOISE_SPACES.items():
            with self.subTest(space=space):
                graph = {"shader": "3D Noise", "noiseType": "CellEdgeType", "space": space,
                         "globalScale": scale, "colorA": "#203050"}
                scene = self.scene("Sphere", graph)
                (target,) = [o for o in objects_of(scene["objects"]) if o.get("name") == "Object"]
                # Object, texture and world each with axes of their own.
                target["rotation"] = [30, 20, 0]
                target["textures"][0]["rotation"] = [0, 0, 40]
                self.write("scene.json", scene)
                self.run_program("render", "scene.json", "--size", "128", "-o", "made.png")
                self.compare(self.folder / "made.png", GOLDENS / f"Sphere_3d_noise_{space}.png")


if __name__ == "__main__":
    unittest.main()
