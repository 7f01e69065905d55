# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
"""Bars of ratios on a logarithmic scale, as SVG."""
import math

WIDTH, LABELS, RIGHT, ROW, HEAD = 760, 230, 70, 15, 52
BLUE, ORANGE, DARK = "#2b6cb0", "#c05621", "#222"
STEPS = (1, 2, 5)
STYLE = "text{font:11px sans-serif}.h{font-weight:bold}.r{text-anchor:end}.m{text-anchor:middle}"


def ticks(low, high):
    """1, 2 and 5 times the powers of ten, from the last at or below low to the first at or above high."""
    all_ticks = [step * 10.0 ** power for power in range(-4, 5) for step in STEPS]
    first = max(tick for tick in all_ticks if tick <= low)
    last = min(tick for tick in all_ticks if tick >= high)
    return [tick for tick in all_ticks if first <= tick <= last]


def escaped(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


class Plot:
    def __init__(self, rows):
        values = [value for _, ratio, goal, others in rows for value in (ratio, goal, *others) if value]
        self.ticks = ticks(min(values + [0.5]), max(values + [2.0]))
        self.height = HEAD + ROW * len(rows) + 8
        self.lines = []

    def x(self, ratio):
        low, high = math.log(self.ticks[0]), math.log(self.ticks[-1])
        return LABELS + (WIDTH - LABELS - RIGHT) * (math.log(ratio) - low) / (high - low)

    def text(self, x, y, content, kind=""):
        kind = f' class="{kind}"' if kind else ""
        self.lines.append(f'<text x="{x:.1f}" y="{y}"{kind}>{escaped(content)}</text>')

    def upright(self, x, top, bottom, colour, width):
        self.lines.append(
            f'<path d="M{x:.1f} {top}V{bottom}" stroke="{colour}" stroke-width="{width}"/>')

    def grid(self):
        for tick in self.ticks:
            colour, width = (DARK, 1.5) if tick == 1 else ("#ddd", 1)
            self.upright(self.x(tick), HEAD - 6, self.height - 4, colour, width)
            self.text(self.x(tick), HEAD - 11, f"{tick:g}", "m")

    def other(self, x, y, index):
        """A circle for the first of the other peers, a diamond for the second."""
        shape = (f'<circle cx="{x:.1f}" cy="{y}" r="3.5"' if index == 0 else
                 f'<path d="M{x - 4.5:.1f} {y}l4.5 -4.5l4.5 4.5l-4.5 4.5z"')
        self.lines.append(f'{shape} fill="#fff" stroke="{DARK}" stroke-width="1.5"/>')

    def bar(self, y, label, ratio, goal):
        self.text(LABELS - 8, y + 11, label, "r")
        start, end = sorted((self.x(1), self.x(ratio)))
        colour = BLUE if ratio >= 1 else ORANGE
        self.lines.append(f'<rect x="{start:.1f}" y="{y + 2}" width="{end - start:.1f}" height="{ROW - 4}" '
                          f'fill="{colour}"/>')
        if goal:
            self.upright(self.x(goal), y, y + ROW, "#000", 3)
        self.text(WIDTH - RIGHT + 12, y + 11, f"{ratio:.2f}" if ratio >= 0.1 else f"{ratio:.1g}")


def svg(title, names, rows):
    """rows are (label, ratio, goal, ratios to the peers of these names).

    The ratio is None for a heading; missing values are None, too.
    """
    plot = Plot(rows)
    plot.text(10, 16, title, "h")
    if any(value for row in rows for value in row[3]):
        for index, name in enumerate(names):
            plot.other(WIDTH - 170 + 85 * index, 12, index)
            plot.text(WIDTH - 162 + 85 * index, 16, name)
    plot.grid()
    for index, (label, ratio, goal, others) in enumerate(rows):
        y = HEAD + ROW * index
        if ratio is None:
            plot.text(10, y + 11, label, "h")
        else:
            plot.bar(y, label, ratio, goal)
            for number, value in enumerate(others):
                if value:
                    plot.other(plot.x(value), y + 7, number)
    head = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {plot.height}" width="{WIDTH}">',
            f"<style>{STYLE}</style>", '<rect width="100%" height="100%" fill="#fff"/>']
    return "\n".join(head + plot.lines + ["</svg>"]) + "\n"
