"""sorvanix convert, upgrade and validate of scenes, in both forms."""
import json
import unittest

from program import FILE_TROUBLE, INVALID_INPUT, SOME_FAILED, ProgramTest

# A Posterizer of 7 levels, as the version with this marker stored it.
POSTERIZER = [{"int": 20000830}, {"int": 7}, {"float": 0.25}, {"link": None}, {"int": 0},
              {"bool": True}, {"bool": False}, {"bool": True}, {"bool": True}, {"int": 5},
              {"int": 0}]
# A Distorter of the first version: its file ends before nested, fillers and the step.
DISTORTER = [{"int": 20000728}, {"int": 2}, {"float": 0.5}, {"float": 1.0}, {"float": 2.0},
             {"float": 3.0}, {"float": 4.0}, {"bool": False}, {"link": None}, {"link": None},
             {"int": 0}, {"bool": True}, {"bool": False}, {"bool": True}]


def scene(*channels, version=1, **parts):
    names = ["colour", "luminance", "transparency"]
    return {"format": "sorvanix-scene", "version": version,
            "materials": [{"name": "M", "channels": dict(zip(names, channels))}],
            "objects": [{"kind": "sphere", "textures": [{"material": "M"}]}], **parts}


class Documents(ProgramTest):
    def document(self, name):
        return json.loads((self.folder / name).read_text(encoding="utf-8"))

    def colour_of(self, name):
        return self.document(name)["materials"][0]["channels"]["colour"]


class Convert(Documents):
    def test_there_and_back_loses_nothing(self):
        content = scene({"graph": {"shader": "Posterizer"}, "state": POSTERIZER}, version=9,
                        unheard=[1, 2.5, None, {"of": "\u00e9"}], depth={"a": {"b": [[], {}]}})
        self.write("s.json", content)
        self.run_program("convert", "s.json", "s.svx")
        self.run_program("convert", "s.svx", "back.json")
        self.assertEqual(self.document("back.json"), content)
        self.assertLess(len(self.bytes_of("s.svx")), len(self.bytes_of("back.json")) / 2)

    def test_a_second_time_writes_the_same_bytes(self):
        self.write("s.json", scene({"strength": 0.1}))
        self.run_program("convert", "s.json", "a.svx")
        self.run_program("convert", "a.svx", "a.json")
        self.run_program("convert", "a.json", "b.SVX")
        self.run_program("convert", "b.SVX", "b.json")
        self.assertEqual(self.bytes_of("a.svx"), self.bytes_of("b.SVX"))
        self.assertEqual(self.bytes_of("a.json"), self.bytes_of("b.json"))

    def test_both_forms_render_the_same(self):
        self.write("s.json", scene({"graph": {"shader": "Tiles"}}))
        self.run_program("convert", "s.json", "s.svx")
        for name in ("s.json", "s.svx"):
            self.run_program("render", name, "--size", 16, "-o", name + ".exr")
        hashes = [self.json_of("info", name + ".exr", "--json")["pixelHash"]
                  for name in ("s.json", "s.svx")]
        self.assertEqual(hashes[0], hashes[1])

    def test_a_damaged_file_is_refused(self):
        self.write("s.json", scene({}))
        self.run_program("convert", "s.json", "s.svx")
        whole = self.bytes_of("s.svx")
        for cut in (whole[:40], whole[:-1], whole + b"x", whole[:-1] + b"x"):
            (self.folder / "cut.svx").write_bytes(cut)
            for verb in (("convert", "cut.svx", "out.json"), ("validate", "cut.svx"),
                         ("upgrade", "cut.svx")):
                self.fails(*verb, expect=INVALID_INPUT, because="cut.svx: it ")

    def test_other_files_are_refused(self):
        self.material("m.json")
        self.fails("convert", "m.json", "m.svx", expect=INVALID_INPUT, because="this is no scene")
        self.write("bad.json", '{"format": }')
        self.fails("convert", "bad.json", "bad.svx", expect=INVALID_INPUT, because="bad.json: 1:12")
        self.fails("convert", "none.json", "m.svx", expect=FILE_TROUBLE, because="no such file")
        self.write("s.json", scene({}))
        self.fails("convert", "s.json", "no/such/folder.svx", expect=FILE_TROUBLE,
                   because="cannot be written")


class Validate(Documents):
    def test_scenes_of_both_forms_are_checked(self):
        self.write("good.json", scene({"graph": {"shader": "Hue"}}))
        self.write("bad.json", scene({"graph": {"shader": "Hu"}}))
        for name in ("good", "bad"):
            self.run_program("convert", f"{name}.json", f"{name}.svx")
        self.material("m.json")
        out, err = self.run_program("validate", "good.json", "good.svx", "m.json", "bad.json",
                                    "bad.svx", expect=SOME_FAILED)
        self.assertEqual(out, "good.json: ok\ngood.svx: ok\nm.json: ok\n")
        self.assertEqual(err.count("/materials/0/channels/colour/graph/shader: unknown shader"), 2)

    def test_a_later_scene_is_valid_with_warnings(self):
        self.write("s.json", scene({"graph": {"shader": "Swirl"}}, version=2, mood="blue"))
        out, err = self.run_program("validate", "s.json")
        self.assertEqual(out, "s.json: ok\n")
        self.assertIn("the scene is of a later program", err)
        self.assertIn("/mood", err)
        self.assertIn('unknown shader "Swirl"', err)
        report = self.json_of("validate", "s.json", "--json", "--quiet")
        self.assertTrue(report[0]["valid"])
        self.assertEqual({p["severity"] for p in report[0]["problems"]}, {"warning"})


class Upgrade(Documents):
    def test_states_and_graphs_become_todays(self):
        self.write("s.json", scene({"graph": {"shader": "Distorter"}, "state": DISTORTER},
                                   {"graph": {"shader": "2D Noise", "octaves": 3}}))
        out, _ = self.run_program("upgrade", "s.json")
        self.assertEqual(out, "s.json: upgraded\n")
        colour = self.colour_of("s.json")
        self.assertEqual(colour["state"][0], {"int": 20000731})
        self.assertEqual(colour["state"][1:7], DISTORTER[1:7])
        self.assertEqual(colour["state"][-1], {"float": 1.0}, "the step that old files do not have")
        self.assertEqual(colour["graph"]["strength"], 0.5)
        luminance = self.document("s.json")["materials"][0]["channels"]["luminance"]
        self.assertEqual(luminance["graph"], {"shader": "2D Noise", "octaves": 3})
        self.assertEqual(luminance["state"][0], {"int": 20000732})

    def test_what_is_up_to_date_is_not_written(self):
        for name in ("s.json", "s.svx"):
            self.write("raw.json", scene({"graph": {"shader": "Distorter"}, "state": DISTORTER}))
            self.run_program("convert", "raw.json", name)
            self.run_program("upgrade", name)
            before, stat = self.bytes_of(name), (self.folder / name).stat()
            out, _ = self.run_program("upgrade", name)
            self.assertEqual(out, f"{name}: is up to date\n")
            self.assertEqual(self.bytes_of(name), before)
            self.assertEqual((self.folder / name).stat().st_ino, stat.st_ino)

    def test_what_a_later_program_knows_stays(self):
        state = [{"int": 20000831}, {"string": "unheard of"}]
        content = scene({"graph": {"shader": "Posterizer", "levels": 3}, "state": state,
                         "sheen": 5}, version=2, mood={"blue": [1, 2]})
        content["objects"].append({"kind": "cloth", "weave": "plain"})
        self.write("s.json", content)
        _, err = self.run_program("upgrade", "s.json")
        self.assertIn("its state is not of a form that is known here", err)
        self.assertEqual(self.document("s.json"), content)

    def test_bitmaps_of_states_stay_with_the_scene(self):
        for folder in ("a", "images"):
            (self.folder / folder).mkdir()
        self.material()
        for name in ("a/bark.png", "images/moss.png"):
            self.run_program("bake", "m.json", "--size", 4, "-o", name)
        self.write("a/s.json", scene({"graph": {"shader": "Hue", "input": "bark.png"}},
                                     {"graph": {"shader": "Hue", "input": "moss.png"}}))

        def upgrade(folder):
            file, images = f"{folder}/s.json", self.folder / "images"
            told, _ = self.run_program("upgrade", file, "--images", images)
            self.run_program("render", file, "--images", images, "--size", 16, "-o", "s.exr")
            return told, self.json_of("info", "s.exr", "--json")["pixelHash"]

        told, picture = upgrade("a")
        self.assertEqual(told, "a/s.json: upgraded\n")
        channels = self.document("a/s.json")["materials"][0]["channels"]
        for channel, name in (("colour", "bark.png"), ("luminance", "moss.png")):
            self.assertEqual(channels[channel]["graph"], {"shader": "Hue", "input": name})
            self.assertIn({"link": {"bitmap": name}}, channels[channel]["state"])
        # From elsewhere, by another name of the folder, and after a move the same.
        place = str(self.folder / "a")
        self.assertEqual(upgrade(place), (f"{place}/s.json: is up to date\n", picture))
        (self.folder / "a").rename(self.folder / "b")
        self.assertEqual(upgrade("b"), ("b/s.json: is up to date\n", picture))

    def test_a_broken_scene_stays_as_it_is(self):
        self.write("s.json", scene({"graph": {"shader": "Hu"}}))
        self.fails("upgrade", "s.json", expect=INVALID_INPUT, because='unknown shader "Hu"')


if __name__ == "__main__":
    unittest.main()
