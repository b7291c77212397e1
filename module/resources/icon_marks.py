"""The marks of the shaders: one small picture each of what the shader does, as a function.

A mark takes a point of the square from (-1, -1), its top left, to (1, 1), and gives the colour
there, or None where the strip behind it shows.
"""
import colorsys
import math


def mix(a, b, t):
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def scaled(colour, factor):
    return tuple(x * factor for x in colour)


def clamp01(t):
    return min(max(t, 0.0), 1.0)


def smooth(lo, hi, t):
    t = clamp01((t - lo) / (hi - lo))
    return t * t * (3 - 2 * t)


def along(t, *stops):
    """The colour at t on a ramp of evenly spaced stops."""
    place = clamp01(t) * (len(stops) - 1)
    k = min(int(place), len(stops) - 2)
    return mix(stops[k], stops[k + 1], place - k)


def random01(x, y, z):
    """A fixed random number for each lattice point (Wang's integer hash)."""
    n = (x * 73856093 ^ y * 19349663 ^ z * 83492791) & 0xFFFFFFFF
    n = ((n ^ 61) ^ (n >> 16)) * 9 & 0xFFFFFFFF
    n = (n ^ (n >> 4)) * 0x27D4EB2D & 0xFFFFFFFF
    return (n ^ (n >> 15)) / 0xFFFFFFFF


def noise(x, y, z=0.0):
    """Value noise: random numbers at the lattice points, smoothly joined."""
    ix, iy, iz = math.floor(x), math.floor(y), math.floor(z)
    tx, ty, tz = (smooth(0, 1, t) for t in (x - ix, y - iy, z - iz))

    def edge(j, k):
        a, b = random01(ix, iy + j, iz + k), random01(ix + 1, iy + j, iz + k)
        return a + (b - a) * tx

    near, far = (edge(0, k) + (edge(1, k) - edge(0, k)) * ty for k in (0, 1))
    return near + (far - near) * tz


def fractal(x, y, z=0.0):
    return sum(noise(x * 2**o, y * 2**o, z * 2**o) * 0.5**o for o in range(4)) / 1.875


def normal_of_ball(x, y):
    """The normal of a ball that fills the square, towards the eye +z; None beside it."""
    r2 = x * x + y * y
    return (x, y, math.sqrt(1 - r2)) if r2 <= 1 else None


def light_on(normal, direction=(-0.45, -0.65, 0.61)):
    return max(0.0, sum(a * b for a, b in zip(normal, direction)))


WHITE = (1.0, 1.0, 1.0)
INK = (0.07, 0.09, 0.12)
AMBER = (0.95, 0.68, 0.25)
RUST = (0.72, 0.27, 0.14)
TEAL = (0.20, 0.66, 0.70)
DEEP = (0.04, 0.20, 0.27)
VIOLET = (0.66, 0.48, 0.90)
PLUM = (0.24, 0.13, 0.36)


def noise_2d(x, y):
    return along(1.5 * fractal(1.8 * x + 7, 1.8 * y + 3) - 0.25, INK, RUST, AMBER, (1, 0.93, 0.75))


def noise_3d(x, y):
    n = normal_of_ball(x, y)
    if n is None:
        return None
    value = 0.5 - 0.5 * math.cos(9 * fractal(*(1.6 * c + 4 for c in n)))
    return scaled(along(value, RUST, AMBER, (1, 0.93, 0.75)), 0.25 + 0.85 * light_on(n))


def tiles(x, y):
    row = math.floor(2 * (y + 1))
    column = (x + 1) * 1.25 + 0.5 * (row % 2)
    edge = min(abs(column - round(column)) / 1.25, abs(2 * (y + 1) - round(2 * (y + 1))) / 2)
    colours = (RUST, AMBER, mix(RUST, AMBER, 0.5))
    tone = colours[(math.floor(column) * 2 + row) % 3]
    return mix((0.88, 0.82, 0.72), tone, smooth(0.05, 0.09, edge))


def gradient(x, y):
    return along((x - y + 2) / 4, (0.10, 0.11, 0.30), RUST, AMBER, (1, 0.96, 0.80))


def lumas(x, y):
    n = normal_of_ball(x, y)
    if n is None:
        return None
    light = light_on(n)
    lobes = (light**60 * 1.2, light**12 * 0.5, light**3 * 0.25)
    body = scaled(TEAL, 0.12 + 0.55 * light)
    return tuple(min(1.0, c + lobes[0] + lobes[1] * t + lobes[2] * t * t)
                 for c, t in zip(body, (0.6, 0.95, 1.0)))


def banj(x, y):
    """A leaf against the sun."""
    u, v = (x + y) * 0.7071, (x - y) * 0.7071
    width = 0.62 * (1 - (u / 1.05) ** 2) if abs(u) < 1.05 else -1
    if abs(v) > width:
        return None
    rib = min(abs(v), abs(math.remainder(abs(v) * 0.9 + u, 0.42)) + 0.015)
    glow = math.exp(-1.6 * ((x - 0.2) ** 2 + (y + 0.3) ** 2))
    return mix(scaled((0.35, 0.62, 0.20), 0.55), mix((0.25, 0.60, 0.25), (0.93, 0.98, 0.45), glow),
               smooth(0.0, 0.07, rib))


def fresnel(x, y):
    n = normal_of_ball(x, y)
    return None if n is None else along((1 - n[2]) ** 1.3, DEEP, scaled(TEAL, 0.9), WHITE)


def falloff(x, y):
    n = normal_of_ball(x, y)
    return None if n is None else along((1 - n[1]) / 2, INK, DEEP, TEAL, (0.90, 1, 0.92))


def proximal(x, y):
    points = ((-0.45, -0.4), (0.4, -0.15), (-0.1, 0.5))
    near = min(math.hypot(x - a, y - b) for a, b in points)
    if near < 0.09:
        return WHITE
    return along(sum(max(0.0, 1 - math.hypot(x - a, y - b) / 0.85) ** 2 for a, b in points),
                 INK, scaled(TEAL, 0.7), (0.75, 1, 0.95))


def projector(x, y):
    """A beam from the top left that throws squares on a wall."""
    reach = (x + 1) / 2
    spread = 0.12 + 0.85 * reach
    if abs(y) > spread:
        return None
    if reach > 0.62:
        cell = math.floor((x - 0.24) * 4.0) + math.floor((y + 1) * 3.2)
        return (0.80, 0.97, 0.95) if cell % 2 else scaled(TEAL, 0.75)
    return mix(WHITE, scaled(TEAL, 0.45), smooth(0, 0.75, reach + 0.2 * abs(y)))


def bright_contrast(x, y):
    if math.hypot(x, y) > 1:
        return None
    inner = math.hypot(x, y) < 0.62
    return (0.93, 0.92, 0.96) if (x < 0) != inner else PLUM


def colorizer(x, y):
    t = (x + 1) / 2
    if abs(y) < 0.06:
        return None
    if y < 0:
        return scaled(WHITE, 0.08 + 0.9 * t)
    return along(t, (0.10, 0.05, 0.25), (0.75, 0.15, 0.45), (1, 0.62, 0.20), (1, 0.97, 0.75))


def hue(x, y):
    r = math.hypot(x, y)
    if r > 1 or r < 0.45:
        return None
    return colorsys.hsv_to_rgb(math.atan2(y, x) / (2 * math.pi) % 1, 0.72, 0.96)


def posterizer(x, y):
    n = normal_of_ball(x, y)
    return None if n is None else along(math.floor(light_on(n) * 4.999) / 4, PLUM, VIOLET, WHITE)


def distorter(x, y):
    u = x + 0.16 * math.sin(3.4 * y + 0.6)
    v = y + 0.16 * math.sin(3.4 * x + 1.2)
    line = min(abs(math.remainder(u, 0.5)), abs(math.remainder(v, 0.5)))
    ground = mix(PLUM, VIOLET, 0.25 + 0.3 * (v + 1) / 2)
    return mix((0.95, 0.91, 1), ground, smooth(0.03, 0.07, line))


def fusion(x, y):
    warm = math.hypot(x + 0.33, y) < 0.66
    cool = math.hypot(x - 0.33, y) < 0.66
    if warm and cool:
        return (1, 0.93, 0.88)
    return (0.93, 0.45, 0.40) if warm else VIOLET if cool else None


# By the name of the shader's title picture.
MARKS = {
    "2D Noise": noise_2d,
    "3D Noise": noise_3d,
    "Tiles": tiles,
    "Gradient": gradient,
    "Lumas": lumas,
    "Banj": banj,
    "Fresnel": fresnel,
    "Falloff": falloff,
    "Proximal": proximal,
    "Projector": projector,
    "Bright Contrast": bright_contrast,
    "Colorizer": colorizer,
    "Hue": hue,
    "Posterizer": posterizer,
    "Distorter": distorter,
    "Fusion": fusion,
}
