"""Draws the dialogs' icons as TIFF pictures: logo, spacer and titles of the strip, and About's.

usage: make_icons.py TARGET_FOLDER
       make_icons.py --check    (only looks whether PIL and the fonts are there)

Everything is computed, as the shaders' pictures are: each title carries the mark of its shader.
"""
import pathlib
import sys

from PIL import Image, ImageChops, ImageDraw, ImageFont

import icon_marks

HEIGHT = 40
LOGO_WIDTH, SPACER_WIDTH, TITLE_WIDTH = 150, 60, 260  # together as wide as a ramp's area
MARK_SIZE = 30
ABOUT_SIZE = (400, 250)
CREDITS_TOP = 130  # the module draws the credits from here on
SUPER = 3  # drawn so much larger, then averaged

STRIP_TOP, STRIP_BOTTOM = (47, 53, 63), (29, 33, 40)
LINES = {0: (66, 73, 85), HEIGHT - 2: (18, 21, 26), HEIGHT - 1: (12, 14, 18)}
TEXT, ACCENT = (232, 235, 240), (242, 174, 73)
FONTS = pathlib.Path("/usr/share/fonts/truetype/lato")

# Titles that are written otherwise than their files are named.
WRITTEN = {"Bright Contrast": "Brightness/Contrast"}


def font(weight, size):
    return ImageFont.truetype(str(FONTS / f"Lato-{weight}.ttf"), size)


def strip(width):
    """The dark bar behind everything, with a light edge above and a dark one below."""
    picture = Image.new("RGB", (width, HEIGHT))
    draw = ImageDraw.Draw(picture)
    for y in range(HEIGHT):
        t = y / (HEIGHT - 1)
        tone = tuple(round(a + (b - a) * t) for a, b in zip(STRIP_TOP, STRIP_BOTTOM))
        draw.line((0, y, width, y), fill=LINES.get(y, tone))
    return picture


def mark_of(function, size):
    """A mark with its cover: a square with round corners, or the mark's own outline."""
    side = size * SUPER
    colours = Image.new("RGB", (side, side))
    cover = Image.new("L", (side, side))
    for y in range(side):
        for x in range(side):
            colour = function((2 * x + 1) / side - 1, (2 * y + 1) / side - 1)
            if colour is not None:
                colours.putpixel((x, y), tuple(round(255 * min(max(c, 0.0), 1.0)) for c in colour))
                cover.putpixel((x, y), 255)
    corners = Image.new("L", (side, side))
    ImageDraw.Draw(corners).rounded_rectangle((0, 0, side - 1, side - 1), 5 * SUPER, fill=255)
    cover = ImageChops.multiply(cover, corners)
    # Colours are averaged where they cover only, so that outlines carry no dark seam.
    black = Image.new("RGB", colours.size)
    return [layer.resize((size, size), Image.BOX)
            for layer in (Image.composite(colours, black, cover), cover)]


def paste_mark(picture, mark, x, y):
    """Lays a mark, whose colours are weighed by its cover already, over the picture."""
    colours, cover = mark
    box = (x, y, x + cover.width, y + cover.height)
    behind = picture.crop(box)
    dimmed = ImageChops.multiply(behind, ImageChops.invert(cover).convert("RGB"))
    picture.paste(ImageChops.add(dimmed, colours), box)


def wordmark(draw, x, y, size, centred=False):
    """The product's name from x on, or around it, with its baseline at y."""
    light, bold = font("Light", size), font("Black", size)
    behind = light.getlength("sorva") + size / 20
    if centred:
        x -= (behind + bold.getlength("NIX")) / 2
    draw.text((x, y), "sorva", TEXT, light, anchor="ls")
    draw.text((x + behind, y), "NIX", ACCENT, bold, anchor="ls")


def logo():
    picture = strip(LOGO_WIDTH)
    wordmark(ImageDraw.Draw(picture), 14, 28, 24)
    return picture


def title(name, mark):
    picture = strip(TITLE_WIDTH)
    left = TITLE_WIDTH - MARK_SIZE - 10
    paste_mark(picture, mark, left, (HEIGHT - MARK_SIZE) // 2)
    ImageDraw.Draw(picture).text((left - 11, 26), WRITTEN.get(name, name), TEXT,
                                 font("Regular", 19), anchor="rs")
    return picture


def bands(size):
    """Flowing bands of a fractal in the product's colours, darker behind the name and below."""
    width, height = size[0] // 2, size[1] // 2  # they are soft: half the points will do
    picture = Image.new("RGB", (width, height))
    stops = ((0.05, 0.06, 0.10), (0.06, 0.20, 0.27), (0.16, 0.42, 0.47), (0.90, 0.60, 0.24),
             (0.30, 0.12, 0.10), (0.05, 0.06, 0.10))
    for y in range(height):
        shade = 1.0 - 0.8 * icon_marks.smooth(0.0, 0.6, y / height)
        for x in range(width):
            u, v = x / 45, y / 45
            bend = icon_marks.fractal(u + 3, v + 9)
            value = icon_marks.fractal(u + 2.2 * bend, v + 1.4 * bend, 5)
            colour = icon_marks.along(1.9 * value - 0.4, *stops)
            picture.putpixel((x, y), tuple(round(255 * shade * c) for c in colour))
    return picture.resize(size, Image.BICUBIC)


def about():
    """The name over the bands, all marks in a row; below it is dark, for the credits scroll there."""
    width, height = ABOUT_SIZE
    picture = bands(ABOUT_SIZE)
    dark = Image.linear_gradient("L").resize((width, 60))
    cover = Image.new("L", ABOUT_SIZE, 200)
    cover.paste(0, (0, 0, width, CREDITS_TOP - 60))
    cover.paste(dark.point(lambda t: t * 200 // 255), (0, CREDITS_TOP - 60))
    picture.paste(STRIP_BOTTOM, (0, 0), cover)
    draw = ImageDraw.Draw(picture)
    wordmark(draw, width / 2, 62, 48, centred=True)
    draw.text((width / 2, 86), "procedural channel shaders", TEXT, font("Regular", 15),
              anchor="ms")
    size, step = 18, 23
    left = (width - 15 * step - size) // 2
    for i, function in enumerate(icon_marks.MARKS.values()):
        paste_mark(picture, mark_of(function, size), left + i * step, 100)
    return picture


def main():
    if sys.argv[1] == "--check":
        for weight in ("Light", "Regular", "Black"):
            font(weight, 10)
        return
    target = pathlib.Path(sys.argv[1])
    target.mkdir(parents=True, exist_ok=True)
    marks = {name: mark_of(function, MARK_SIZE) for name, function in icon_marks.MARKS.items()}
    pictures = {"sorvaNIX Logo": logo(), "sorvaNIX Spacer": strip(SPACER_WIDTH),
                "sorvanix About": about()}
    pictures |= {f"{name} Title": title(name, mark) for name, mark in marks.items()}
    for name, picture in pictures.items():
        picture.save(target / f"{name}.tif", compression="tiff_lzw")


if __name__ == "__main__":
    main()
