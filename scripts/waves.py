"""Draws waveforms as SVG:  waves.py CHANGES >PICTURE

CHANGES is what fstminer -c prints of a waveform file: a line "#TIME SCOPE.SIGNAL VALUE" for every change, the value in
binary with x and z. The same changes give the same picture, byte by byte.
"""

import re
import sys
from html import escape

ORDER = ["clock", "reset", "serial", "count", "shift", "bus", "ready"]
IN_BINARY = {"shift"}
END, TICK = 165, 10  # ns
LEFT, TOP, SCALE, LANE, HEIGHT = 84, 34, 5.6, 42, 24  # pixels; those of SCALE are a nanosecond's
EDGE = 3  # half the width of a bus's change
DIGIT = 6
KNOWN, UNKNOWN, FLOATING = "#1f4e79", "#c0392b", "#b7791f"
STYLE = """
text { font-family: ui-monospace, 'DejaVu Sans Mono', Menlo, Consolas, monospace; font-size: 10px; fill: #222 }
.name { font-size: 13px; text-anchor: end }
.time, .value { text-anchor: middle }
.time { fill: #777 }
.grid { stroke: #e4e4e4 }
"""


def x_of(time):
    return LEFT + time * SCALE


def read_changes(lines):
    """The changes of every signal, as (time, value)."""
    changes = {}
    for line in lines:
        time, signal, value = re.fullmatch(r"#(\d+) \w+\.(\w+)(?:\[\d+:0\])? ([01xz]+)", line.strip()).groups()
        changes.setdefault(signal, []).append((int(time), value))
    return changes


def spans(changes):
    """Value after value, as (begin, end, value)."""
    ends = [time for time, _ in changes[1:]] + [END]
    return [(begin, min(end, END), value) for (begin, value), end in zip(changes, ends) if begin < END]


def colour(value):
    return UNKNOWN if "x" in value else FLOATING if "z" in value else KNOWN


def hexadecimal(value):
    """A digit for every four bits: X where one is x, else Z where one is z."""
    groups = [value[max(end - 4, 0) : end] for end in range(len(value), 0, -4)][::-1]
    return "".join("X" if "x" in bits else "Z" if "z" in bits else f"{int(bits, 2):X}" for bits in groups)


def label(value, in_binary, width):
    text = value.upper() if in_binary else hexadecimal(value)
    return "X" if set(text) == {"X"} and len(text) * DIGIT > width else text


def path(points, stroke, fill="none"):
    line = "L".join(f"{x:.1f} {y:.1f}" for x, y in points)
    return f'<path d="M{line}" stroke="{stroke}" fill="{fill}"/>'


def wire(changes, top):
    """A signal of one bit: high, low, or x and z halfway."""
    level = {"1": top, "0": top + HEIGHT}
    before = None
    for begin, end, value in spans(changes):
        y = level.get(value, top + HEIGHT / 2)
        points = [(x_of(begin), y), (x_of(end), y)]
        if before is not None:
            points.insert(0, (x_of(begin), before))
        yield path(points, colour(value))
        before = y


def bus(changes, top, in_binary):
    """A signal of several bits: a box round each value, or a line halfway while it floats."""
    middle, bottom = top + HEIGHT / 2, top + HEIGHT
    for begin, end, value in spans(changes):
        left, right = x_of(begin), x_of(end)
        if set(value) == {"z"}:
            yield path([(left, middle), (right, middle)], FLOATING)
            text, text_y = "Z", middle - 4
        else:
            inner_left, inner_right = left + EDGE, right - EDGE
            box = [(left, middle), (inner_left, top), (inner_right, top), (right, middle)]
            box += [(inner_right, bottom), (inner_left, bottom), (left, middle)]
            yield path(box, colour(value), "#fbe3e0" if "x" in value else "#eef4fa")
            text, text_y = label(value, in_binary, inner_right - inner_left), middle + 3.5
        yield f'<text class="value" x="{(left + right) / 2:.1f}" y="{text_y:.1f}">{text}</text>'


def picture(changes):
    width, height = x_of(END) + 16, TOP + LANE * len(ORDER)
    yield f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width:.0f} {height:.0f}" role="img">'
    yield f"<title>Waveforms of {escape(', '.join(ORDER))}, 0 to {END} ns</title>"
    yield f'<style>{STYLE}</style><rect width="100%" height="100%" fill="white"/>'
    for time in range(0, END + 1, TICK):
        x = x_of(time)
        yield f'<path class="grid" d="M{x:.1f} {TOP - 8}V{height - 10}"/>'
        if time % (2 * TICK) == 0:
            yield f'<text class="time" x="{x:.1f}" y="{TOP - 14}">{time} ns</text>'
    for index, signal in enumerate(ORDER):
        top = TOP + LANE * index + 4
        yield f'<text class="name" x="{LEFT - 10}" y="{top + HEIGHT / 2 + 4:.1f}">{escape(signal)}</text>'
        is_wire = len(changes[signal][0][1]) == 1
        yield from wire(changes[signal], top) if is_wire else bus(changes[signal], top, signal in IN_BINARY)
    yield "</svg>"


def main():
    with open(sys.argv[1], encoding="ascii") as lines:
        print("\n".join(picture(read_changes(lines))))


main()
