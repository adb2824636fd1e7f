#!/usr/bin/python3
"""Runs the program under faults: hostile disks and a failing store. One line of output a check.

    run.py --program build/release/morlaine [--long] [--seed N] [GROUP or "name of a check" ...]
"""

import argparse
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time
import traceback

from common import CHECKS, OWN_MOUNTS, Context, Skipped
import processes
import checks_disk  # noqa: F401
import checks_scan  # noqa: F401
import checks_store  # noqa: F401
from folders import remove_tree


def run(name, group, function, arguments):
    """Whether the check passed or had to be skipped."""
    # The store brings every list to the disk, which takes its time on a real one.
    parent = "/dev/shm" if group == "store" and os.access("/dev/shm", os.W_OK) else None
    folder = pathlib.Path(tempfile.mkdtemp(prefix="morlaine-hostile-", dir=parent))
    context = Context(arguments.program.resolve(), arguments, random.Random(arguments.seed), folder)
    start = time.monotonic()
    try:
        result, detail = "ok", function(context)
    except Skipped as reason:
        result, detail = "skipped", reason
    except Exception:
        result, detail = "FAILED", traceback.format_exc()
    finally:
        processes.kill_descendants()
    print(f"{result:8}{name}: {detail} ({time.monotonic() - start:.1f} s)", flush=True)
    if result != "FAILED":
        remove_tree(folder)
    return result != "FAILED"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", type=pathlib.Path, required=True)
    parser.add_argument("--long", action="store_true", help="more of everything: a quarter of an hour")
    parser.add_argument("--sanitized", action="store_true", help="built with a sanitizer, which takes all address space")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("wanted", nargs="*")
    arguments = parser.parse_args()
    unshare = ["unshare", "--mount", "--propagation", "private"]
    if OWN_MOUNTS not in os.environ and subprocess.run([*unshare, "true"], stderr=subprocess.DEVNULL).returncode == 0:
        # What is mounted is unmounted with the last process.
        os.environ[OWN_MOUNTS] = "1"
        os.execvp(unshare[0], [*unshare, sys.executable, "-B", *sys.argv])
    processes.adopt_orphans()
    chosen = [(name, group, function) for name, (group, function) in CHECKS.items()
              if not arguments.wanted or {group, name} & set(arguments.wanted)]
    if not chosen:
        parser.error("no such check")
    return 0 if all([run(*each, arguments) for each in chosen]) else 1


if __name__ == "__main__":
    sys.exit(main())
