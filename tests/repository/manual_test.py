"""The manual is whole: valid pages, no broken links or pictures, every shader with all it has."""
import html.parser
import json
import pathlib
import subprocess
import sys
import unittest
import urllib.parse

DOCUMENTATION = pathlib.Path(sys.argv.pop(1))
RESOURCES = pathlib.Path(sys.argv.pop(1))  # the module's

SHADERS = json.loads((RESOURCES / "shaders.json").read_text(encoding="utf-8"))["shaders"]
PAGES = sorted(DOCUMENTATION.glob("*.html"))
# Elements without an end tag.
VOID = {"meta", "link", "img", "br", "hr"}


class Page(html.parser.HTMLParser):
    """What a page holds, and what is wrong with its tags."""

    def __init__(self, path):
        super().__init__()
        self.open, self.problems, self.links, self.pictures = [], [], [], []
        self.ids, self.words, self.images_without_alt = [], [], 0
        text = path.read_text(encoding="utf-8")
        self.starts_right = text.startswith("<!DOCTYPE html>")
        self.feed(text)
        self.close()
        self.problems += [f"<{tag}> is not closed" for tag in self.open]

    def handle_starttag(self, tag, attributes):
        named = dict(attributes)
        if len(named) != len(attributes):
            self.problems.append(f"<{tag}> has an attribute twice")
        if tag not in VOID:
            self.open.append(tag)
        if "id" in named:
            self.ids.append(named["id"])
        if tag in ("a", "link"):
            self.links.append(named["href"])
        if tag == "img":
            self.pictures.append(named["src"])
            self.images_without_alt += "alt" not in named
        if tag == "p" and "p" in self.open[:-1]:
            self.problems.append("<p> in <p>")

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            self.problems.append(f"</{tag}> closes nothing")

    def handle_data(self, data):
        self.words.append(data)


def page_named(title):
    """The page with that first heading."""
    for path in PAGES:
        if f"<h1>{title}</h1>" in path.read_text(encoding="utf-8"):
            return path
    raise AssertionError(f"no page is headed {title}")


class Manual(unittest.TestCase):
    def test_an_index_and_a_page_for_each_shader(self):
        self.assertEqual(len(SHADERS) + 1, len(PAGES))
        self.assertIn(DOCUMENTATION / "index.html", PAGES)

    def test_tags_are_balanced(self):
        for path in PAGES:
            page = Page(path)
            self.assertEqual([], page.problems, path.name)
            self.assertTrue(page.starts_right, path.name)
            self.assertEqual(0, page.images_without_alt, path.name)
            self.assertEqual(len(page.ids), len(set(page.ids)), path.name)

    def test_links_and_pictures_lead_somewhere(self):
        for path in PAGES:
            page = Page(path)
            self.assertTrue(page.links and page.pictures, path.name)
            for target in page.links + page.pictures:
                self.assertNotIn(":", target, "pages need nothing from the network")
                file = DOCUMENTATION / urllib.parse.unquote(target)
                self.assertTrue(file.is_file() and file.stat().st_size > 500, target)

    def test_the_index_leads_to_each_shader(self):
        links = Page(DOCUMENTATION / "index.html").links
        for path in PAGES:
            self.assertIn(path.name, links)

    def test_each_page_has_all_of_its_shader(self):
        for shader in SHADERS:
            page = Page(page_named(shader["title"].removeprefix("sorvaNIX ")))
            words = " ".join(page.words)
            self.assertIn(shader["summary"], words)
            for row in shader["parameters"] + shader["inputs"]:
                self.assertIn(row["name"], page.ids, shader["name"])
                self.assertIn(row["label"], page.words, shader["name"])
                self.assertIn(row["help"], page.words, shader["name"])
                for choice in row.get("choices", ()):
                    self.assertIn(choice["name"], page.words, f"{shader['name']} {row['name']}")

    def test_each_page_tells_what_the_shader_does(self):
        for shader in SHADERS:
            told = page_named(shader["title"].removeprefix("sorvaNIX ")).read_text(encoding="utf-8")
            self.assertGreaterEqual(told.count("<p>"), 2, shader["name"])

    def test_words_are_spelled_right(self):
        try:
            run = subprocess.run(["codespell", *PAGES], capture_output=True, text=True)
        except FileNotFoundError:
            self.skipTest("codespell is not installed")
        self.assertEqual("", run.stdout)


if __name__ == "__main__":
    unittest.main()
