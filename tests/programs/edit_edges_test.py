"""sorvanix edit: the edges of dialogs, played from lists of events as users would meet them."""
import json
import unittest

from program import ProgramTest

CONTROL = 2           # a qualifier
SIZE, TYPE = 19003, 19001  # of 2D Noise
RAMP, INTERPOLATION = 18001, 18003  # of Gradient
STRIP, KNOTS, BIASES, OUTSIDE = 18, 30, 6, 60  # rows of the gradient area

# A knot at t stands at pixel trunc(461 t + 4): 4, 234 and 465 for these.
THREE = [(0.0, "#000000"), (0.5, "#ff0000"), (1.0, "#ffffff")]
LEFT, MIDDLE = 4, 234
BIAS = 119  # halfway from 4 to 234


def ramp(knots):
    return [{"position": position, "colour": colour} for position, colour in knots]


def mouse(what, x, y):
    return {"mouse": what, "area": RAMP, "x": x, "y": y}


def drag(*points):
    """A press at the first point, moves over the others, a release at the last."""
    return [mouse("down", *points[0]), *(mouse("move", *point) for point in points[1:]),
            mouse("up", *points[-1])]


class EdgeTest(ProgramTest):
    def edited(self, events, material, warning=""):
        self.write("m.json", material)
        self.write("events.json", [*events, "ok"])
        out, err = self.run_program("edit", "m.json", "--script", "events.json")
        self.assertIn(warning, err)
        self.assertEqual(len(err.splitlines()), 1 if warning else 0)
        return json.loads(out)

    def positions(self, events, knots=None, **material):
        """Where the knots of a Gradient stand after the events."""
        written = self.edited(events, {"shader": "Gradient", "ramp": ramp(knots or THREE),
                                       **material})
        return [round(knot["position"], 6) for knot in written["ramp"]]

    def knots(self, events):
        return self.edited(events, {"shader": "Gradient", "ramp": ramp(THREE)})["ramp"]


class Sizes(EdgeTest):
    def test_a_scale_of_0_shows_the_largest_size(self):
        self.edited([{"expect": SIZE, "value": 9e18}], {"shader": "2D Noise", "scale": 0},
                    warning="/scale: 0 is below the dialog's least value")

    def test_a_reset_dialog_shows_type_0(self):
        events = [{"key": ord("R"), "qualifier": CONTROL | 1}, {"expect": TYPE, "value": 0}]
        self.edited(events, {"shader": "2D Noise", "noiseType": 12})


class Knots(EdgeTest):
    def test_one_of_three_is_torn_off(self):
        self.assertEqual(self.positions(drag((MIDDLE, KNOTS), (MIDDLE, OUTSIDE))), [0, 1])

    def test_a_torn_one_comes_back_with_the_pointer(self):
        events = drag((MIDDLE, KNOTS), (MIDDLE, OUTSIDE), (MIDDLE, KNOTS))
        self.assertEqual(self.positions(events), [0, 0.5, 1])

    def test_one_of_two_stays(self):
        events = drag((LEFT, KNOTS), (LEFT, OUTSIDE))
        self.assertEqual(self.positions(events, [THREE[0], THREE[2]]), [0, 1])

    def test_a_click_on_the_strip_adds_one(self):
        # Pixel 150 is (150 - 4) / 461 = 0.316703.
        self.assertEqual(self.positions(drag((150, STRIP))), [0, 0.316703, 0.5, 1])

    def test_fifty_are_the_most(self):
        fifty = [(i / 49, "#808080") for i in range(50)]
        self.assertEqual(len(self.positions(drag((100, STRIP)), fifty)), 50)

    def test_twenty_six_are_not_repeated(self):
        many = [(i / 25, "#808080") for i in range(26)]
        repeat = [{"key": ord("D"), "qualifier": CONTROL}]
        self.assertEqual(len(self.positions(repeat, many)), 26)
        self.assertGreater(len(self.positions(repeat)), 3)


class Biases(EdgeTest):
    def test_a_drag_moves_one(self):
        # (165 - 4) / (234 - 4) = 0.7
        knots = self.knots(drag((BIAS, BIASES), (165, BIASES)))
        self.assertEqual([round(knot["bias"], 6) for knot in knots], [0.7, 0.5, 0.5])

    def test_a_drag_off_the_area_gives_the_former_one_back(self):
        knots = self.knots(drag((BIAS, BIASES), (165, BIASES), (165, OUTSIDE)))
        # What did not change stays as it is written, here without a bias: 0.5.
        self.assertEqual([knot.get("bias", 0.5) for knot in knots], [0.5, 0.5, 0.5])

    def test_steps_have_none_to_hit(self):
        # The press lands on free ground, which takes a knot: (119 - 4) / 461 = 0.249458.
        events = [{"set": INTERPOLATION, "value": "Step"}, *drag((BIAS, BIASES))]
        self.assertEqual(self.positions(events), [0, 0.249458, 0.5, 1])


class Colours(EdgeTest):
    def test_a_double_press_on_a_knot_asks_for_its_colour(self):
        knots = self.knots([{"colour": [0, 1, 0]}, mouse("double", MIDDLE, KNOTS)])
        self.assertEqual(knots[1]["colour"], [0, 1, 0])

    def test_a_double_press_on_the_strip_asks_for_that_of_the_selected_knot(self):
        events = [*drag((MIDDLE, KNOTS)), {"colour": [0, 0, 1]}, mouse("double", 150, STRIP)]
        knots = self.knots(events)
        self.assertEqual(len(knots), 3)
        self.assertEqual(knots[1]["colour"], [0, 0, 1])


if __name__ == "__main__":
    unittest.main()
