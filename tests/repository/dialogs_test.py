"""Holds the dialogs' layouts: their form, their ids, and that they show all that a shader has."""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

import jsonschema

RESOURCES = pathlib.Path(sys.argv.pop(1))  # the module's
SOURCES = pathlib.Path(sys.argv.pop(1))  # module/resources
# The gadgets that the module's code knows, by shader.
GADGETS = json.loads(pathlib.Path(sys.argv.pop(1)).read_text())

SCHEMA = json.loads((SOURCES / "dialog_schema.json").read_text())
SHADERS = {shader["name"]: shader
           for shader in json.loads((RESOURCES / "shaders.json").read_text())["shaders"]}
DIALOGS = {int(path.stem): json.loads(path.read_text())
           for path in (RESOURCES / "dialogs").glob("*.json")}
LAYOUTS = {int(path.stem): json.loads(path.read_text())
           for path in (SOURCES / "dialogs").glob("*.json")}
LINK_IDS = 9

# The dialog's id, and the areas of its title and its preview.
FAMILY = {
    "3D Noise": (11000, 11024, 11023),
    "Tiles": (12000, 12028, 12029),
    "Fusion": (13000, 13039, 13040),
    "Distorter": (14000, 14033, 14034),
    "Bright/Contrast": (15000, 15018, 15019),
    "Projector": (16000, 16010, None),
    "Colorizer": (17000, 17014, 17015),
    "Gradient": (18000, 18020, 18019),
    "2D Noise": (19000, 19022, 19021),
    "Falloff": (20000, 20012, 20011),
    "Proximal": (21000, 21009, None),
    "Banj": (22000, 22010, 22011),
    "Lumas": (23000, 23008, 23011),
    "Hue": (24000, 24026, 24027),
    "Posterizer": (26000, 26014, 26015),
    "Fresnel": (27000, 27006, 27005),
}
ABOUT = 35000

# Parameters that no gadget edits, and why.
WITHOUT_GADGET = {
    "Hue": {"colorize"},  # its tabs are the switch
    "Projector": {"tileFlags"},  # follows from Tile and Seamless
    # Kept with the material, without effect.
    "Lumas": {"layer1Spare", "layer2Spare", "layer3Spare", "spareLong"},
}


def elements(element):
    """An element and all below it."""
    yield element
    for child in element.get("children", ()):
        yield from elements(child)
    for page in element.get("pages", ()):
        yield {"kind": "page", "id": page["id"], "label": page["label"]}
        yield from elements(page["layout"])


def ids_of(dialog):
    for element in elements(dialog["layout"]):
        if "id" in element:
            yield from range(element["id"],
                             element["id"] + (LINK_IDS if element["kind"] == "link" else 1))


def strings_named(value, name):
    """All strings of a member, wherever it stands in a layout's source."""
    if isinstance(value, dict):
        for key, below in value.items():
            if key == name:
                yield from [below] if isinstance(below, str) else below
            else:
                yield from strings_named(below, name)
    elif isinstance(value, list):
        for below in value:
            yield from strings_named(below, name)


def with_templates(layout):
    """The names of parameters that a source edits, templates of the three layers included."""
    names = {*strings_named(layout, "parameter"), *strings_named(layout, "parameters")}
    return {name.replace("{number}", str(number)) for name in names for number in (1, 2, 3)}


class Dialogs(unittest.TestCase):
    def test_each_shader_but_buffy_has_its_dialog(self):
        self.assertEqual({*FAMILY, "Buffy"}, {*SHADERS})
        self.assertEqual({row[0] for row in FAMILY.values()} | {ABOUT}, {*DIALOGS})

    def test_each_dialog_follows_the_schema(self):
        jsonschema.Draft7Validator.check_schema(SCHEMA)
        validator = jsonschema.Draft7Validator(SCHEMA)
        for number, dialog in DIALOGS.items():
            with self.subTest(dialog=number):
                self.assertEqual([], [error.message for error in validator.iter_errors(dialog)])

    def test_each_id_stands_once_and_in_the_dialogs_thousand(self):
        for number, dialog in DIALOGS.items():
            ids = list(ids_of(dialog))
            self.assertEqual(len(ids), len(set(ids)), number)
            for gadget in ids:
                self.assertEqual(number, gadget // 1000 * 1000)

    def test_code_and_layout_know_the_same_gadgets(self):
        for shader, (number, title, preview) in FAMILY.items():
            with self.subTest(shader=shader):
                known = GADGETS[shader]
                self.assertEqual((number, title, preview),
                                 (known["id"], known["titleArea"], known.get("previewArea")))
                laid_out = {element["id"]: element["kind"]
                            for element in elements(DIALOGS[number]["layout"]) if "id" in element}
                # The id of a page is a value of its tabs, which code may name or not.
                pages = {gadget for gadget, kind in laid_out.items() if kind == "page"}
                self.assertEqual({*laid_out} - pages, {*known["gadgets"]} - pages)

    def test_about_has_the_gadgets_that_its_code_names(self):
        kinds = {element["id"]: element["kind"] for element in elements(DIALOGS[ABOUT]["layout"])
                 if "id" in element}
        self.assertEqual({35000: "area", 35001: "button", 35002: "button", 35006: "integer",
                          35007: "button"}, kinds)

    def test_titles_and_previews_are_areas_with_the_familys_ids(self):
        for shader, (number, title, preview) in FAMILY.items():
            areas = {element["id"] for element in elements(DIALOGS[number]["layout"])
                     if element["kind"] == "area"}
            self.assertLessEqual({title, preview or title}, areas, shader)

    def test_the_title_strip_stands_first(self):
        for _, (number, title, _) in FAMILY.items():
            self.assertEqual(title, DIALOGS[number]["layout"]["children"][0]["id"])

    def test_each_parameter_has_its_gadget(self):
        for shader, (number, *_) in FAMILY.items():
            with self.subTest(shader=shader):
                rows = SHADERS[shader]["parameters"] + SHADERS[shader]["inputs"]
                edited = with_templates(LAYOUTS[number])
                # The ramp's area edits its knots, and the field beside it its interpolation.
                if "ramp" in strings_named(LAYOUTS[number], "kind"):
                    edited |= {"ramp", "interpolation"}
                missing = {row["name"] for row in rows} - edited
                self.assertEqual(WITHOUT_GADGET.get(shader, set()), missing)

    def test_choices_show_all_that_a_parameter_can_be(self):
        for shader, number, parameter, count in (("2D Noise", 19000, "noiseType", 30),
                                                 ("3D Noise", 11000, "noiseType", 30),
                                                 ("Tiles", 12000, "pattern", 28),
                                                 ("Fusion", 13000, "mode", 19)):
            rows = {row["name"]: row for row in SHADERS[shader]["parameters"]}
            expected = [(c["value"], c["label"]) for c in rows[parameter]["choices"]]
            self.assertEqual(count, len(expected))
            lists = [[(e["value"], e["label"]) for e in element["entries"]]
                     for element in elements(DIALOGS[number]["layout"])
                     if element["kind"] == "choice"]
            self.assertIn(expected, lists)

    def test_each_choice_is_a_parameters_or_the_previews(self):
        previews = [[0, "Flat"], [1, "Sphere"], [2, "Cube"], [3, "Plane"], [4, "Cylinder"],
                    [5, "Torus"]]
        for shader, (number, *_) in FAMILY.items():
            known = [previews] + [[[c["value"], c["label"]] for c in row.get("choices", ())]
                                  for row in SHADERS[shader]["parameters"]]
            for element in elements(DIALOGS[number]["layout"]):
                if element["kind"] == "choice":
                    shown = [[e["value"], e["label"]] for e in element["entries"]]
                    self.assertIn(shown, known, f"{shader} {element['id']}")

    def test_a_gadget_has_a_label_or_follows_one(self):
        def check(element, labelled):
            if element["kind"] in ("integer", "real", "slider", "check", "choice", "colour",
                                   "text", "button", "filename"):
                self.assertTrue(element.get("label") or labelled, element)
            for i, child in enumerate(element.get("children", ())):
                before = element["children"][:i] if element["kind"] == "row" else []
                check(child, any(b.get("label") or b.get("text") for b in before))
            for page in element.get("pages", ()):
                check(page["layout"], False)

        for dialog in DIALOGS.values():
            check(dialog["layout"], False)

    def test_labels_and_helps_are_plain_english(self):
        with tempfile.NamedTemporaryFile("w", suffix=".txt") as words:
            for dialog in DIALOGS.values():
                for name in ("label", "text", "help", "title"):
                    words.write("\n".join(strings_named(dialog, name)) + "\n")
            words.flush()
            try:
                found = subprocess.run(["codespell", words.name], capture_output=True, text=True)
            except FileNotFoundError:
                self.skipTest("codespell is not installed")
            self.assertEqual("", found.stdout)


class Expander(unittest.TestCase):
    """What the build says to a layout that is wrong."""

    def complaint(self, layout, name="19000.json"):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / name
            path.write_text(json.dumps(layout))
            run = subprocess.run([sys.executable, SOURCES / "expand_dialogs.py",
                                  RESOURCES / "shaders.json", pathlib.Path(folder) / "out", path],
                                 capture_output=True, text=True)
            self.assertNotIn("Traceback", run.stderr)
            self.assertEqual(1 if run.stderr else 0, run.returncode)
            return run.stderr.strip().removeprefix(f"{path}: ")

    def of_gadgets(self, *gadgets):
        return self.complaint({"id": 19000, "shader": "2D Noise",
                               "layout": {"kind": "column", "children": list(gadgets)}})

    def test_a_right_one_passes(self):
        self.assertEqual("", self.of_gadgets({"kind": "real", "id": 1, "parameter": "octaves"}))

    def test_an_unknown_parameter(self):
        self.assertEqual(
            '/layout/children/0/parameter: the shader has no parameter "octave"',
            self.of_gadgets({"kind": "real", "id": 1, "parameter": "octave"}))

    def test_a_gadget_that_cannot_edit_its_parameter(self):
        self.assertEqual(
            '/layout/children/0/parameter: "octaves" is of type float, not bool or int',
            self.of_gadgets({"kind": "check", "id": 1, "parameter": "octaves"}))

    def test_an_id_that_stands_twice(self):
        self.assertEqual(
            "/layout/children/1: the id 1 is taken already",
            self.of_gadgets({"kind": "real", "id": 1, "parameter": "octaves"},
                            {"kind": "real", "id": 1, "parameter": "speed"}))

    def test_an_unknown_kind(self):
        self.assertEqual('/layout/children/0/kind: unknown kind "dial"',
                         self.of_gadgets({"kind": "dial", "id": 1}))

    def test_unknown_and_missing_members(self):
        self.assertEqual("/layout/children/0/colour: unknown member",
                         self.of_gadgets({"kind": "real", "id": 1, "colour": 2}))
        self.assertEqual('/layout/children/0: "id" is missing',
                         self.of_gadgets({"kind": "real", "parameter": "octaves"}))

    def test_an_unknown_shader(self):
        self.assertEqual('/shader: no shader is named "4D Noise"',
                         self.complaint({"id": 19000, "shader": "4D Noise", "layout": {}}))

    def test_a_file_with_another_name(self):
        layout = {"id": 1, "title": "One", "layout": {"kind": "label", "text": "One"}}
        self.assertEqual("/id: a layout's file is named after its id", self.complaint(layout))

    def test_what_is_no_json(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "1.json"
            path.write_text("{")
            run = subprocess.run([sys.executable, SOURCES / "expand_dialogs.py",
                                  RESOURCES / "shaders.json", folder, path],
                                 capture_output=True, text=True)
            self.assertEqual(1, run.returncode)
            self.assertTrue(run.stderr.startswith(f"{path}: "), run.stderr)


if __name__ == "__main__":
    unittest.main()
