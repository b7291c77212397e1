"""Writes the manual's pages: an index, and one page for each shader.

usage: make_pages.py SHADERS_JSON REPOSITORY TARGET_FOLDER    (TARGET_FOLDER is Documentation)

What a shader does is told in pages/<name>.html, for artists. Its parameters come from shaders.json,
so that the manual cannot lag behind the program; its pictures and keys from manual.json.
"""
import html
import json
import pathlib
import re
import shutil
import sys

from make_pictures import name_of

CATEGORIES = {"generator": "Generators", "surface": "Surfaces", "filter": "Filters"}
CATEGORY_OF_ONE = {"generator": "Generator", "surface": "Surface", "filter": "Filter"}
CATEGORY_NOTES = {
    "generator": "They make a picture out of nothing but coordinates.",
    "surface": "They answer to how a surface lies, what lights it, and what is near.",
    "filter": "They take other shaders or bitmaps as inputs and change them.",
}
LONGEST_MATERIAL = 40  # lines that a page quotes

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<link rel="stylesheet" href="style.css">
</head>
<body>
<header><a class="brand" href="index.html">sorva<b>NIX</b></a>{navigation}</header>
<main>
{body}
</main>
</body>
</html>
"""


def text(value):
    return html.escape(str(value))


def slug(shader):
    """The page of a shader: "Bright/Contrast" is bright_contrast."""
    return re.sub(r"[^a-z0-9]+", "_", shader["name"].lower())


def plain_title(shader):
    return shader["title"].removeprefix("sorvaNIX ")


def number(value):
    """A number as one would write it."""
    if abs(value) >= 1e9:
        return f"{value:.0e}".replace("e+", "e")
    return f"{value:.7g}"


def shown(value):
    """A number to be read, not typed: with a minus sign and gaps between thousands."""
    if abs(value) >= 1e4 and value == int(value) and abs(value) < 1e9:
        written = f"{int(value):,}".replace(",", "\N{NARROW NO-BREAK SPACE}")
    else:
        written = number(value)
    return "\N{MINUS SIGN}" + written[1:] if written.startswith("-") else written


def swatch(colour):
    channels = ", ".join(str(round(255 * min(max(c, 0), 1))) for c in colour)
    return f'<span class="swatch" style="background: rgb({channels})"></span>'


def hexadecimal(colour):
    return "#" + "".join(f"{round(255 * min(max(c, 0), 1)):02x}" for c in colour)


def default_of(row):
    """The default as a material file writes it."""
    value = row["default"]
    if row["type"] == "ramp":
        stops = ", ".join(f"{hexadecimal(k['colour'])} {100 * k['position']:g}%" for k in value)
        bar = f'<span class="ramp" style="background: linear-gradient(to right, {stops})"></span>'
        return f"{bar}{len(value)} knots"
    if row.get("unit") == "colour":
        return f"{swatch(value)}<code>{hexadecimal(value)}</code>"
    if row["type"] == "vector":
        return f"<code>[{', '.join(number(c) for c in value)}]</code>"
    if row["type"] == "bool":
        return f"<code>{str(value).lower()}</code>"
    if row["type"] == "string":
        return "empty"
    named = [c["name"] for c in row.get("choices", ()) if c["value"] == value]
    return f"<code>{text(named[0] if named else number(value))}</code>"


def range_of(row):
    """What a dialog offers, in the units of a material file."""
    if row["type"] == "ramp":
        return f"1 to {row['knots']} knots"
    if "choices" in row:
        return f"{len(row['choices'])} choices"
    kinds = {"bool": "on or off", "vector": "three numbers", "string": "text"}
    if row.get("unit") == "colour":
        return "colour"
    if row["type"] in kinds:
        return kinds[row["type"]]
    low, high = row.get("minimum"), row.get("maximum")
    if low is None and high is None:
        return "any whole number" if row["type"] == "int" else "any number"
    if high is None:
        return f"from {shown(low)}"
    return f"{shown(low)} to {shown(high)}"


# How the dialog shows a value, beside its range.
UNIT_NOTES = {"percent": "shown in percent: 0.5 is 50 %", "degrees": "degrees",
              "radians": "radians; shown in degrees"}


def parameter_row(row):
    notes = UNIT_NOTES.get(row.get("unit"))
    note = f'<span class="note">{text(notes)}</span>' if notes else ""
    return (f'<tr id="{text(row["name"])}"><td><b>{text(row["label"])}</b>'
            f'<span class="note">{text(row["help"])}</span>{choices_of(row)}</td>'
            f'<td><code>{text(row["name"])}</code></td>'
            f"<td>{range_of(row)}{note}</td><td>{default_of(row)}</td></tr>")


def choices_of(row):
    """The choices' labels and the names that material files use."""
    if "choices" not in row:
        return ""
    items = "".join(f"<li>{text(c['label'])} <code>{text(c['name'])}</code></li>"
                    for c in row["choices"])
    return f'<ul class="choices">{items}</ul>'


def inputs_table(shader):
    if not shader["inputs"]:
        return ""
    rows = "".join(f'<tr id="{text(row["name"])}"><td><b>{text(row["label"])}</b></td>'
                   f'<td><code>{text(row["name"])}</code></td><td>{text(row["help"])}</td></tr>'
                   for row in shader["inputs"])
    return ("<h2>Inputs</h2>\n"
            "<p>Each takes another shader, another material file or a bitmap.</p>\n"
            "<table><thead><tr><th>Label</th><th>Name</th><th>Meaning</th></tr></thead>"
            f"<tbody>{rows}</tbody></table>")


def parameters_table(shader):
    if not shader["parameters"]:
        return "<h2>Parameters</h2>\n<p>None.</p>"
    rows = "\n".join(parameter_row(row) for row in shader["parameters"])
    return ("<h2>Parameters</h2>\n<p>Names and ranges are those of material files; a dialog keeps "
            "values within the range, a file may go beyond it.</p>\n"
            '<table class="parameters"><thead><tr><th>Label</th><th>Name</th><th>Range</th>'
            f"<th>Default</th></tr></thead>\n<tbody>{rows}</tbody></table>")


def figures(pictures):
    parts = []
    for row in pictures:
        source = row.get("material") or row.get("scene") or row["picture"]
        kind = "square" if "material" in row else "wide"
        parts.append(f'<figure class="{kind}"><img src="pictures/{name_of(source)}" '
                     f'alt="{text(row["caption"])}"><figcaption>{text(row["caption"])}</figcaption>'
                     "</figure>")
    return f'<div class="figures">{"".join(parts)}</div>' if parts else ""


def quoted_material(page, root):
    """The file behind the first picture, if it is short enough to learn from."""
    source = page["pictures"][0].get("material")
    if source is None:
        return ""
    lines = (root / source).read_text(encoding="utf-8").strip()
    if lines.count("\n") >= LONGEST_MATERIAL:
        return ""
    caption = text(page["pictures"][0]["caption"])
    return f"<h2>The first picture's material</h2>\n<p>{caption}:</p>\n<pre>{text(lines)}</pre>"


def keys_table(shader, manual):
    names = manual["keysOf"].get(shader["name"], manual["keysOf"]["*"])
    if not names:
        return ""
    rows = "".join(f"<tr><td>{' '.join(f'<kbd>{text(key)}</kbd>' for key in row['keys'])}</td>"
                   f"<td>{text(row['action'])}</td></tr>"
                   for name in names for row in manual["keys"][name])
    return ("<h2>Keys in the dialog</h2>\n"
            "<table><thead><tr><th>Keys</th><th>Action</th></tr></thead>"
            f"<tbody>{rows}</tbody></table>")


def shader_page(shader, page, manual, root):
    told = (root / "docs/manual/pages" / f"{slug(shader)}.html").read_text(encoding="utf-8").strip()
    kind = CATEGORY_OF_ONE[shader["category"]]
    own, sheets = ([row for row in page["pictures"] if ("picture" in row) == sheet]
                   for sheet in (False, True))
    parts = [f"<h1>{text(plain_title(shader))}</h1>",
             f'<p class="summary">{text(shader["summary"])} <span class="kind">{kind}</span></p>',
             figures(own), told, figures(sheets), inputs_table(shader), parameters_table(shader),
             keys_table(shader, manual), quoted_material(page, root)]
    return "\n".join(part for part in parts if part)


def card(shader, page):
    """A shader in the index; its face is the first picture."""
    row = page["pictures"][0]
    picture = name_of(row.get("material") or row.get("scene"))
    return (f'<a class="card" href="{slug(shader)}.html"><img src="pictures/{picture}" alt="">'
            f"<b>{text(plain_title(shader))}</b><span>{text(shader['summary'])}</span></a>")


def index_page(chosen, root):
    parts = [(root / "docs/manual/pages/index.html").read_text(encoding="utf-8").strip()]
    for category, heading in CATEGORIES.items():
        cards = "\n".join(card(shader, page) for shader, page in chosen
                          if shader["category"] == category)
        parts.append(f"<h2>{heading}</h2>\n<p>{CATEGORY_NOTES[category]}</p>\n"
                     f'<div class="cards">\n{cards}\n</div>')
    return "\n".join(parts)


def navigation(chosen, place):
    """Links to the pages before and behind one."""
    links = []
    for step, arrow in ((-1, "\N{LEFTWARDS ARROW} {}"), (1, "{} \N{RIGHTWARDS ARROW}")):
        if 0 <= place + step < len(chosen):
            shader = chosen[place + step][0]
            links.append(f'<a href="{slug(shader)}.html">'
                         f"{arrow.format(text(plain_title(shader)))}</a>")
    return f"<nav>{''.join(links)}</nav>"


def main():
    shaders = {shader["name"]: shader for shader in
               json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))["shaders"]}
    root, target = pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    manual = json.loads((root / "docs/manual/manual.json").read_text(encoding="utf-8"))
    chosen = [(shaders[page["shader"]], page) for page in manual["pages"]]
    target.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(root / "docs/manual/style.css", target / "style.css")
    pages = {"index": ("sorvaNIX", "", index_page(chosen, root))}
    for place, (shader, page) in enumerate(chosen):
        pages[slug(shader)] = (f"{plain_title(shader)} - sorvaNIX", navigation(chosen, place),
                               shader_page(shader, page, manual, root))
    for name, (title, links, body) in pages.items():
        content = PAGE.format(title=text(title), navigation=links, body=body)
        (target / f"{name}.html").write_text(content, encoding="utf-8")


if __name__ == "__main__":
    main()
