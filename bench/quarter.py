"""Limits a program to a quarter of one processor, if the user may do so."""

import os
import pathlib
import shlex

# Microseconds. A short period slows the program down evenly; a long one would stop it now and then.
PERIOD, QUOTA = 10_000, 2_500
GROUPS = pathlib.Path("/sys/fs/cgroup")


class Quarter:
    """A context manager; raises OSError if limiting is not possible."""

    def __init__(self, folder):
        """Writes a script into the folder."""
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
    # On another kind of file system, a folder could be made as well, but would limit nothing.
    if not (group.parent / "cgroup.procs").exists():
        raise OSError(f"{group.parent} is no control group")
    group.mkdir()
    try:
        for key, value in settings.items():
            # The file must exist already.
            with open(group / key, "r+") as setting:
                setting.write(value)
    except OSError:
        group.rmdir()
        raise
