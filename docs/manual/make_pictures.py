"""Makes the manual's pictures: bakes materials, renders scenes, and takes over finished pictures.

usage: make_pictures.py SORVANIX REPOSITORY TARGET_FOLDER    (the program, the tree, Documentation)
"""
import json
import pathlib
import shutil
import subprocess
import sys

BAKED_SIZE = "288"
SCENE_HEIGHT = 300  # pixels; the width follows the scene's camera
SAMPLES = "2"


def name_of(source):
    """The picture's file, from the file that it is made of."""
    return pathlib.Path(source).stem + ".jpg"


def sources(manual, kind):
    """What all pages show of one kind, each once."""
    return {row[kind]: None for page in manual["pages"] for row in page["pictures"] if kind in row}


def scene_size(path):
    camera = json.loads(path.read_text(encoding="utf-8"))["camera"]
    return f"{round(SCENE_HEIGHT * camera['width'] / camera['height'])}x{SCENE_HEIGHT}"


def main():
    program, root, target = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    manual = json.loads((root / "docs/manual/manual.json").read_text(encoding="utf-8"))
    folder = target / "pictures"
    folder.mkdir(parents=True, exist_ok=True)
    subprocess.run([program, "bake", *(root / path for path in sources(manual, "material")),
                    "--size", BAKED_SIZE, "--samples", SAMPLES, "--quiet",
                    "-o", folder / "<material>.jpg"], check=True)
    for path in sources(manual, "scene"):
        subprocess.run([program, "render", root / path, "--size", scene_size(root / path),
                        "--samples", SAMPLES, "--quiet", "-o", folder / name_of(path)], check=True)
    for path in sources(manual, "picture"):
        shutil.copyfile(root / path, folder / name_of(path))


if __name__ == "__main__":
    main()
