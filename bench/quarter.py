"""A program that gets a quarter of one processor, where the system lets its user limit that."""

import os
import pathlib
import shlex

# Microseconds. A short period slows down evenly, as an old machine is slow; a long one would stop and go.
PERIOD, QUOTA = 10_000, 2_500
GROUPS = pathlib.Path("/sys/fs/cgroup")


class Quarter:
    """A context manager; raises OSError where nothing can be limited."""

    def __init__(self, folder):
        """A script is put into the folder."""
        self._script = folder / "limited"
        name = f"morlaine-quarter-{os.getpid()}"
        with open("/proc/self/cgroup") as own:
            paths = dict(line.strip().split(":", 2)[1:] for line in own)
        self._choices = [
            (GROUPS / paths.get("", "/").strip("/") / name, {"cpu.max": f"{QUOTA} {PERIOD}"}),
            (
                GROUPS / "cpu" / paths.get("cpu", "/").strip("/") / name,
                {"cpu.cfs_period_us": str(PERIOD), "cpu.cfs_quota_us": str(QUOTA)},
            ),
        ]

    def __enter__(self):
        failures = []
        for group, settings in self._choices:
            try:
                _make_group(group, settings)
                self._group = group
                return self
            except OSError as failure:
                failures.append(failure)
        raise OSError("; ".join(map(str, failures)))

    def __exit__(self, *_):
        self._group.rmdir()

    def wrap(self, program):
        """A command that runs the program within the limit."""
        self._script.write_text(
            f"#!/bin/sh\necho $$ >{shlex.quote(str(self._group / 'cgroup.procs'))}\nexec {shlex.quote(str(program))}\n"
        )
        self._script.chmod(0o755)
        return self._script


def _make_group(group, settings):
    # Where another kind of file system is mounted, a folder could be made too, and would limit nothing.
    if not (group.parent / "cgroup.procs").exists():
        raise OSError(f"{group.parent} is no control group")
    group.mkdir()
    try:
        for key, value in settings.items():
            # A file that is not there already must not be made.
            with open(group / key, "r+") as setting:
                setting.write(value)
    except OSError:
        group.rmdir()
        raise
