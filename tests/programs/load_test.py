"""What must hold under load: memory stays flat over many files, and threads do not show."""
import subprocess
import unittest

from program import PROGRAM, ProgramTest

MATERIALS = 10000
BOUND = 8 << 20  # in bytes; a leak of one kilobyte a material would be as much


def resident(pid):
    """The bytes of memory that a process holds."""
    with open(f"/proc/{pid}/statm", encoding="ascii") as statm:
        return int(statm.read().split()[1]) * 4096


class Memory(ProgramTest):
    def test_stays_flat_over_ten_thousand_bakes(self):
        # Two kinds of graph, so that inputs and ramps are made and freed as well.
        self.write("plain.json", {"shader": "2D Noise", "octaves": 2})
        self.write("chain.json", {"shader": "Colorizer",
                                  "input": {"shader": "Hue", "input": {"shader": "Tiles"}}})
        names = []
        for i in range(MATERIALS):
            name = f"m{i}.json"
            (self.folder / name).symlink_to(("plain.json", "chain.json")[i % 2])
            names.append(name)
        (self.folder / "out").mkdir()
        process = subprocess.Popen(
            [PROGRAM, "bake", *names, "--size", "2", "-o", "out/<material>.png"],
            cwd=self.folder, stdout=subprocess.PIPE, text=True)
        early = late = 0
        for count, _ in enumerate(process.stdout, 1):  # one line for each picture
            if count == MATERIALS // 10:
                early = resident(process.pid)
            elif count == MATERIALS * 9 // 10:
                late = resident(process.pid)
        self.assertEqual(process.wait(), 0)
        process.stdout.close()
        self.assertGreater(early, 0)
        self.assertGreater(late, 0)
        self.assertLess(late - early, BOUND)


class Threads(ProgramTest):
    def test_sixty_four_on_any_machine_give_the_bytes_of_one(self):
        self.write("s.json", {
            "format": "sorvanix-scene", "version": 1,
            "materials": [{"name": "M", "channels": {
                "colour": {"graph": {"shader": "Distorter", "input": {"shader": "Tiles"},
                                     "distortInput": {"shader": "2D Noise"}}},
                "bump": {"graph": {"shader": "3D Noise"}}}}],
            "objects": [{"kind": "torus", "textures": [{"material": "M"}]},
                        {"kind": "spotLight", "position": [-260, 340, -360], "target": [0, 0, 0]}]})
        for threads in (1, 64):
            self.run_program("render", "s.json", "--size", "160x120", "--threads", threads,
                             "-o", f"r{threads}.exr")
        self.assertEqual(self.bytes_of("r1.exr"), self.bytes_of("r64.exr"))


if __name__ == "__main__":
    unittest.main()
