"""sorvanix edit: dialogs played from lists of events, as a process."""
import json
import os
import pathlib
import signal
import time
import unittest

from program import (CANCELLED, DONE, FILE_TROUBLE, INVALID_INPUT, NO_MODULE, RESOURCES,
                     SOME_FAILED, USAGE, ProgramTest)

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples" / "edits"

# Gadgets of 2D Noise.
TYPE, OCTAVES, SPEED, CONTRAST, CONTRAST_SLIDER, COLOUR = 19001, 19002, 19006, 19008, 19009, 19017
PREVIEW, TITLE = 19021, 19022
CONTROL, CONTROL_SHIFT = 2, 3  # qualifiers


def set_to(gadget, value):
    return {"set": gadget, "value": value}


class EditTest(ProgramTest):
    def edit(self, events, *options, material=None, expect=DONE):
        """What the edit of a 2D Noise prints, and its complaints."""
        self.write("m.json", material or {"shader": "2D Noise"})
        self.write("events.json", events)
        return self.run_program("edit", "m.json", "--script", "events.json", *options,
                                expect=expect)

    def edited(self, events, **material):
        out, err = self.edit(events, material={"shader": "2D Noise", **material})
        self.assertEqual(err, "")
        return json.loads(out)

    def refused(self, events, because, expect=INVALID_INPUT):
        """Holds that a list is refused in one line, with nothing printed or written."""
        self.material()
        self.write("events.json", events)
        self.fails("edit", "m.json", "--script", "events.json", "-o", "out.json", expect=expect,
                   because=because)


class Edits(EditTest):
    def test_ok_alone_leaves_the_material_as_it_is_written(self):
        written = {"$schema": "s.json", "shader": 1001231, "octaves": 5, "scale": 0.5}
        self.assertEqual(json.loads(self.edit(["ok"], material=written)[0]), written)

    def test_what_was_set_is_written_in_the_units_of_files(self):
        # 40 % is 0.4; a choice is written by its name.
        self.assertEqual(self.edited([set_to(TYPE, "Cell Edge"), set_to(CONTRAST, 40), "ok"]),
                         {"shader": "2D Noise", "noiseType": "CellEdgeType", "contrast": 0.4})

    def test_a_value_that_is_there_is_replaced_in_its_place(self):
        out = self.edit([set_to(SPEED, 2), "ok"],
                        material={"shader": "2D Noise", "speed": 1, "octaves": 3})[0]
        self.assertEqual(list(json.loads(out).items()),
                         [("shader", "2D Noise"), ("speed", 2.0), ("octaves", 3)])

    def test_the_other_gadget_of_a_pair_follows(self):
        self.edited([set_to(CONTRAST, 40), {"expect": CONTRAST_SLIDER, "value": 40},
                     set_to(CONTRAST_SLIDER, 20), {"expect": CONTRAST, "value": 20}, "ok"])

    def test_limits_are_kept(self):
        material = self.edited([set_to(OCTAVES, 1e9), "ok"], noiseType=1)
        self.assertEqual(material["octaves"], 20)

    def test_revert_brings_the_saved_values_back(self):
        material = self.edited([set_to(SPEED, 2), {"key": "R", "qualifier": CONTROL},
                                {"expect": SPEED, "value": 3}, "ok"], speed=3)
        self.assertEqual(material, {"shader": "2D Noise", "speed": 3})

    def test_reset_shows_type_0_and_the_other_defaults(self):
        material = self.edited([{"key": "R", "qualifier": CONTROL_SHIFT},
                                {"expect": TYPE, "value": 0}, "ok"], speed=3)
        self.assertEqual(material["speed"], 0)

    def test_an_edit_can_be_made_in_place(self):
        out, _ = self.edit([set_to(SPEED, 2), "ok"], "-o", "m.json")
        self.assertEqual(out, "m.json\n")
        self.assertEqual(json.loads(self.bytes_of("m.json"))["speed"], 2)

    def test_cancel_writes_nothing(self):
        out, err = self.edit([set_to(SPEED, 2), "cancel"], "-o", "out.json")
        self.assertEqual(out, "")
        self.assertIn("cancelled", err)
        self.assertEqual(self.files(), ["events.json", "m.json"])

    def test_every_shader_with_a_dialog_opens_and_keeps_its_defaults(self):
        shaders = json.loads((RESOURCES / "shaders.json").read_text(encoding="utf-8"))["shaders"]
        for shader in shaders:
            if shader["name"] == "Buffy":
                continue
            with self.subTest(shader["name"]):
                material = {"shader": shader["name"]}
                out, err = self.edit([{"wait": "preview"}, "ok"], material=material)
                self.assertEqual((json.loads(out), err), (material, ""))

    def test_buffy_has_no_dialog(self):
        self.write("m.json", {"shader": "Buffy"})
        self.write("events.json", ["ok"])
        self.fails("edit", "m.json", "--script", "events.json", expect=INVALID_INPUT,
                   because="has no dialog")


class Inputs(EditTest):
    def hue(self, events, expect=DONE, **material):
        out, err = self.edit(events, material={"shader": "Hue", **material}, expect=expect)
        return json.loads(out) if expect == DONE else err

    LINK = 24017

    def test_a_graph_can_be_put_into_a_link(self):
        material = self.hue([set_to(self.LINK, {"shader": "2D Noise", "octaves": 3}), "ok"])
        self.assertEqual(material["input"], {"shader": "2D Noise", "octaves": 3.0})

    def test_a_link_can_be_emptied(self):
        self.assertEqual(self.hue([set_to(self.LINK, None), "ok"], input={"shader": "2D Noise"}),
                         {"shader": "Hue"})

    def test_an_input_that_was_left_alone_keeps_its_file(self):
        self.write("parts/noise.json", {"shader": "2D Noise"})
        material = self.hue(["ok"], input="parts/noise.json")
        self.assertEqual(material["input"], "parts/noise.json")

    def test_references_hold_from_the_folder_of_the_result(self):
        self.write("parts/noise.json", {"shader": "2D Noise"})
        (self.folder / "results").mkdir()
        self.edit(["ok"], "-o", "results/out.json",
                  material={"shader": "Hue", "input": {"shader": "Hue",
                                                       "input": "parts/noise.json"}})
        out = json.loads(self.bytes_of("results/out.json"))
        self.assertEqual(out["input"]["input"], "../parts/noise.json")
        self.run_program("validate", "results/out.json")

    def test_a_wrong_graph_is_told_with_its_place_in_the_list(self):
        err = self.hue([set_to(self.LINK, {"shader": "2D Noise", "octves": 3}), "ok"],
                       expect=INVALID_INPUT)
        self.assertIn("/0/value/octves: unknown parameter of 2D Noise", err)


class Pictures(EditTest):
    def test_areas_are_saved_as_pictures(self):
        self.edit([{"wait": "preview"}, {"save": "preview.png", "area": PREVIEW},
                   {"save": "title.png", "area": TITLE}, "ok"], "-o", "out.json")
        for name, width in (("preview.png", 200), ("title.png", 470)):
            self.assertEqual(self.json_of("info", name, "--json")["width"], width)

    def test_equal_edits_give_equal_pictures(self):
        hashes = set()
        for _ in range(2):
            self.edit([{"wait": "preview"}, {"save": "a.png", "area": PREVIEW}, "ok"])
            hashes.add(self.json_of("info", "a.png", "--json")["pixelHash"])
        self.assertEqual(len(hashes), 1)

    def test_a_picture_that_cannot_be_written_is_told(self):
        self.edit([{"save": "missing/a.png", "area": PREVIEW}, "ok"], "-o", "out.json",
                  expect=FILE_TROUBLE)
        self.assertNotIn("out.json", self.files())


class About(EditTest):
    def test_a_click_on_the_title_opens_it_and_events_go_there(self):
        report = json.loads(self.edit(
            [{"mouse": "down", "area": TITLE, "x": 5, "y": 5}, {"mouse": "up", "area": TITLE},
             set_to(35001, True), {"key": 32785}, set_to(SPEED, 2), "ok"], "--json")[0])
        self.assertEqual([pathlib.Path(file).name for file in report["viewed"]], ["index.html"])
        self.assertEqual(report["result"]["speed"], 2)


class Expectations(EditTest):
    def test_a_failed_one_is_told_and_no_material_is_written(self):
        out, err = self.edit([{"expect": SPEED, "value": 7}, {"expect": TYPE, "enabled": False},
                              {"save": "a.png", "area": PREVIEW}, "ok"], "-o", "out.json",
                             expect=SOME_FAILED)
        self.assertEqual(out, "")
        lines = err.splitlines()
        self.assertEqual(len(lines), 2)
        self.assertIn("events.json:1:2: /0: gadget 19006 shows 0.0, expected 7",
                      lines[0])
        self.assertIn("/1: gadget 19001 is enabled, expected disabled", lines[1])
        self.assertEqual(self.files(), ["a.png", "events.json", "m.json"])


class Cancelling(EditTest):
    def test_ctrl_c_ends_a_long_list_and_writes_nothing(self):
        self.material()
        self.write("events.json", [set_to(SPEED, i % 7) for i in range(200000)] + ["ok"])
        process = self.start("edit", "m.json", "--script", "events.json", "-o", "out.json")
        time.sleep(0.5)
        process.send_signal(signal.SIGINT)
        process.communicate()
        # A signal before the program looks for signals ends it as it does any program.
        self.assertIn(process.returncode, (CANCELLED, -signal.SIGINT))
        self.assertEqual(self.files(), ["events.json", "m.json"])


class Report(EditTest):
    def test_json_tells_every_change(self):
        report = json.loads(self.edit([set_to(CONTRAST, 40), "ok"], "--json")[0])
        self.assertTrue(report["confirmed"])
        self.assertEqual([(c["event"], c["gadget"], c["value"]) for c in report["changes"]],
                         [("/0", CONTRAST, 40), ("/0", CONTRAST_SLIDER, 40)])
        self.assertEqual(report["values"], [{"name": "contrast", "before": None, "after": 0.4}])
        self.assertEqual(report["result"], {"shader": "2D Noise", "contrast": 0.4})

    def test_json_names_the_output(self):
        report = json.loads(self.edit(["ok"], "--json", "-o", "out.json")[0])
        self.assertEqual(report["output"], "out.json")
        self.assertNotIn("result", report)


class Mistakes(EditTest):
    def test_lists_that_cannot_be_played_are_told_with_their_place(self):
        for events, because in (
                ([], "the list ends while the dialog"),
                ([set_to(SPEED, 1)], "the list ends while the dialog"),
                ({}, "events.json:1:1: expected a list"),
                ([5], "/0: expected \"ok\""),
                ([set_to(1, 1), "ok"], "/0: the dialog \"2D Noise\" has no gadget 1"),
                ([set_to(2**31, 1), "ok"], "/0/set: expected a whole number"),
                ([set_to(SPEED, "fast"), "ok"], "/0/value: expected a number, found a text"),
                ([set_to(TYPE, "Cell Edg"), "ok"], "did you mean \"Cell Edge\"?"),
                ([set_to(19040, True), "ok"], "/0/set: gadget 19040 is disabled"),
                (["ok", "ok"], "/1: the dialog is closed already"),
                ([{"save": "a.png", "area": SPEED}, "ok"], "no user area 19006"),
                ('[{"set": 19006, "value": NaN}]', "events.json:1:"),
                ('[{"set": 19006, "set": 19006}]', "stands here twice"),
                ("[" * 100000, "nested more than 256 levels"),
                ("", "events.json:1:1:")):
            with self.subTest(str(events)[:60]):
                self.refused(events, because)

    def test_long_lists_and_places_far_outside_do_no_harm(self):
        far = [{"mouse": "down", "area": PREVIEW, "x": 2**31 - 1, "y": -2**31},
               {"mouse": "up", "area": PREVIEW},
               {"mouse": "wheel", "area": PREVIEW, "x": 0, "y": 0, "delta": -2**31},
               {"key": 2**31 - 1, "qualifier": -1}]
        many = [set_to(SPEED, i % 7) for i in range(2000)]
        self.edit(far + many + ["ok"], "-o", "out.json")
        self.assertEqual(json.loads(self.bytes_of("out.json"))["speed"], 1999 % 7)

    def test_files_that_cannot_be_read_or_written_are_told(self):
        self.material()
        self.write("events.json", ["ok"])
        self.fails("edit", "none.json", "--script", "events.json", expect=FILE_TROUBLE,
                   because="none.json: there is no such file")
        self.fails("edit", "m.json", "--script", "none.json", expect=FILE_TROUBLE,
                   because="none.json: there is no such file")
        self.fails("edit", "m.json", "--script", "events.json", "-o", "missing/out.json",
                   expect=FILE_TROUBLE, because="missing")
        self.fails("edit", "m.json", "--script", "events.json", "-o", "events.json", expect=USAGE,
                   because="this is the list of events")
        self.fails("edit", "m.json", expect=USAGE, because="--script")
        self.fails("edit", "m.json", "--script", "events.json", "--module", "no.so",
                   expect=NO_MODULE, because="there is no such module")

    def test_a_bad_material_is_told_as_everywhere(self):
        self.write("bad.json", '{"shader": "2D Nose"}')
        self.write("events.json", ["ok"])
        self.fails("edit", "bad.json", "--script", "events.json", expect=INVALID_INPUT,
                   because="bad.json:1:12: /shader: unknown shader")


class DialogResources(EditTest):
    """A module beside which layouts are missing or broken."""

    def setUp(self):
        super().setUp()
        module = self.folder / "module"
        (module / "Resources" / "dialogs").mkdir(parents=True)
        for file in RESOURCES.iterdir():
            if file.is_file():
                os.symlink(file, module / "Resources" / file.name)
        os.symlink(RESOURCES.parent / "sorvaNIX.so", module / "sorvaNIX.so")
        self.module = module / "sorvaNIX.so"
        self.material()
        self.write("events.json", ["ok"])

    def test_a_missing_layout_is_told_in_the_modules_words(self):
        _, err = self.run_program("edit", "m.json", "--script", "events.json", "--module",
                                  self.module, expect=NO_MODULE)
        self.assertIn("Unable to find dialog resources for sorvaNIX 2D Noise", err)

    def test_a_broken_layout_is_told_with_its_place(self):
        (self.module.parent / "Resources" / "dialogs" / "19000.json").write_text(
            '{"id": 19000, "title": "T", "layout": {"kind": "rwo"}}', encoding="utf-8")
        _, err = self.run_program("edit", "m.json", "--script", "events.json", "--module",
                                  self.module, expect=NO_MODULE)
        self.assertIn('19000.json:1:48: /layout/kind: unknown kind "rwo"; did you mean "row"?', err)

    def test_a_batch_tells_a_missing_layout_once_and_goes_on(self):
        materials = [self.material(f"m{i}.json").name for i in range(5)]
        _, err = self.run_program("bake", *materials, "--size", "2", "-o", "<material>.png",
                                  "--module", self.module)
        self.assertEqual(err.count("Unable to find dialog resources"), 1)


class Import(ProgramTest):
    def test_the_highlight_of_lumas_follows_the_size_in_a_file(self):
        """The light of one lamp on a sphere: a larger highlight makes a brighter picture."""
        means = []
        for size in (0.1, 0.9):
            self.write("s.json", {
                "format": "sorvanix-scene", "version": 1,
                "materials": [{"name": "M", "channels": {"luminance": {"graph": {
                    "shader": "Lumas", "diffuseLevel": 0, "layer1Size": size, "layer2On": "off",
                    "layer3On": "off"}}}}],
                "objects": [{"kind": "sphere", "textures": [{"material": "M"}]},
                            {"kind": "distantLight", "rotation": [30, -40, 0]}]})
            self.run_program("render", "s.json", "--size", "48", "--samples", "1", "-o", "a.png")
            means.append(self.bytes_of("a.png"))
        self.assertNotEqual(means[0], means[1])


class Examples(EditTest):
    def test_marble(self):
        report = json.loads(self.edit(json.loads((EXAMPLES / "dark_marble.json").read_text()),
                                      "--json")[0])
        self.assertEqual(report["failures"], [])
        self.assertEqual(report["result"]["contrast"], 0.4)

    def test_sunrise(self):
        out, _ = self.edit(json.loads((EXAMPLES / "sunrise.json").read_text()),
                           material={"shader": "Gradient"})
        self.assertEqual(len(json.loads(out)["ramp"]), 4)

    def test_every_example_is_tested(self):
        self.assertEqual(sorted(file.name for file in EXAMPLES.iterdir()),
                         ["dark_marble.json", "sunrise.json"])


if __name__ == "__main__":
    unittest.main()
