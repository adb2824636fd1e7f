"""What all hostile checks share: the driver, its faults, and the registry of checks."""

import json
import os
import pathlib
import resource
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "EndToEnd"))

import processes  # noqa: E402

CHECKS = {}  # by name: the group and the function
APP = "com.morlaine.Morlaine"
OWN_MOUNTS = "MORLAINE_OWN_MOUNTS"  # set if mounts are seen by these checks only
PATIENCE = 400  # seconds for one run of the driver


class Skipped(Exception):
    """The machine does not let this be checked; the message says what it lacks."""


def check(group):
    """Registers a check: a function of a Context that returns what it has done, for the line of output."""

    def register(function):
        CHECKS[function.__name__.replace("_", " ")] = (group, function)
        return function

    return register


def expect(condition, *what):
    if not condition:
        raise AssertionError(" ".join(map(str, what)))


class Context:
    """`is_long` asks for the long form; `random` is seeded; `folder` is empty and goes when the check ends."""

    def __init__(self, program, arguments, random, folder):
        self.is_long, self.is_sanitized, self.random, self.folder = arguments.long, arguments.sanitized, random, folder
        self.build = program.parent
        self.data = folder / "data"

    def amount(self, quick, long):
        return long if self.is_long else quick

    def environment(self, **more):
        return {**os.environ, "XDG_DATA_HOME": str(self.data), "LC_ALL": "C.UTF-8", **more}

    def with_faults(self, **more):
        return self.environment(**processes.preloading(self.build / "libmorlaine_faults.so"), **more)

    def start(self, *arguments, environment=None):
        command = [str(self.build / "morlaine_hostile_driver"), *map(str, arguments)]
        return subprocess.Popen(command, env=environment or self.environment(), stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, preexec_fn=lambda: self._limit(arguments[0]))

    def _limit(self, command):
        """A gigabyte, and few descriptors for a scan, which gets along with a handful."""
        descriptors = 24 if command == "scan" else 1_000
        resource.setrlimit(resource.RLIMIT_NOFILE, (descriptors, descriptors))
        if not self.is_sanitized:
            resource.setrlimit(resource.RLIMIT_AS, (1 << 30, 1 << 30))

    def run(self, *arguments, environment=None, may_fail=False):
        """What the driver printed, a list of words a line, and whether a fault took place. A crash is an error."""
        process = self.start(*arguments, environment=environment)
        try:
            output, errors = process.communicate(timeout=PATIENCE)
        finally:
            process.kill()
        expect(process.returncode == 0 or may_fail and process.returncode > 0, arguments, "ended with",
               process.returncode, output[-500:], errors[-500:])
        return [line.split() for line in output.decode().splitlines()], b"failed" in errors

    def save(self, tree, count=1, **options):
        return [words[0] for words in self.run("save", tree, count, **options)[0]]

    def load(self, **options):
        """The size of the tree, or -1, by the id of the entry, as the next start of the program finds them."""
        return {words[0]: int(words[1]) for words in self.run("load", **options)[0] if len(words) == 2}

    def listed(self):
        """The ids in the list as it is on the disk, whole or an error."""
        return [entry["id"] for entry in json.loads((self.data / APP / "history.json").read_bytes())]

    def files(self):
        """What lies in the store."""
        root = self.data / APP
        return {str(path.relative_to(root)) for path in root.rglob("*") if not path.is_dir()}


def command(*words):
    """Runs a command of the system that a check cannot do without."""
    try:
        subprocess.run(list(map(str, words)), check=True, capture_output=True)
    except (OSError, subprocess.CalledProcessError) as failure:
        raise Skipped(f"no {words[0]} here") from failure


def mount(*words):
    """Mounts something that others do not see."""
    if OWN_MOUNTS not in os.environ:
        raise Skipped("no mounts of its own here")
    command("mount", *words)


def small_folder(context, files=3):
    folder = context.folder / "tree"
    folder.mkdir()
    for number in range(files):
        (folder / f"file {number}").write_bytes(b"x")
    return folder
