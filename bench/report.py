"""Evaluates the runs of kval_bench: ratios, the table of goals, and the pages and pictures of docs/performance.

usage: report.py groups NAMES | ratios RESULT... | goals RESULTS_FOLDER [--docs FOLDER --run COMMAND] [--memory FILE]
"""
import argparse
import collections
import json
import math
import pathlib
import re
import statistics
import sys

import goals

Key = collections.namedtuple("Key", "operation width set")


class Results:
    """The least time of every benchmark, in nanoseconds: times[key][rival]."""

    def __init__(self, files):
        self.times = collections.defaultdict(dict)
        self.result_width = {}
        self.machine = {}
        for file in files:
            run = json.loads(pathlib.Path(file).read_text())
            self.machine = run["context"]
            for entry in run["benchmarks"]:
                self.add(entry)

    def add(self, entry):
        if entry.get("error_occurred"):
            sys.exit(f"{entry['name']}: {entry['error_message']}")
        if entry["run_type"] != "iteration":
            return
        operation, rival, width, operands = entry["run_name"].split("/")
        key = Key(operation, int(width), operands)
        unit = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[entry["time_unit"]]
        rivals = self.times[key]
        rivals[rival] = min(rivals.get(rival, math.inf), entry["cpu_time"] * unit)
        if rival == "kval" or key not in self.result_width:
            self.result_width[key] = int(entry["bits"])

    def ours(self, operation):
        return {key: rivals["kval"] for key, rivals in sorted(self.times.items())
                if key.operation == operation and "kval" in rivals}

    def pair2(self, key):
        """Two new[]/delete[] pairs of the result's words, or of the next size that was measured."""
        words = (self.result_width[key] + 31) // 32
        sizes = sorted((k.width, rivals["pair2"]) for k, rivals in self.times.items() if "pair2" in rivals)
        return next((time for width, time in sizes if width >= 32 * words), None)

    def reference(self, key, rival):
        """What a rival takes for the same; signed forms and differences are also held against what it has instead."""
        if isinstance(rival, tuple):
            times = [self.reference(key, one) for one in rival[1]]
            return min((time for time in times if time), default=None)
        if rival == "pair2":
            return self.pair2(key)
        operation = key.operation
        for candidate in (operation, operation.removeprefix("signed_"), re.sub(".*subtract$", "add", operation)):
            for operands in (key.set, "known"):
                time = self.times.get(Key(candidate, key.width, operands), {}).get(rival)
                if time:
                    return time
        return None


def name_of(reference):
    return reference[0] if isinstance(reference, tuple) else reference


def has_x(operands):
    return operands == "x" or operands.endswith("_x")


Cell = collections.namedtuple("Cell", "family column reference factor ratio where")


def worst(goal, operations, factor, results, family):
    """The largest ratio in one cell of the table, and where it is; no ratio where the rival was not measured."""
    found = Cell(family, goal.column[0], name_of(goal.reference), factor, None, "")
    for operation in operations:
        for key, time in results.ours(operation).items():
            width = results.result_width[key]
            _, least, most = goal.column
            if has_x(key.set) or not max(least, goal.least_width) <= width <= min(most, goal.most_width):
                continue
            reference = results.reference(key, goal.reference)
            if reference and time / reference > (found.ratio or 0):
                found = found._replace(ratio=time / reference, where=f"{key.operation} {key.width} {key.set}")
    return found


def goal_cells(results):
    cells = []
    for goal in goals.GOALS:
        cells.append(worst(goal, goal.operations, goal.factor, results, goal.family))
    for goal in goals.GOALS:
        if goal.family in goals.SIGNED_FAMILIES:
            signed = ["signed_" + operation for operation in goal.operations]
            cells.append(worst(goal, signed, goal.factor * goals.SIGNED_ALLOWANCE, results, "signed " + goal.family))
    return cells


def x_cells(results):
    """What X bits cost, for every operation: the known operands of the same shape are the reference."""
    cells = []
    for operation in sorted({key.operation for key in results.times}):
        found = None
        allowance = goals.X_ALLOWANCE.get(operation, goals.X_ALLOWANCE_ELSE)
        for key, time in results.ours(operation).items():
            known = "known" if key.set == "x" else key.set.removesuffix("_x")
            reference = results.times.get(key._replace(set=known), {}).get("kval")
            if has_x(key.set) and reference and (not found or time / reference > found.ratio):
                found = Cell("with X bits", operation, "without", allowance, time / reference,
                             f"{key.width} {key.set}")
        if found:
            cells.append(found)
    return cells


def exponent(points):
    """The slope of the least-squares line through (width, time) on log-log axes."""
    x = [math.log(width) for width, _ in points]
    y = [math.log(time) for _, time in points]
    return statistics.linear_regression(x, y).slope


def growth_points(results, operation, rival="kval", least=4096, most=1048576):
    return sorted((key.width, rivals[rival]) for key, rivals in results.times.items()
                  if key.operation == operation and key.set == "known" and rival in rivals
                  and least <= key.width <= most)


def growth_cells(results):
    """Linear is what copying by hand comes to, which leaves the caches on its way too, and at least GROWTH_ELSE."""
    by_hand = growth_points(results, "copy", "hand")
    linear = max(goals.GROWTH_ELSE, exponent(by_hand) if len(by_hand) >= 3 else 0)
    cells = []
    for operation in ("copy", "add", "shift_right", "hexadecimal_text", "multiply"):
        points = growth_points(results, operation)
        if len(points) >= 3:
            cells.append(Cell("growth with the width", operation, "(exponent)",
                              goals.GROWTH.get(operation, linear), exponent(points),
                              f"{points[0][0]} to {points[-1][0]} bits"))
    return cells


def number(value):
    return f"{value:.3g}" if value < 1 else f"{value:.2f}"


def cell_row(cell):
    goal = f"<= {number(cell.factor)} {'' if cell.reference.startswith('(') else 'x '}{cell.reference}"
    if cell.ratio is None:
        return [cell.family, cell.column, goal, "", "not measured", cell.where]
    verdict = "met" if cell.ratio <= cell.factor else "MISSED"
    return [cell.family, cell.column, goal, number(cell.ratio), verdict, cell.where]


def met_line(cells):
    return f"{sum(cell_row(cell)[4] == 'met' for cell in cells)} of {len(cells)} met"


HEADINGS = ["family", "column", "goal", "measured", "", "worst at"]


def print_columns(headings, rows):
    widths = [max(len(row[i]) for row in [headings, *rows]) for i in range(len(headings))]
    for row in [headings, *rows]:
        print("  ".join(text.ljust(width) for text, width in zip(row, widths)).rstrip())


def markdown(headings, rows, right=()):
    def line(cells):
        return "| " + " | ".join(text.replace("|", "\\|") for text in cells) + " |"
    rule = ["--:" if i in right else "---" for i in range(len(headings))]
    return "\n".join([line(headings), line(rule), *(line(row) for row in rows)]) + "\n"


# ---- ratios of a part, for whoever tunes it ----

RIVALS = ["hand", "pair2", "apint", "apint_pair", "systemc", "cpp_int", "mpz", "random", "mt19937_64"]


def ratio_rows(results):
    rows = []
    for key, rivals in sorted(results.times.items()):
        if "kval" not in rivals:
            continue
        measured = dict(rivals)
        pair2 = results.pair2(key)
        made_new = key.operation.removeprefix("signed_") in goals.NEW_VALUES + goals.SUMS
        if pair2 and made_new and results.result_width[key] > 32:
            measured["pair2"] = pair2
        rows.append([key.operation, str(key.width), key.set, f"{rivals['kval']:.4g}",
                     *(number(rivals["kval"] / measured[rival]) if rival in measured else "" for rival in RIVALS)])
    return rows


def print_ratios(files):
    results = Results(files)
    print_columns(["operation", "width", "set", "kval ns", *("/ " + rival for rival in RIVALS)], ratio_rows(results))


# ---- the groups of benchmarks that one process measures together ----

def groups(names):
    """The operations, each with its signed form; those of one group are held against each other."""
    operations = [name.split("/")[0] for name in names if "/" in name]
    bases = dict.fromkeys("add" if o.endswith("subtract") else o.removeprefix("signed_") for o in operations)
    for base in bases:
        if base == "pair2":
            continue
        together = [o for o in dict.fromkeys(operations)
                    if ("add" if o.endswith("subtract") else o.removeprefix("signed_")) == base]
        print(base, "|".join(together + ["pair2"] * (base in goals.NEW_VALUES + goals.SUMS)))


# ---- the pages ----

def machine_line(results):
    context = results.machine
    caches = ", ".join(f"L{c['level']} {c['type'].lower()} {c['size'] // 1024} KiB" for c in context["caches"])
    return f"{context['num_cpus']} CPUs at {context['mhz_per_cpu']} MHz; {caches}; {context['compiler']}."


def draw(results, folder, picture, operations):
    import matplotlib
    matplotlib.use("Agg")
    matplotlib.rcParams.update({"svg.hashsalt": "kval", "svg.fonttype": "none"})  # the same figures, the same picture
    import matplotlib.pyplot as plt
    operations = [o for o in operations if any(key.operation == o for key in results.times)]
    if not operations:
        return False
    figure, axes = plt.subplots(1, len(operations), figsize=(4.2 * len(operations), 3.6), squeeze=False)
    for axis, operation in zip(axes[0], operations):
        shapes = [key.set for key in results.ours(operation) if not has_x(key.set)]
        shown = "known" if "known" in shapes else shapes[0]
        for rival in ["kval", *RIVALS]:
            points = sorted((key.width, rivals[rival]) for key, rivals in results.times.items()
                            if key.operation == operation and key.set == shown and rival in rivals)
            if rival == "pair2" and operation in goals.NEW_VALUES + goals.SUMS:
                points = sorted((key.width, rivals[rival]) for key, rivals in results.times.items() if rival in rivals)
            if points:
                axis.loglog(*zip(*points), marker=".", label=rival, linewidth=2.5 if rival == "kval" else 1,
                            color="black" if rival == "kval" else None)
        axis.set_title(operation + ("" if shown == "known" else f" ({shown})"))
        axis.set_xlabel("bits")
        axis.set_ylabel("ns")
        axis.grid(True, which="major", alpha=0.3)
        axis.minorticks_off()
        axis.legend(fontsize="x-small")
    figure.tight_layout()
    figure.savefig(folder / f"{picture}.svg", metadata={"Date": None})
    plt.close(figure)
    return True


def full_table(results):
    rivals = [rival for rival in RIVALS if any(rival in times for times in results.times.values())]
    rows = []
    for key, times in sorted(results.times.items()):
        if key.operation == "pair2" or "kval" in times:
            rows.append([key.operation, str(key.width), key.set, str(results.result_width[key]),
                         *(f"{times[r]:.4g}" if r in times else "" for r in ["kval", *rivals])])
    headings = ["operation", "bits", "operands", "bits of the result", "kval", *rivals]
    return markdown(headings, rows, right=range(3, len(headings)))


def growth_table(results):
    rows = []
    for operation in ("copy", "add", "shift_right", "hexadecimal_text", "multiply"):
        for rival in ("kval", "hand", "mpz"):
            points = growth_points(results, operation, rival, 33, 1 << 24)
            fitted = growth_points(results, operation, rival)
            if len(fitted) >= 3:
                rows.append([operation, rival, f"{exponent(fitted):.2f}",
                             ", ".join(f"{width}: {time:.3g}" for width, time in points)])
    return markdown(["operation", "", "exponent, 4096 to a million bits", "bits: ns"], rows)


def memory_tables(file):
    entries = json.loads(pathlib.Path(file).read_text())
    live = sorted((e for e in entries if e["kind"] == "live"), key=lambda e: (e["width"], e["rival"]))
    calls = collections.defaultdict(dict)
    for e in entries:
        if e["kind"] == "operation":
            calls[e["operation"], e["width"]][e["rival"]] = f"{e['allocations']} / {e['bytes']}"
    rivals = sorted({e["rival"] for e in entries if e["kind"] == "operation"}, key=lambda r: (r != "kval", r))
    peak = markdown(["bits", "", "bytes a value", "allocations a value", "peak of a million values, MiB"],
                    [[str(e["width"]), e["rival"], f"{e['bytes']:.0f}", f"{e['allocations']:.2f}",
                      f"{e['peak'] / 2**20:.0f}"] for e in live], right=range(2, 5))
    table = markdown(["operation", "bits", *rivals],
                     [[operation, str(width), *(found.get(r, "") for r in rivals)]
                      for (operation, width), found in sorted(calls.items())], right=range(1, len(rivals) + 2))
    return peak, table


LEGEND = f"""\
Where several operations, widths or sets of operands fall into a cell, it shows the worst. A column speaks of the result's width.

- `hand` is [the code of hand.h](../../bench/hand.h), which above 64 bits writes into arrays that it has, and `pair2` two
  `new[]`/`delete[]` pairs of the result's size.
- `apint` is LLVM's `APInt`, `apint_pair` two of them as value and mask, and `4-state` the better of that and SystemC's `sc_lv`; `cpp_int`
  is Boost's, `mpz` GMP's; `random` and `mt19937_64` are the generators of the C and C++ libraries.
- Signed goals are {goals.SIGNED_ALLOWANCE} times the unsigned ones. Where another library has no signed form, or no difference, its unsigned form
  or its sum stands in.
- Text of 65 to 256 bits has one goal to 128 bits and one above; `*` of 65 to 256 bits has one from 128 on. Time may grow with an
  exponent of {goals.GROWTH_ELSE}, or with that of copying by hand.
"""


def write_pages(results, cells, folder, memory, run):
    folder.mkdir(parents=True, exist_ok=True)
    pictures = [name for name, operations in goals.PICTURES.items() if draw(results, folder, name, operations)]
    page = [
        "# Figures\n",
        f"Written by `{run}`. Least CPU time of several repetitions, in nanoseconds a call; every ratio is "
        "within one run.\n",
        machine_line(results) + "\n",
        f"## Goals: {met_line(cells)}\n",
        LEGEND,
        markdown(HEADINGS, [cell_row(cell) for cell in cells]),
        "## Growth with the width\n",
        growth_table(results),
    ]
    if memory:
        peak, table = memory_tables(memory)
        page += [
            "## Memory\n",
            "Blocks of memory and their bytes, as large as the allocator makes them; the object itself is among the "
            "bytes.\n",
            peak,
            "Allocations / bytes of one operation and its result, after some calls before:\n",
            table,
        ]
    page += ["## Pictures\n", *(f"![{name}]({name}.svg)\n" for name in pictures),
             "## Everything\n", "The [full table](table.md).\n"]
    (folder / "README.md").write_text("\n".join(page))
    (folder / "table.md").write_text("# Every operation, width and set of operands\n\n" + full_table(results))


def print_goals(folder, docs, memory, run):
    results = Results(sorted(pathlib.Path(folder).glob("*.json")))
    cells = goal_cells(results) + x_cells(results) + growth_cells(results)
    rows = [cell_row(cell) for cell in cells]
    print_columns(HEADINGS, rows)
    print(f"\n{met_line(cells)}")
    if docs:
        write_pages(results, cells, pathlib.Path(docs), memory, run)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    commands = parser.add_subparsers(dest="command", required=True)
    commands.add_parser("groups", help="groups the names on standard input")
    commands.add_parser("ratios").add_argument("results", nargs="+")
    table = commands.add_parser("goals")
    table.add_argument("results")
    table.add_argument("--docs")
    table.add_argument("--run")
    table.add_argument("--memory")
    arguments = parser.parse_args()
    if arguments.command == "groups":
        groups(sys.stdin.read().split())
    elif arguments.command == "ratios":
        print_ratios(arguments.results)
    else:
        print_goals(arguments.results, arguments.docs, arguments.memory, arguments.run)


main()
