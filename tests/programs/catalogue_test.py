"""sorvanix list and describe, the help, and the search for the module."""
import json
import os
import shutil
import unittest

from program import NO_MODULE, RESOURCES, USAGE, ProgramTest

SHADERS = json.loads((RESOURCES / "shaders.json").read_text(encoding="utf-8"))["shaders"]


class List(ProgramTest):
    def test_json_has_a_row_for_every_shader_of_the_catalogue(self):
        rows = self.json_of("list", "--json")
        self.assertEqual([(row["id"], row["name"], row["category"]) for row in rows],
                         [(row["id"], row["name"], row["category"]) for row in SHADERS])

    def test_the_table_has_one_line_a_shader(self):
        lines = self.run_program("list")[0].splitlines()
        self.assertEqual(len(lines), len(SHADERS))
        for line, shader in zip(lines, SHADERS):
            for key in ("id", "name", "category", "summary"):
                self.assertIn(str(shader[key]), line)


class Describe(ProgramTest):
    def test_json_is_the_entry_of_the_catalogue(self):
        for shader in SHADERS:
            self.assertEqual(self.json_of("describe", shader["name"], "--json"), shader)

    def test_a_shader_is_found_by_name_in_any_case_and_by_id(self):
        texts = {self.run_program("describe", name)[0]
                 for name in ("2D Noise", "2d noise", "1001231")}
        self.assertEqual(len(texts), 1)

    def test_the_text_tells_every_parameter_and_choice(self):
        noise = next(row for row in SHADERS if row["name"] == "2D Noise")
        text = self.run_program("describe", "2D Noise")[0]
        for parameter in noise["parameters"]:
            self.assertIn(f"  {parameter['name']}  {parameter['type']}, default ", text)
            for choice in parameter.get("choices", []):
                self.assertRegex(text, rf"{choice['value']}  {choice['name']}\n")

    def test_an_unknown_shader_is_told_with_the_nearest(self):
        self.fails("describe", "2D Nose", expect=USAGE,
                   because='unknown shader "2D Nose"; did you mean "2D Noise"?')
        self.fails("describe", "99", expect=USAGE, because="unknown shader")


class Usage(ProgramTest):
    def test_help_and_version_go_to_the_standard_output(self):
        self.assertIn("bake", self.run_program("--help")[0])
        self.assertRegex(self.run_program("--version")[0], r"^sorvaNIX \d+\.\d+\.\d+\n$")
        for verb in ("list", "describe", "validate", "bake", "info"):
            out, err = self.run_program(verb, "--help")
            self.assertIn("Usage: sorvanix " + verb, out)
            self.assertEqual(err, "")

    def test_what_cannot_be_understood_is_told_in_one_line(self):
        self.fails(expect=USAGE, because="a verb is missing")
        self.fails("bkae", expect=USAGE, because='unknown verb "bkae"; did you mean "bake"?')
        self.fails("list", "--nonsense", expect=USAGE, because="--nonsense")
        self.fails("--nonsense", expect=USAGE, because="--nonsense")
        self.fails("describe", expect=USAGE, because="shader")
        self.fails("bake", expect=USAGE, because="materials")


class ModuleSearch(ProgramTest):
    def test_a_missing_module_is_told(self):
        for verb in (("list",), ("describe", "2D Noise"), ("validate", "m.json"),
                     ("bake", "m.json")):
            self.fails(*verb, "--module", "missing.so", expect=NO_MODULE, because="missing.so")

    def test_a_module_without_its_catalogue_is_told(self):
        self.write("broken/module.so", "")
        self.fails("list", "--module", "broken/module.so", expect=NO_MODULE,
                   because="shaders.json: cannot be read")

    def test_a_malformed_catalogue_is_told_with_its_place(self):
        self.write("broken/module.so", "")
        self.write("broken/Resources/shaders.json", "{\n nonsense")
        self.fails("list", "--module", "broken/module.so", expect=NO_MODULE,
                   because="shaders.json:2:")

    def test_a_module_that_is_no_library_is_told_by_the_verbs_that_run_it(self):
        self.material()
        self.write("broken/module.so", "no library")
        shutil.copytree(RESOURCES, self.folder / "broken/Resources")
        self.fails("bake", "m.json", "--module", "broken/module.so", expect=NO_MODULE,
                   because="module.so")

    def test_the_environment_names_the_module_and_the_option_wins(self):
        self.run_program("list", SORVANIX_MODULE="missing.so", expect=NO_MODULE)
        module = os.fspath(RESOURCES.parent / "sorvaNIX.so")
        self.run_program("list", "--module", module, SORVANIX_MODULE="missing.so")

    def test_paths_may_hold_spaces_and_letters_beyond_ascii(self):
        place = self.folder / "mit Abstand und Ümlaut"
        shutil.copytree(RESOURCES.parent, place)
        self.write("mätérial ü.json", {"shader": "2D Noise"})
        self.run_program("bake", "mätérial ü.json", "--size", 8, "--module", place / "sorvaNIX.so")
        self.assertIn("mätérial ü.png", self.files())


if __name__ == "__main__":
    unittest.main()
