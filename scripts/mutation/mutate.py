#!/usr/bin/python3
"""Changes the program in many small ways, one at a time, and tells which changes no test notices.

    scripts/mutation/mutate.py [--mutants 400] [--seed N] [--jobs N] [--matrix N] [--only PART-OF-PATH]

All mutants are compiled into one copy of the project; a variable of the environment wakes one of them. Each is run
against the unit tests that come upon it, the quick ones first, at idle priority. A mutant that makes a test fail, crash
or take far too long is killed. With --matrix all tests are run on so many mutants, which shows what each test is good
for. Takes the packages of the tests, python3-clang-14 and libclang-14-dev, and a release build.

equivalent.toml explains mutants that change nothing which a test could notice. They are run and counted apart. An
explanation whose mutant is gone or is killed fails the run.
"""

import argparse
import collections
import concurrent.futures
import functools
import json
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import tomllib

from mutants import Finder, flags_of, mutated

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
WORK = ROOT / "build" / "mutation"
TREE = WORK / "tree"
BUILD = TREE / "build" / "release"
PROGRAMS = ["morlaine_tests", "morlaine_ui_tests"]
SOURCES = ["src/Core", "src/Services", "src/UI/Views/State", "src/Utilities"] + [
    f"src/UI/Views/{name}.cpp" for name in
    ["Chart/PieSlice", "Chart/DonutSliceShape", "Inspector/InspectorText", "Search/SearchFilterContent",
     "Sidebar/SidebarText", "Sidebar/SpaceBreakdown", "Treemap/BreadcrumbFit", "Treemap/TreemapDecisions",
     "Treemap/TreemapTile"]]
MOST = 1 << 14
FLAGS = "-O2 -DNDEBUG -D_GLIBCXX_ASSERTIONS"  # a place outside an array ends the program
PATIENCE = 60  # seconds
QUICK = 2.0  # seconds of tests that are run first
ENVIRONMENT = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8"}


def all_sources():
    for name in SOURCES:
        path = ROOT / name
        yield from [name] if path.is_file() else sorted(str(each.relative_to(ROOT)) for each in path.rglob("*.cpp"))


def all_mutants():
    flags = flags_of(ROOT / "build" / "release")
    return [mutant for name in all_sources() for mutant in Finder(ROOT, name, flags[str(ROOT / name)]).found]


def choose(mutants, arguments):
    """The numbers of the mutants to try, in random order."""
    numbers = [number for number, mutant in enumerate(mutants) if arguments.only in mutant.file]
    chosen = random.Random(arguments.seed).sample(numbers, min(arguments.mutants, len(numbers)))
    print(f"{len(numbers)} places to change, {len(chosen)} chosen", flush=True)
    return chosen


def identity(mutant):
    return mutant.file, mutant.text, mutant.what


def explained_mutants():
    """Why a mutant changes nothing, by its identity."""
    listed = tomllib.loads((ROOT / "scripts/mutation/equivalent.toml").read_text())["mutant"]
    return {(each["file"], each["line"], each["change"]): each["why"] for each in listed}


def build(mutants):
    """Builds the copy; sources that are no others than before are left alone."""
    files = subprocess.run(["git", "ls-files", "-z"], cwd=ROOT, capture_output=True, check=True).stdout.split(b"\0")
    by_file = collections.defaultdict(list)
    for number, mutant in enumerate(mutants):
        by_file[mutant.file].append((number, mutant))
    for name in filter(None, map(os.fsdecode, files)):
        source, target = ROOT / name, TREE / name
        if not source.exists():
            continue
        content = source.read_bytes()
        if name in by_file:
            # A header of the system, as this one calls itself, is compiled without warnings.
            change(target.with_suffix(".mutants.h"),
                   b"#pragma GCC system_header\n" + mutated(content, by_file[name]))
            content = f'#include "{TREE}/scripts/mutation/Mutant.h"\n#include "{target.stem}.mutants.h"\n'.encode()
        change(target, content)
        shutil.copymode(source, target)
    if not (BUILD / "build.ninja").exists():
        subprocess.run(["cmake", "--preset", "release", f"-DCMAKE_CXX_FLAGS_RELWITHDEBINFO={FLAGS}"], cwd=TREE,
                       check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", BUILD, "--target", *PROGRAMS, "--", "-k", "0"], check=True)


def change(path, content):
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def limit_processor_time(seconds):
    """At idle priority, time on the clock says little. A shell may have started this in the background, without SIGINT."""
    os.setsid()
    signal.signal(signal.SIGINT, signal.SIG_DFL)
    resource.setrlimit(resource.RLIMIT_CPU, (int(seconds), int(seconds)))


def run(program, tests, limit, fail_fast=True, **variables):
    """The tests that failed in so many seconds of processor time; the one that was running when the program crashed or the time was over is among them."""
    folder = tempfile.mkdtemp(prefix="mutant-")
    os.chmod(folder, 0o755)  # for tests that give up the superuser's privileges
    command = ["chrt", "-i", "0", BUILD / program, f"--gtest_filter={':'.join(tests)}", "--gtest_color=no"]
    process = subprocess.Popen(command + ["--gtest_fail_fast"] * fail_fast, stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL, env={**ENVIRONMENT, "TMPDIR": folder, **variables},
                               preexec_fn=functools.partial(limit_processor_time, limit))
    try:
        output = process.communicate(timeout=PATIENCE + 5 * limit)[0].decode(errors="replace")
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, 9)
        output = process.communicate()[0].decode(errors="replace")
    shutil.rmtree(folder, ignore_errors=True)
    failed = re.findall(r"^\[  FAILED  \] ([\w/]+\.[\w/]+)(?:,|$| \()", output, re.M)
    if process.returncode != 0 and not failed:
        failed = re.findall(r"^\[ RUN      \] (\S+)", output, re.M)[-1:] or ["(start)"]
    return list(dict.fromkeys(failed))


def survey():
    """By program: each test with its time and the mutants that it comes upon."""
    tests = []
    for program in PROGRAMS:
        listing = subprocess.run([BUILD / program, "--gtest_list_tests"], capture_output=True, text=True, check=True,
                                 env=ENVIRONMENT).stdout
        suite = ""
        for line in listing.splitlines():
            name = line.split("#")[0].rstrip()
            if line.startswith("  "):
                tests.append((program, suite + name.strip()))
            else:
                suite = name
    with tempfile.NamedTemporaryFile() as reached:
        for program, test in tests:
            reached.seek(0)
            reached.write(bytes(MOST))
            reached.flush()
            start = time.monotonic()
            if run(program, [test], 120, MORLAINE_REACHED=reached.name):
                print(f"{test} fails without a mutant and is left out", flush=True)
                continue
            seconds = time.monotonic() - start
            reached.seek(0)
            yield program, test, seconds, {number for number, byte in enumerate(reached.read()) if byte}


def attempt(number, tests, is_matrix):
    """The tests that kill the mutant; one is enough unless all are wanted."""
    reaching = sorted([each for each in tests if number in each[3]], key=lambda each: each[2])
    killers, pending = [], reaching
    while pending and (is_matrix or not killers):
        program, seconds, batch = pending[0][0], 0.0, []
        for each in pending:
            if each[0] == program and (not batch or seconds + each[2] < QUICK):
                batch.append(each)
                seconds += each[2]
        if is_matrix:
            batch = batch[:1]
        pending = [each for each in pending if each not in batch]
        killers += run(program, [each[1] for each in batch], 20 + 10 * seconds, MORLAINE_MUTANT=str(number))
    return number, len(reaching), killers


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--mutants", type=int, default=400)
    parser.add_argument("--matrix", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--only", default="")
    arguments = parser.parse_args()
    mutants = all_mutants()
    order = choose(mutants, arguments)
    explained = explained_mutants()
    everywhere = {identity(mutant) for mutant in mutants}
    faults = [f"explained, but gone: {each}" for each in explained if each not in everywhere]
    print("\n".join(faults), end="\n" * bool(faults), flush=True)
    build(mutants)
    tests = list(survey())
    print(f"{len(tests)} tests", flush=True)
    matrix = set(order[:arguments.matrix])
    verdicts, unique = collections.Counter(), collections.Counter()
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
        work = [pool.submit(attempt, number, tests, number in matrix) for number in order]
        for future in concurrent.futures.as_completed(work):
            number, reaching, killers = future.result()
            mutant = mutants[number]
            is_explained = identity(mutant) in explained
            verdict = "killed" if killers else "equivalent" if is_explained else "survived" if reaching else "NOT REACHED"
            verdicts[verdict] += 1
            line = f"{mutant.file}:{mutant.line}: {mutant.what}: {verdict}{' by ' * bool(killers)}{', '.join(killers)}"
            if killers and is_explained:
                line += ", but explained as equivalent"
                faults.append(line)
            print(line, flush=True)
            if number in matrix and len(killers) == 1:
                unique[killers[0]] += 1
    killed, equivalent = verdicts["killed"], verdicts["equivalent"]
    count = len(order)
    print(f"{count} mutants: {killed} killed, {equivalent} equivalent, {count - killed - equivalent} not noticed; killed"
          f" {100 * killed / count:.1f} %, killed or equivalent {100 * (killed + equivalent) / count:.1f} %")
    if matrix:
        useless = [test for _, test, _, _ in tests if not unique[test]]
        print(json.dumps({"alone": unique, "never alone": useless}, indent=1))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
