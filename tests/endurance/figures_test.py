"""Whether the verdict on flatness tells a leak from noise."""

import os
import random
import unittest

from figures import FIGURES, figures_of_process, judge, slope

MEMORY, DESCRIPTORS = FIGURES[1], FIGURES[2]
TIMES = list(range(0, 6000, 5))


def verdict(figure, value):
    return judge([figure], TIMES, [[value(time)] for time in TIMES])[0]


class Verdicts(unittest.TestCase):
    def test_slope_of_a_line_is_its_own(self):
        self.assertAlmostEqual(slope([0, 10, 20], [5, 25, 45]), 2)

    def test_noise_around_a_constant_is_flat(self):
        noise = random.Random(1)
        self.assertTrue(verdict(MEMORY, lambda time: 20 + noise.uniform(-1, 1)).is_flat)

    def test_two_kilobytes_a_dictation_are_a_leak(self):
        noise = random.Random(1)
        leak = verdict(MEMORY, lambda time: 20 + time / 5 * 0.002 + noise.uniform(-1, 1))
        self.assertFalse(leak.is_flat)
        self.assertAlmostEqual(leak.growth, 2.4, delta=0.3)

    def test_a_descriptor_lost_at_every_tenth_minute_is_a_leak(self):
        self.assertFalse(verdict(DESCRIPTORS, lambda time: 40 + time // 600).is_flat)

    def test_what_falls_is_flat(self):
        self.assertTrue(verdict(MEMORY, lambda time: 30 - time / 1000).is_flat)


class Figures(unittest.TestCase):
    def test_a_descriptor_opened_is_one_more(self):
        before = figures_of_process(os.getpid())
        with open("/dev/null", encoding="ascii"):
            after = figures_of_process(os.getpid())
        self.assertEqual(after[2], before[2] + 1)

    def test_memory_filled_is_in_resident_and_own(self):
        before = figures_of_process(os.getpid())
        block = bytearray(os.urandom(1 << 20)) * 20
        after = figures_of_process(os.getpid())
        self.assertAlmostEqual(after[0] - before[0], len(block) / 1e6, delta=4)
        self.assertAlmostEqual(after[1] - before[1], len(block) / 1e6, delta=4)


if __name__ == "__main__":
    unittest.main()
