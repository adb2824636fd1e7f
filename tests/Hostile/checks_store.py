"""The store of scans on a disk that fails, and beside what others have put there."""

import errno
import os
import shutil
import time

from common import APP, check, command, expect, mount, small_folder

CALLS = ["open", "read", "access", "mkostemps", "flock", "write", "fsync", "renameat2", "unlink"]
ERRORS = [errno.ENOSPC, errno.EIO, errno.EDQUOT, errno.EINTR]
SHORT_WRITE = 0
ALWAYS = 1_000_000
TEMPORARY = ".morlaine-history.json-Ab3xY9.tmp"


@check("store")
def every_call_of_the_store_fails(context):
    tree = small_folder(context)
    kept, oldest = reversed(context.save(tree, 2))
    template = context.folder / "template"
    context.data.rename(template)
    errors = [errno.EIO, errno.EINTR] if context.is_sanitized else ERRORS  # a start takes its time there
    count = 0
    for operation in [["save", tree], ["delete", oldest], ["load"]]:
        for call in CALLS:
            for error in errors + ([SHORT_WRITE] if call == "write" else []):
                for times in [1] if error == errno.EINTR else [1, ALWAYS]:
                    for first in range(1, 30):
                        shutil.copytree(template, context.data)
                        fault = f"{call} {error} {first} {first + times - 1}"
                        environment = context.with_faults(MORLAINE_FAULT=fault)
                        output, has_failed = context.run(*operation, environment=environment)
                        if has_failed:
                            judge(context, operation, fault, output, kept, oldest)
                        shutil.rmtree(context.data)
                        if not has_failed:
                            break
                        count += 1
    return f"{count} faults"


def judge(context, operation, fault, output, kept, oldest):
    """Whether the store is as it should be after an operation during which there was a fault."""
    call, error, *_ = fault.split()
    listed = set(context.listed())
    trees = context.load()
    what = (operation[0], fault, listed, trees)
    expect(listed == set(trees), "the next start found another list", *what)
    new = {output[0][0]} if operation[0] == "save" else set()
    complete = {kept, oldest} | new if operation[0] != "delete" else {kept}
    if int(error) in [errno.EINTR, SHORT_WRITE]:
        expect(listed == complete, "an interruption counted as a failure", *what)
        expect(all(size == 3 for size in trees.values()), "a tree is missing", *what)
    elif operation[0] == "load" or call not in ["open", "read"]:
        # A list that the disk cannot read counts as empty; then, and only then, entries may be gone.
        expect(kept in listed and listed <= {kept, oldest} | new, "an entry was lost or invented", *what)
        expect(trees[kept] == 3 and all(size in [3, -1] for size in trees.values()), "a tree was lost", *what)
    left = context.files() - {"history.json"} - {f"Scans/{name}.json" for name in {kept, oldest} | new}
    expect(not left, "files were left:", left, *what)


@check("store")
def killed_at_random(context):
    tree = small_folder(context)
    rounds, saved, pairs = context.amount(20, 200), 0, 0
    certain = set()
    for number in range(rounds):
        is_pair = number % 4 == 3
        started = [context.start("save", tree, 10_000) for _ in range(1 + is_pair)]
        time.sleep(context.random.uniform(0.005, 0.08))
        for process in started:
            process.kill()
        said = {line for process in started for line in process.communicate()[0].decode().split() if len(line) == 36}
        saved, pairs = saved + len(said), pairs + is_pair
        listed = set(context.listed()) if (context.data / APP / "history.json").exists() else set()
        # Two programs that save at once may overwrite each other's entry; nothing else may get lost.
        certain = listed if is_pair else certain | said
        expect(certain <= listed, "lost:", certain - listed)
        expect(all(size in [3, -1] for size in context.load().values()), "a broken tree")
        expect(not [name for name in context.files() if ".tmp" in name], "files were left")
        if number % 10 == 9:
            shutil.rmtree(context.data)
            certain = set()
    return f"{rounds} kills, {pairs} of two programs at once, {saved} scans saved"


@check("store")
def disk_full_and_freed(context):
    tree = small_folder(context, 300)
    context.data.mkdir()
    mount("-t", "tmpfs", "-o", "size=400k", "disk", context.data)
    saved = context.save(tree, 30)
    whole = [entry for entry, size in context.load().items() if size == 300]
    expect(0 < len(whole) < 30 and set(context.listed()) <= set(saved), "filled up")
    for entry in context.listed():
        context.run("delete", entry)
    filler = context.data / "filler"
    [kept] = context.save(tree)
    try:
        with open(filler, "wb", buffering=0) as file:
            while True:
                file.write(b"x" * 4096)
    except OSError:
        pass
    context.save(tree)
    on_full_disk = context.load()
    expect(on_full_disk.pop(kept) == 300 and set(on_full_disk.values()) <= {-1}, "changed on a full disk")
    filler.unlink()
    [late] = context.save(tree)
    whole_now = {entry: size for entry, size in context.load().items() if entry not in on_full_disk}
    expect(whole_now == {kept: 300, late: 300}, "not saved once there was room")
    mount("-o", "remount,ro", context.data)
    context.save(tree)
    context.run("delete", kept)
    expect(context.load() == on_full_disk | whole_now, "changed on a read-only disk")
    command("umount", context.data)
    return f"full after {len(whole)} trees, then freed, then read-only"


@check("store")
def planted_in_the_store(context):
    tree = small_folder(context)
    precious = context.folder / "precious"
    app = context.data / APP

    def folder(path):
        path.mkdir()
        (path / "foreign").write_bytes(b"precious")

    makers = {
        "fifo": os.mkfifo,
        "link": lambda path: path.symlink_to(precious),
        "loop": lambda path: path.symlink_to(path),
        "folder": folder,
        "endless device": lambda path: path.symlink_to("/dev/zero"),
        "huge file": lambda path: path.touch() or os.truncate(path, 8 << 30),
        "file of the future": lambda path: path.write_bytes(b"[]") and os.utime(path, (2**40, 2**40)),
    }
    count = 0
    for kind, make in makers.items():
        for name in ["history.json", TEMPORARY, "Scans", f"Scans/{TEMPORARY}", "Scans/ID.json"]:
            shutil.rmtree(context.data, ignore_errors=True)
            precious.write_bytes(b"precious")
            [entry] = context.save(tree)
            path = app / name.replace("ID", entry)
            shutil.rmtree(path) if path.is_dir() else path.unlink(missing_ok=True)
            make(path)
            before = context.load()
            expect(set(before.values()) <= {3, -1} and len(before) == (name != "history.json"), kind, name, before)
            new = context.save(tree)
            expect(precious.read_bytes() == b"precious", kind, name)
            expect(kind != "folder" or (path / "foreign").read_bytes() == b"precious", kind, name)
            is_kept = kind == "folder" and name == "history.json"
            expect(set(context.load()) == (set() if is_kept else set(before) | set(new)), kind, name)
            count += 1
    return f"{count} items"
