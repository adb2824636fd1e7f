"""The table of results."""

import statistics

NEXT = 2  # absences that are told beside the longest
HEADER = ["ms", "longest", "median", "then", "in all", "few files", "ratio"]


class Report:
    def __init__(self):
        self._phases = {}
        self._memory = {}

    def add(self, phase, absences):
        """The absences that followed one act, in milliseconds. A phase may have several acts."""
        self._phases.setdefault(phase, []).append(sorted(absences, reverse=True) or [0.0])

    def add_time(self, phase, milliseconds):
        """A duration from beginning to end."""
        self.add("* " + phase, [milliseconds])

    def memory(self, moment, resident, highest):
        self._memory[moment] = [resident, highest]

    def table(self, few):
        """As text, beside the report of a few files."""
        phases = {**{name: acts for name, acts in few._phases.items() if name not in self._phases}, **self._phases}
        rows = [self._row(name, acts, few._phases.get(name)) for name, acts in phases.items()]
        memory = [
            [moment, *(f"{value:.0f}" for value in [*values, *few._memory[moment]])]
            for moment, values in self._memory.items()
        ]
        return "\n".join([
            *_aligned([HEADER, *rows]),
            "longest: of the absences of the main thread from its event loop; then: the next ones; in all: their sum.",
            "With several acts: the slowest, the median of their longest, and the largest sum. * a time of its own.",
            "",
            *_aligned([["MB", "at rest", "highest so far", "few files", "highest so far"], *memory]),
        ])

    def _row(self, name, acts, few):
        longest = [act[0] for act in acts]
        is_time = name.startswith("*")
        cells = [
            f"{max(longest):.0f}",
            f"{statistics.median(longest):.0f} of {len(acts)}" if len(acts) > 1 else "",
            ", ".join(f"{absence:.0f}" for absence in acts[0][1:NEXT + 1]) if len(acts) == 1 else "",
            "" if is_time else f"{max(sum(act) for act in acts):.0f}",
        ]
        if few is None or name not in self._phases:
            return [name, *cells, "", ""]
        slowest = max(act[0] for act in few)
        return [name, *cells, f"{slowest:.0f}", f"{max(longest) / slowest:.1f}" if slowest else ""]


def _aligned(rows):
    widths = [max(map(len, column)) for column in zip(*rows)]
    lines = []
    for name, *cells in rows:
        padded = [cell.rjust(width) for cell, width in zip(cells, widths[1:])]
        lines.append("  ".join([name.ljust(widths[0]), *padded]).rstrip())
    return lines
