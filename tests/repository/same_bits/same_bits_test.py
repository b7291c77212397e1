"""Two builds of the module give the same bits, or lie no further apart than libm explains.

usage: same_bits_test.py PROGRAM OTHER    (the same_bits of one build and of another)

Additions, products, quotients, roots and floors are rounded by IEEE 754 alone, so what is made of
them is one number everywhere. The functions of libm are not: each C library rounds them within a
bound of its own.
"""
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

SKIPPED = 77

# Where libm takes part, and with what. C libraries keep these functions within 2 ulp of double; a
# float that is stored of it may then round the other way, 1 ulp of float. A mix of colours and a
# normalised vector can each add one more. (No input lies so near a border between cells, where the
# last bit would choose another colour.)
BOUND_ULP = 3
LIBM = {
    r"kit rotations": "sin, cos",
    r"kit diffuse light": "sin, tan, acos, exp, pow",
    r"noise type (2|4|16|29) .*": "log and pow of the gamma curve",
    r"shader [23]D Noise .* (SquaredFractal|BiasedSum|DifferenceOctave|RidgedPeak)Type": "the same",
    r"shader [23]D Noise .*, varied": "cos of the cycles",
    r"shader Gradient type angle.*": "atan",
    r"shader Tiles pattern Pattern(Sine|Spiral|Wedges).*": "sin, atan",
    r"shader Banj.*": "diffuse light",
    r"shader Lumas.*": "diffuse light, exp and log of brushed highlights",
    r"shader Projector.*": "rotations",
    r"shader Proximal.*": "hypot",
}


def number(bits):
    return struct.unpack(">f", bytes.fromhex(bits.rjust(8, "0")))[0]


def ulps(a, b):
    """The distance in steps of the greater value, which are those of 1 at least."""
    x, y = number(a), number(b)
    if a == b:
        return 0
    return abs(x - y) / (2**-23 * max(1, abs(x), abs(y))) if x == x and y == y else float("inf")


def table(program):
    """What a build gives: its subjects, each with a hash and its values."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "bits"
        subprocess.run([program, file], check=True)
        rows = [line.rstrip("\n").split("\t") for line in file.read_text().splitlines()]
    return {subject: (digest, values.split()) for subject, digest, values in rows}


def reasons(subject):
    return [pattern for pattern in LIBM if re.fullmatch(pattern, subject)]


class SameBits(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.ours, cls.others = table(OURS), table(OTHERS)

    def largest(self, subject):
        """The largest difference of a subject, and where it is."""
        (digest, values), (other_digest, others) = self.ours[subject], self.others[subject]
        self.assertEqual(len(values), len(others), subject)
        if digest == other_digest:
            return 0, ""
        far, place = max((ulps(a, b), i) for i, (a, b) in enumerate(zip(values, others)))
        here, there = number(values[place]), number(others[place])
        return far, f"{subject}: value {place} is {here!r} and {there!r}, {far} ulp apart"

    def test_both_builds_tell_the_same_subjects_at_length(self):
        self.assertEqual(list(self.ours), list(self.others))
        self.assertGreater(len(self.ours), 400)
        for subject, (_, values) in self.ours.items():
            self.assertGreater(len(values), 500, subject)
            self.assertGreater(len(set(values)), 1, subject)

    def test_without_libm_all_bits_are_equal(self):
        for subject in (s for s in self.ours if not reasons(s)):
            with self.subTest(subject):
                _, place = self.largest(subject)
                self.assertEqual(self.ours[subject][0], self.others[subject][0], place)

    def test_with_libm_the_values_stay_within_the_bound(self):
        furthest = 0
        for subject in filter(reasons, self.ours):
            with self.subTest(subject):
                far, place = self.largest(subject)
                self.assertLessEqual(far, BOUND_ULP, place)
                furthest = max(furthest, far)
        count = sum(len(values) for _, values in self.ours.values())
        print(f"{count} values of {len(self.ours)} subjects; with libm {furthest} ulp apart")

    def test_every_exception_is_in_use(self):
        used = {pattern for subject in self.ours for pattern in reasons(subject)}
        self.assertEqual(used, set(LIBM))


if __name__ == "__main__":
    OURS, OTHERS = sys.argv[1:3]
    if not pathlib.Path(OTHERS).exists():
        print(f"SKIPPED: there is no {OTHERS}; ./dev test builds it first")
        sys.exit(SKIPPED)
    unittest.main(argv=sys.argv[:1])
