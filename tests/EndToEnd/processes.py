"""Starting processes so that none outlives the test."""

import ctypes
import os
import signal
import subprocess

PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36

_libc = ctypes.CDLL(None, use_errno=True)


def adopt_orphans():
    """Makes orphaned descendants children of this process."""
    _libc.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def start(command, **options):
    """Popen for a process that is killed when this one ends for any reason."""
    options.setdefault("stdin", subprocess.DEVNULL)
    return subprocess.Popen(
        command, preexec_fn=lambda: _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0), **options
    )


def preloading(library):
    """The environment that preloads the library."""
    # LD_PRELOAD is split at spaces; a list of folders is split at colons only. A sanitizer wants to be the first library.
    options = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
    return {"LD_LIBRARY_PATH": str(library.parent), "LD_PRELOAD": library.name, "ASAN_OPTIONS": options}


def stop(process, patience=60):
    """Ends a process, first politely."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(patience)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


def _children_by_parent():
    children = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat", "rb") as stat:
                    # The name in parentheses may contain parentheses.
                    parent = int(stat.read().rpartition(b")")[2].split()[1])
            except OSError:
                continue
            children.setdefault(parent, []).append(int(entry))
    return children


def descendants(ancestor=None):
    children = _children_by_parent()
    found = []
    pending = [ancestor or os.getpid()]
    while pending:
        below = children.get(pending.pop(), [])
        found += below
        pending += below
    return found


def kill_descendants():
    """Kills and reaps all descendants of this process, and no others."""
    while True:
        for process in descendants():
            try:
                os.kill(process, signal.SIGKILL)
            except ProcessLookupError:
                pass
        try:
            os.waitpid(-1, 0)
        except ChildProcessError:
            return
