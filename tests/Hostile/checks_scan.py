"""Scans of folders that were made to lead a walk astray."""

import multiprocessing
import os
import random
import subprocess

from common import check, command, expect
from hostile_tree import make_hostile_tree, make_nested
from storm import rage
from walk import Walk

READERS = [0, 4]


def scan(context, path, readers, milliseconds=0):
    """Files, folders and bytes of the tree, and the number of scans."""
    output, _ = context.run("scan", path, readers, milliseconds)
    return list(map(int, output[0])), int(output[-1][0])


def counted(path):
    """The same by an independent walk."""
    walk = Walk(os.fsencode(path))
    return [walk.files + walk.links, walk.folders, walk.root.size]


def stamps(path):
    """When each item was changed, and when each file was read."""
    return subprocess.check_output(["find", path, "-printf", "%p %C@ %y", "!", "-type", "d", "-printf", " %A@"])


@check("scan")
def random_trees(context):
    trees, items = context.amount(6, 100), 0
    for number in range(trees):
        folder = context.folder / f"tree {number}"
        folder.mkdir()
        make_hostile_tree(folder, context.random, 600)
        expected, before = counted(folder), stamps(folder)
        for readers in READERS:
            found, _ = scan(context, folder, readers)
            expect(found == expected, f"tree {number}: {found} instead of {expected}, {readers} readers")
        expect(stamps(folder) == before, "something was touched")
        items += expected[0] + expected[1]
    return f"{trees} trees of {items} items"


@check("scan")
def deep_and_wide(context):
    depth, width = 10_000, context.amount(20_000, 1_000_000)
    make_nested(context.folder, depth, b"d" * 255)
    for readers in READERS:
        expect(scan(context, context.folder, readers)[0] == [1, depth + 1, 5], "deep")
    command("rm", "-rf", context.folder / ("d" * 255))
    for number in range(width):
        os.mknod(context.folder / f"{number}")
    for readers in READERS:
        expect(scan(context, context.folder, readers)[0] == [width, 1, 0], "wide")
    return f"{depth} folders deep, {width} files wide"


@check("scan")
def storm(context):
    seconds, scans = context.amount(4, 300), 0
    writers = [multiprocessing.Process(target=rage, args=(context.folder, random.Random(seed)), daemon=True)
               for seed in context.random.sample(range(10**6), 2)]
    for writer in writers:
        writer.start()
    try:
        for readers in READERS:
            scans += scan(context, context.folder, readers, seconds * 1_000)[1]
        expect(all(writer.is_alive() for writer in writers), "a writer gave up")
    finally:
        for writer in writers:
            writer.kill()
            writer.join()
    os.sync()
    expect(all(scan(context, context.folder, readers)[0] == counted(context.folder) for readers in READERS), "after")
    return f"{scans} scans"
