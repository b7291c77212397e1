"""Expands the dialogs' layouts: what a gadget that edits a parameter shows comes from shaders.json.

usage: expand_dialogs.py SHADERS_JSON TARGET_FOLDER LAYOUT...

A layout of a shader says which gadget edits which parameter and where it stands. Label, help, unit
and choices are the parameter's, so that nothing about a shader is written twice. What many dialogs
have alike is written in short: "preview", "ramp", "pair", "triple", and templates of a layout's
own. The result follows dialog_schema.json. Mistakes are told with file and JSON pointer.
"""
import json
import pathlib
import sys

TITLE_SIZE = {"width": 470, "height": 40}
PREVIEW_SIZE = {"width": 200, "height": 200}
RAMP_SIZE = {"width": 470, "height": 50}
PREVIEW_OBJECTS = ("Flat", "Sphere", "Cube", "Plane", "Cylinder", "Torus")
LINK_IDS = 9  # a link takes so many ids in a row

# The types of parameters that each kind of gadget can edit.
GADGET_TYPES = {
    "integer": ("int",),
    "real": ("float", "vector"),
    "slider": ("int", "float"),
    "check": ("bool", "int"),
    "choice": ("int",),
    "colour": ("vector",),
    "text": ("string",),
    "button": (),
    "filename": ("string",),
}
# A field of radians shows degrees.
SHOWN_UNITS = {"percent": "percent", "degrees": "degrees", "radians": "degrees"}

# The members that each kind of element must and may have.
MEMBERS = {
    "column": ({"children"}, set()),
    "row": ({"children"}, set()),
    "group": ({"label", "children"}, set()),
    "grid": ({"columns", "children"}, set()),
    "tabs": ({"id", "pages"}, set()),
    "label": ({"text"}, {"id"}),
    "link": ({"id"}, {"parameter", "label", "help"}),
    "area": ({"id", "width", "height"}, set()),
    "preview": ({"id", "object", "auto"}, {"animate"}),
    "ramp": ({"id", "handle", "interpolation"}, set()),
    "pair": ({"ids", "parameter"}, {"unit", "label", "help"}),
    "triple": ({"ids", "parameters", "label"}, {"labelId"}),
}
for gadget in GADGET_TYPES:
    MEMBERS[gadget] = ({"id"}, {"parameter", "label", "help", "unit", "entries", "labelId"})


class LayoutError(Exception):
    """A mistake at a place of a layout."""

    def __init__(self, pointer, message):
        super().__init__(f"{pointer or '/'}: {message}")


def without_empty(element):
    return {name: value for name, value in element.items() if value not in (None, "")}


def instance_of(template, first, number):
    """A copy of a template: ids "+2" count from the first, "{number}" becomes the number."""
    if isinstance(template, dict):
        return {name: instance_of(value, first, number) for name, value in template.items()}
    if isinstance(template, list):
        return [instance_of(value, first, number) for value in template]
    if isinstance(template, str) and template.startswith("+"):
        return first + int(template)
    return template.replace("{number}", str(number)) if isinstance(template, str) else template


class Expander:
    """Expands one layout."""

    def __init__(self, shader, templates):
        self.parameters = {}
        if shader:
            rows = shader["parameters"] + [dict(row, type="link") for row in shader["inputs"]]
            self.parameters = {row["name"]: row for row in rows}
        self.templates = templates
        self.ids = set()

    def take_id(self, gadget_id, pointer, count=1):
        for number in range(gadget_id, gadget_id + count):
            if number in self.ids:
                raise LayoutError(pointer, f"the id {number} is taken already")
            self.ids.add(number)
        return gadget_id

    def parameter(self, name, pointer, types):
        if name not in self.parameters:
            raise LayoutError(pointer, f'the shader has no parameter "{name}"')
        row = self.parameters[name]
        if row["type"] not in types:
            wanted = " or ".join(types)
            raise LayoutError(pointer, f'"{name}" is of type {row["type"]}, not {wanted}')
        return row

    def element(self, source, pointer, headings=()):
        """Expands an element that stands below these headings."""
        if "template" in source:
            source = self.instance(source, pointer)
        kind = source.get("kind")
        if kind not in MEMBERS:
            raise LayoutError(pointer + "/kind", f'unknown kind "{kind}"')
        self.check_members(source, pointer, *MEMBERS[kind])
        if kind in GADGET_TYPES:
            return self.gadget(source, pointer, headings)
        return getattr(self, "expand_" + kind)(source, pointer, headings)

    @staticmethod
    def check_members(source, pointer, needed, allowed):
        for name in sorted(needed - source.keys()):
            raise LayoutError(pointer, f'"{name}" is missing')
        for name in sorted(source.keys() - needed - allowed - {"kind"}):
            raise LayoutError(f"{pointer}/{name}", "unknown member")

    def instance(self, source, pointer):
        self.check_members(source, pointer, {"template", "first", "number"}, set())
        if source["template"] not in self.templates:
            raise LayoutError(pointer, f'unknown template "{source["template"]}"')
        return instance_of(self.templates[source["template"]], source["first"], source["number"])

    def children(self, source, pointer, headings):
        return [self.element(child, f"{pointer}/children/{i}", headings)
                for i, child in enumerate(source["children"])]

    def expand_column(self, source, pointer, headings):
        return {**source, "children": self.children(source, pointer, headings)}

    expand_row = expand_grid = expand_column

    def expand_group(self, source, pointer, headings):
        below = (*headings, source["label"])
        return {**source, "children": self.children(source, pointer, below)}

    def expand_tabs(self, source, pointer, headings):
        tabs = {"kind": "tabs", "id": self.take_id(source["id"], pointer), "pages": []}
        for i, page in enumerate(source["pages"]):
            place = f"{pointer}/pages/{i}"
            if "template" in page:
                page = self.instance(page, place)
            self.check_members(page, place, {"id", "label", "layout"}, set())
            self.take_id(page["id"], place)
            layout = self.element(page["layout"], place + "/layout", (*headings, page["label"]))
            tabs["pages"].append({**page, "layout": layout})
        return tabs

    def expand_label(self, source, pointer, _):
        if "id" in source:
            self.take_id(source["id"], pointer)
        return source

    def expand_area(self, source, pointer, _):
        self.take_id(source["id"], pointer)
        return source

    def expand_link(self, source, pointer, headings):
        gadget = self.described(source, pointer, headings, ("link",))
        self.take_id(source["id"], pointer, LINK_IDS)
        return gadget

    def gadget(self, source, pointer, headings):
        """A gadget; one whose label has an id of its own becomes a row of both."""
        gadget = self.described(source, pointer, headings, GADGET_TYPES[source["kind"]])
        self.take_id(source["id"], pointer)
        if source["kind"] == "choice" and not gadget.get("entries"):
            raise LayoutError(pointer, "a choice without entries")
        label_id = gadget.pop("labelId", None)
        if label_id is None:
            return gadget
        label = {"kind": "label", "id": label_id, "text": gadget.pop("label")}
        self.take_id(label_id, pointer)
        return {"kind": "row", "children": [label, gadget]}

    def described(self, source, pointer, headings, types):
        """The gadget with what its parameter says; what the layout says itself stands."""
        gadget = dict(source)
        name = gadget.pop("parameter", None)
        if name is None:
            if "label" not in gadget:
                raise LayoutError(pointer, 'neither "parameter" nor "label"')
            return gadget
        row = self.parameter(name, pointer + "/parameter", types)
        # Below the heading "Layer 1", "Layer 1 Size" is just "Size".
        label = row["label"]
        for heading in headings:
            label = label.removeprefix(heading + " ")
        gadget.setdefault("label", label)
        gadget.setdefault("help", row["help"])
        gadget.setdefault("unit", SHOWN_UNITS.get(row.get("unit")))
        if gadget["kind"] == "choice":
            gadget["entries"] = [{"value": choice["value"], "label": choice["label"]}
                                 for choice in row.get("choices", ())]
        return without_empty(gadget)

    def expand_pair(self, source, pointer, headings):
        """An edit field with the label, and the slider that follows it."""
        row = self.parameter(source["parameter"], pointer + "/parameter", ("int", "float"))
        shared = {name: value for name, value in source.items() if name not in ("kind", "ids")}
        field = {"kind": "integer" if row["type"] == "int" else "real", "id": source["ids"][0]}
        slider = {"kind": "slider", "id": source["ids"][1], **shared, "label": ""}
        return {"kind": "row", "children": [self.gadget({**field, **shared}, pointer, headings),
                                            self.gadget(slider, pointer, headings)]}

    def expand_triple(self, source, pointer, headings):
        """Three fields in a row behind one label. Those of a vector are named by its components."""
        label = {"kind": "label", "id": source.get("labelId"), "text": source["label"]}
        row = [self.expand_label(without_empty(label), pointer, headings)]
        for gadget_id, name, component in zip(source["ids"], source["parameters"], "XYZ"):
            field = {"kind": "real", "id": gadget_id, "parameter": name}
            if self.parameters.get(name, {}).get("type") == "vector":
                field["label"] = component
            row.append(self.gadget(field, pointer, (*headings, source["label"])))
        return {"kind": "row", "children": row}

    def expand_preview(self, source, pointer, _):
        """The picture, what it shows, and when."""
        shown = {"kind": "choice", "id": source["object"], "label": "Show",
                 "help": "The pattern itself, or an object that wears it.",
                 "entries": [{"value": i, "label": text} for i, text in enumerate(PREVIEW_OBJECTS)]}
        auto = {"kind": "check", "id": source["auto"], "label": "Automatic",
                "help": "Draws the picture anew after every change."}
        parts = [{"kind": "area", "id": source["id"], **PREVIEW_SIZE}, shown, auto]
        if "animate" in source:
            parts.append({"kind": "check", "id": source["animate"], "label": "Animate",
                          "help": "Lets the flat picture move at the speed of the noise."})
        return self.element({"kind": "group", "label": "Preview", "children": parts}, pointer)

    def expand_ramp(self, source, pointer, _):
        """The area that edits a ramp, and below it the selected handle in numbers."""
        handle = {"kind": "real", "id": source["handle"], "label": "Selected", "unit": "percent",
                  "help": "The place of the selected knot, or where between its knots the selected "
                          "bias lies."}
        interpolation = {"kind": "choice", "id": source["interpolation"],
                         "parameter": "interpolation"}
        area = {"kind": "area", "id": source["id"], **RAMP_SIZE}
        row = {"kind": "row", "children": [handle, interpolation]}
        return self.element({"kind": "group", "label": "Ramp", "children": [area, row]}, pointer)


def expand(source, shaders):
    """The dialog of a layout, given the shaders by name."""
    Expander.check_members(source, "", {"id", "layout"},
                           {"shader", "title", "titleArea", "templates", "ownButtons"})
    shader = None
    if "shader" in source:
        if source["shader"] not in shaders:
            raise LayoutError("/shader", f'no shader is named "{source["shader"]}"')
        shader = shaders[source["shader"]]
    expander = Expander(shader, source.get("templates", {}))
    layout = expander.element(source["layout"], "/layout")
    if "titleArea" in source:
        strip = {"kind": "area", "id": expander.take_id(source["titleArea"], "/titleArea"),
                 **TITLE_SIZE}
        layout = {"kind": "column", "children": [strip, layout]}
    title = shader["title"].removeprefix("sorvaNIX ") if shader else source["title"]
    own = {"ownButtons": True} if source.get("ownButtons") else {}
    return {"id": source["id"], "title": title, **own, "layout": layout}


def main():
    described = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))
    shaders = {shader["name"]: shader for shader in described["shaders"]}
    target = pathlib.Path(sys.argv[2])
    target.mkdir(parents=True, exist_ok=True)
    for path in map(pathlib.Path, sys.argv[3:]):
        try:
            source = json.loads(path.read_text(encoding="utf-8"))
            dialog = expand(source, shaders)
            if path.stem != str(dialog["id"]):
                raise LayoutError("/id", "a layout's file is named after its id")
        except (json.JSONDecodeError, LayoutError) as error:
            sys.exit(f"{path}: {error}")
        text = json.dumps(dialog, indent=1, ensure_ascii=False) + "\n"
        (target / path.name).write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
