"""Mutation testing: builds the library once with all its mutants in it, and runs the tests on each of them.

The environment variable KVAL_MUTANT says which mutant runs; mutants.py tells what a mutant is.
"""
import argparse
import concurrent.futures
import fnmatch
import json
import os
import pathlib
import random
import re
import subprocess
import sys
import threading
import time

from mutants import CHOICE, Source

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build/mutate"
TREE = WORK / "tree"
BUILD = WORK / "build"
EQUIVALENT = ROOT / "tests/mutation/equivalent.txt"

MUTATED = ["include/kval.h", "include/kval/detail/*.h", "src/*/*.h", "src/*/*.cpp"]

# The tests, the cheapest killers first. The page guard needs only boundary widths to see a read beyond an array.
PROGRAMS = ["unit/unit_test --gtest_filter=-*TwoToThe31*", "random/generator_test", "random/history_test",
            "unit/words_test", "random/random_test", "memory/memory_test", "unit/unit_test --gtest_filter=*TwoToThe31*",
            "memory/page_guard_test --gtest_filter=*boundary*"]
SETTINGS = {"KVAL_SEED": "1", "KVAL_PAIRS": "3000"}
MEMORY_LIMIT = 4 << 30
# No optimisation that takes it for granted that the code does not read beyond an array: mutants do.
FLAGS = "-O1 -fno-aggressive-loop-optimizations -w -Wno-narrowing"


def find_mutants():
    sources = [Source(str(path.relative_to(ROOT)), path.read_text())
               for glob in MUTATED for path in sorted(ROOT.glob(glob))]
    mutants = []
    for source in sources:
        mutants += source.mutants(len(mutants) + 1)
    return sources, mutants


def write(path, data):
    if not path.exists() or path.read_bytes() != data:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)


def write_tree(sources, mutants):
    changed = {source.name: source.with_mutants([m for m in mutants if m.file == source.name]) for source in sources}
    changed["src/value/version.cpp"] += CHOICE
    tops = [top for top in ROOT.iterdir() if top.name != "build" and not top.name.startswith(".")]
    names = {str(path.relative_to(ROOT)) for top in tops for path in [top, *top.rglob("*")] if path.is_file()}
    for name in names:
        write(TREE / name, changed[name].encode() if name in changed else (ROOT / name).read_bytes())
        (TREE / name).chmod((ROOT / name).stat().st_mode)
    for path in TREE.rglob("*"):
        if path.is_file() and str(path.relative_to(TREE)) not in names:
            path.unlink()


def build(sources, mutants, jobs):
    """Builds tree and tests; returns the ids of the mutants that do not compile."""
    stillborn = set()
    targets = {re.split("[/ ]", program)[1] for program in PROGRAMS}
    configure = ["cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                 f"-DCMAKE_CXX_FLAGS={FLAGS}", "-DKVAL_BUILD_EXAMPLES=OFF"]
    while True:
        write_tree(sources, [m for m in mutants if m.id not in stillborn])
        log = ""
        for command in (configure, ["ninja", "-C", BUILD, f"-j{jobs}", "-k0", "kval"],
                        ["ninja", "-C", BUILD, f"-j{jobs}", *targets]):
            run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
            log += run.stdout
            if run.returncode != 0:
                break
        else:
            return stillborn
        (WORK / "build.log").write_text(log)
        at = {(str(TREE / m.file), line): m.id for m in mutants if m.id not in stillborn
              for line in range(m.first, m.last + 1)}
        rejected = {at.get((found[1], int(found[2]))) for found in re.finditer(r"^(\S+):(\d+):\d+: error:", log, re.M)}
        if not rejected - {None}:
            sys.exit(f"{log}\nscripts/mutate: the tree does not build")
        stillborn |= rejected - {None}


def run_programs(mutant_id, limits):
    """Runs the programs that have a time limit. The first that fails with this mutant, or None; and how it fails."""
    environment = {**os.environ, **SETTINGS, "KVAL_MUTANT": str(mutant_id)}
    for program in limits:
        command = ["prlimit", f"--as={MEMORY_LIMIT}", "--core=0", *f"{BUILD}/tests/{program}".split(" "),
                   "--gtest_fail_fast", "--gtest_brief=1"]
        try:
            # In a session of its own: Ctrl-C ends the driver, and kills no mutant.
            code = subprocess.run(command, env=environment, timeout=limits[program], stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, start_new_session=True, check=False).returncode
        except subprocess.TimeoutExpired:
            return program, "timed out"
        if code != 0:
            return program, "failed" if code == 1 else "crashed"
    return None, ""


def time_limits():
    """Ten times what each program takes without a mutant, and not less than 5 seconds."""
    limits = {}
    for program in PROGRAMS:
        start = time.monotonic()
        killer, how = run_programs(0, {program: 600.0})
        if killer:
            sys.exit(f"scripts/mutate: {killer} {how} without any mutant")
        limits[program] = max(5.0, 10 * (time.monotonic() - start))
    return limits


def run_all(mutants, results_file, jobs):
    """Runs the tests on every mutant, and appends each result to the file."""
    limits = time_limits()
    lock = threading.Lock()
    start = time.monotonic()
    done = 0

    def run(mutant):
        nonlocal done
        killer, how = run_programs(mutant.id, limits)
        with lock:
            done += 1
            save(results_file, mutant, "killed" if killer else "survived", f"{killer} {how}" if killer else "")
            left = (time.monotonic() - start) / done * (len(mutants) - done)
            progress(done, len(mutants), left, None if killer else mutant)

    pool = concurrent.futures.ThreadPoolExecutor(jobs)
    try:
        list(pool.map(run, mutants))
    finally:
        pool.shutdown(cancel_futures=True)


def progress(done, total, left, survivor):
    terminal = sys.stdout.isatty()
    if survivor:
        print("\r\033[K" * terminal + f"survived {survivor.describe()}", flush=True)
    line = f"{done} of {total} mutants, {left / 60:.0f} minutes left"
    if terminal:
        print(f"\r\033[K{line}", end="\n" if done == total else "", flush=True)
    elif done == total or done % max(1, total // 20) == 0:
        print(line, flush=True)


def save(results_file, mutant, result, by=""):
    with open(results_file, "a", encoding="utf-8") as out:
        out.write(json.dumps({"key": mutant.key(), "result": result, "by": by}) + "\n")


def load(results_file):
    if not results_file.exists():
        return {}
    rows = [json.loads(line) for line in results_file.read_text().splitlines()]
    return {tuple(row["key"]): row["result"] for row in rows}


def load_excused():
    """From equivalent.txt: the keys of the mutants that need not be killed, each with the column that counts it."""
    excused = {}
    fields = {}
    changes = []
    for row in EQUIVALENT.read_text().splitlines() if EQUIVALENT.exists() else []:
        field, _, value = row.partition(": ")
        fields[field] = value
        if field == "change":
            changes.append(value)
        elif field in ("equivalent", "out of reach"):
            excused.update({(fields["file"], fields["at"], change): field for change in changes})
            changes = []
    return excused


def report(mutants, everything, results):
    """Prints the survivors and the table; false where a mutant survived or an excuse is wrong."""
    excused = load_excused()
    wrong = set(excused) - {m.key() for m in everything}
    columns = ["mutants", "stillborn", "killed", "survived", "equivalent", "out of reach"]
    table = {}
    for m in mutants:
        result = results.get(m.key())
        if m.key() in excused and result == "killed":
            wrong.add(m.key())
        elif m.key() in excused and result == "survived":
            result = excused[m.key()]
        if result == "survived":
            print("survived", m.describe())
        for row in (m.file, "all"):
            counts = table.setdefault(row, dict.fromkeys([*columns, None], 0))
            counts["mutants"] += 1
            counts[result] += 1
    for key in sorted(wrong):
        print("equivalent.txt names what is killed, or is there no more:", *key, sep="\n    ")
    table["all"] = table.pop("all")
    print(f"\n{'':38}" + "".join(f"{name:>13}" for name in columns))
    for row, counts in table.items():
        print(f"{row:38}" + "".join(f"{counts[name]:13}" for name in columns))
    counts = table["all"]
    score = 100 * counts["killed"] / max(1, counts["killed"] + counts["survived"])
    print(f"\nkilled {score:.2f} % of those that can be told apart; not run: {counts[None]}")
    return counts["survived"] == 0 and not wrong


def parse_arguments():
    parser = argparse.ArgumentParser(prog="scripts/mutate", description="Tests the tests by mutants of the library.")
    parser.add_argument("--files", metavar="GLOB", default="*", help="only the mutants of these files")
    parser.add_argument("--list", action="store_true", help="lists the mutants, and runs none")
    parser.add_argument("--only", metavar="ID,...", help="only these; 'survivors': those that survived before")
    parser.add_argument("--sample", metavar="N", type=int, help="only N of them, drawn at random")
    parser.add_argument("--seed", metavar="S", type=int, default=1, help="draws another sample")
    parser.add_argument("--jobs", metavar="N", type=int, default=os.cpu_count(), help="how many at a time")
    parser.add_argument("--resume", metavar="FILE", type=pathlib.Path, help="goes on with the results in this file")
    return parser.parse_args()


def main():
    options = parse_arguments()
    results_file = options.resume or WORK / "results.jsonl"
    sources, mutants = find_mutants()
    chosen = [m for m in mutants if fnmatch.fnmatch(m.file, options.files)]
    if options.only == "survivors":
        survivors = {key for key, result in load(results_file).items() if result == "survived"}
        chosen = [m for m in chosen if m.key() in survivors]
    elif options.only:
        chosen = [m for m in chosen if str(m.id) in options.only.split(",")]
    if options.sample:
        drawn = random.Random(options.seed).sample(chosen, min(options.sample, len(chosen)))
        chosen = sorted(drawn, key=lambda m: m.id)
    if not chosen:
        sys.exit("scripts/mutate: no such mutants")
    if options.list:
        print(*(m.describe() for m in chosen), sep="\n")
        return

    WORK.mkdir(parents=True, exist_ok=True)
    if not options.resume and not options.only:
        results_file.unlink(missing_ok=True)
    print(f"building {len(mutants)} mutants in {BUILD}", flush=True)
    stillborn = build(sources, mutants, options.jobs)
    known = load(results_file) if options.resume and not options.only else {}
    for m in chosen:
        if m.id in stillborn and m.key() not in known:
            save(results_file, m, "stillborn")
    run_all([m for m in chosen if m.id not in stillborn and m.key() not in known], results_file, options.jobs)
    sys.exit(0 if report(chosen, mutants, load(results_file)) else 1)


if __name__ == "__main__":
    main()
