"""What is watched of a process over hours, and when it counts as flat."""

import os
from dataclasses import dataclass
from pathlib import Path

MEGABYTE = 1e6


@dataclass(frozen=True)
class Figure:
    name: str
    growth_at_most: float  # of the line fitted through what came after the warm-up, from its beginning to its end


FIGURES = [
    Figure("resident MB", 2.0),
    Figure("own MB", 1.0),
    Figure("descriptors", 1.0),
    Figure("threads", 1.0),
    Figure("X resources", 1.0),
    Figure("X pixmaps MB", 0.1),
]
SERVER_FIGURES = FIGURES[:4]


def figures_of_process(pid):
    """The first four of FIGURES."""
    process = Path(f"/proc/{pid}")
    memory = {}
    for line in (process / "smaps_rollup").read_text(encoding="ascii").splitlines()[1:]:
        name, size, _ = line.split()
        memory[name.rstrip(":")] = int(size) * 1024 / MEGABYTE
    # Not the private memory: pages of libraries turn private when the last other program that maps them ends.
    return [memory["Rss"], memory["Anonymous"],
            len(os.listdir(process / "fd")), len(os.listdir(process / "task"))]


def slope(times, values):
    """Of the line that fits best, by time."""
    mean_time = sum(times) / len(times)
    mean_value = sum(values) / len(values)
    spread = sum((time - mean_time) ** 2 for time in times)
    return sum((time - mean_time) * (value - mean_value) for time, value in zip(times, values)) / spread


@dataclass(frozen=True)
class Verdict:
    figure: Figure
    first: float  # of the fitted line
    per_hour: float
    growth: float

    @property
    def is_flat(self):
        return self.growth <= self.figure.growth_at_most


def judge(figures, times, rows):
    """A verdict on each figure: `rows` holds their values at `times`, in seconds."""
    verdicts = []
    for index, figure in enumerate(figures):
        values = [row[index] for row in rows]
        rise = slope(times, values)
        middle = sum(values) / len(values)
        duration = times[-1] - times[0]
        verdicts.append(Verdict(figure, middle - rise * duration / 2, rise * 3600, rise * duration))
    return verdicts
