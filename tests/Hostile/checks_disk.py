"""Scans of disks that lie; see lying_disk.py. One check a lie."""

import os
import subprocess
import sys
import tempfile
import time

import lying_disk
from common import OWN_MOUNTS, Skipped, check, command, expect, mount

CANCELLED_AFTER, MOST_AFTER_THAT = 500, 60_000  # milliseconds


def on_lying_disk(lie, judge):
    """A check that calls `judge` with the folder that lies, once for each way of scanning."""

    def run(context):
        if OWN_MOUNTS not in os.environ or not os.access("/dev/fuse", os.W_OK):
            raise Skipped("no program can serve a disk here")
        server = subprocess.Popen([sys.executable, "-B", lying_disk.__file__, context.folder], stdout=subprocess.PIPE)
        try:
            if server.stdout.readline() != b"mounted\n":
                raise Skipped("the system does not mount such a disk")
            return "; ".join(judge(context, context.folder / lie, readers) for readers in [0, 4])
        finally:
            server.kill()
            server.wait()
            subprocess.run(["umount", "-l", context.folder], check=False)

    run.__name__ = "disk: " + lie
    check("disk")(run)


def finds(context, folder, readers):
    found = list(map(int, context.run("scan", folder, readers)[0][0]))
    expect(found == lying_disk.LIES[folder.name][1], found)
    return "found {}, {}, {}".format(*found)


def is_cancelled(context, folder, readers):
    start = time.monotonic()
    context.run("cancel", folder, readers, CANCELLED_AFTER)
    took = 1e3 * (time.monotonic() - start) - CANCELLED_AFTER
    expect(took < MOST_AFTER_THAT, "cancelling took", took, "ms")
    return f"cancelled within {took:.0f} ms"


def is_endless(context, folder, readers):
    with tempfile.NamedTemporaryFile() as full:
        full.write(b"MemTotal: 100 kB\nMemAvailable: 1 kB\n")
        full.flush()
        mount("--bind", full.name, "/proc/meminfo")
        said, _ = context.run("scan", folder, readers, may_fail=True)
        command("umount", "/proc/meminfo")
    expect(said == [["out", "of", "memory"]], said)
    return "ended by a full machine, " + is_cancelled(context, folder, readers)


def is_slow(context, folder, readers):
    return finds(context, folder, readers) + ", " + is_cancelled(context, folder, readers)


JUDGES = {"slow": is_slow, "endless": is_endless, "bottomless": is_endless}
for each in lying_disk.LIES:
    on_lying_disk(each, JUDGES.get(each, finds))
