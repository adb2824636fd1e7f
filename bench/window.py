#!/usr/bin/python3
"""Measures the program from outside: how long its window makes a person wait, and how much memory it uses.

The program runs on a desktop of its own, driven by keys and clicks. A library that is loaded into it notes how long its
main thread stays away from its event loop. The same is done with a few files for comparison. It reports and never
judges; it fails only where the window does not do what the keys and clicks should make it do.
"""

import argparse
import contextlib
import pathlib
import signal
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "EndToEnd"))

import processes  # noqa: E402
from big_tree import make_big_tree  # noqa: E402
from folders import remove_tree  # noqa: E402
from quarter import Quarter  # noqa: E402
from report import Report  # noqa: E402
from session import SIZES, Session, find_places, make_desktop  # noqa: E402

FEW = 40  # files of the tree to compare with


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--files", type=int, default=300_000, help="of a tree that is made beside the program and kept")
    parser.add_argument("--tree", type=pathlib.Path, help="a folder to scan instead; made if it does not exist")
    parser.add_argument("--scale", type=int, choices=list(SIZES), default=1, help="2: 3840 x 2160 pixels at 2x")
    parser.add_argument("--quarter", action="store_true", help="give the program a quarter of a processor")
    parser.add_argument("--program", type=pathlib.Path, default=ROOT / "build" / "release" / "morlaine")
    parser.add_argument("--pictures", type=pathlib.Path, help="a folder for pictures of the window")
    return parser.parse_args()


def measure(arguments, program, tree, few):
    """The reports of the tree and of a few files."""
    places = find_places(arguments.program, few, arguments.scale)
    reports = []
    for folder, pictures in [(few, None), (tree, arguments.pictures)]:
        reports.append(Report())
        with make_desktop(arguments.scale, has_accessibility=False) as desktop:
            session = Session(desktop, program, arguments.library, folder, places, arguments.scale, pictures)
            if folder == few:
                session.measure_starts(reports[0])
            session.measure(reports[-1])
    return reports[1], reports[0]


def main():
    arguments = parse_arguments()
    arguments.program = arguments.program.resolve()
    arguments.library = arguments.program.parent / "libmorlaine_loop_watch.so"
    tree = arguments.tree or arguments.program.parent / "bench-data" / f"{arguments.files}-files"
    tree = tree.resolve()
    if arguments.pictures:
        arguments.pictures.mkdir(parents=True, exist_ok=True)
    make_big_tree(tree, arguments.files)
    processes.adopt_orphans()
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(1))
    parent = pathlib.Path(tempfile.mkdtemp(prefix="morlaine-window-"))
    try:
        with contextlib.ExitStack() as stack:
            program = arguments.program
            if arguments.quarter:
                try:
                    program = stack.enter_context(Quarter(parent)).wrap(program)
                except OSError as failure:
                    print(f"skipped: no processor time can be limited here ({failure})")
                    return
            few = parent / "few"
            make_big_tree(few, FEW)
            report, small = measure(arguments, program, tree, few)
        width, height = SIZES[arguments.scale]
        limit = ", a quarter of a processor" if arguments.quarter else ""
        print(f"{tree}, {width} x {height} pixels at {arguments.scale}x{limit}")
        print(report.table(small))
    finally:
        processes.kill_descendants()
        remove_tree(parent)


if __name__ == "__main__":
    main()
