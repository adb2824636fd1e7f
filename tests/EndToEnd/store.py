"""The program's files, read without the program's code."""

import json
import re
import sys
import time
import urllib.parse

from waiting import wait_for

# More than any tree of the tests needs, and within the interpreter's own stack.
sys.setrecursionlimit(20_000)

HISTORY_KEYS = ["id", "path", "date", "totalSize", "filesCount", "directoriesCount"]
NODE_KEYS = ["id", "url", "name", "size", "isDirectory", "fileCategory"]
UPPER_CASE_UUID = re.compile("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}")
SECONDS_FROM_1970_TO_2001 = 978_307_200


class Store:
    """The files below a data folder."""

    def __init__(self, data_home):
        self.folder = data_home / "com.morlaine.Morlaine"
        self.index = self.folder / "history.json"
        self.scans = self.folder / "Scans"

    def history(self):
        """The entries in the order of the file; empty if there is no file."""
        return json.loads(self.index.read_bytes()) if self.index.exists() else []

    def wait_for_scans(self, program, count):
        """Waits until the history has `count` entries with their trees, and returns the entries."""
        program.wait_for(lambda: len(self.history()) == count, f"{count} entries in the history")
        entries = self.history()
        for entry in entries:
            wait_for(self._tree_path(entry).exists, "the tree of a scan")
        return entries

    def tree(self, entry):
        # Members as pairs, so that their order and repeated ones are visible.
        return json.loads(self._tree_path(entry).read_bytes(), object_pairs_hook=_Members)

    def _tree_path(self, entry):
        return self.scans / f"{entry['id']}.json"


class _Members(list):
    """The members of an object as pairs, in their order."""


def check_entry(test, entry, walk, started):
    """Checks the entry of a finished scan that began after the time `started`."""
    test.assertEqual(list(entry), HISTORY_KEYS)
    test.assertRegex(entry["id"], UPPER_CASE_UUID)
    test.assertEqual(entry["path"], walk.path.decode("utf-8", "replace"))
    test.assertEqual(entry["totalSize"], walk.root.size)
    # The last reported progress; a short scan reports none.
    test.assertIn(entry["filesCount"], range(walk.files + 1))
    test.assertIn(entry["directoriesCount"], range(walk.folders + 1))
    date = entry["date"] + SECONDS_FROM_1970_TO_2001
    test.assertTrue(started - 1 <= date <= time.time() + 1, date)


def check_tree(test, tree, walk):
    """Compares every node of a cached tree with an independent walk of the folder."""
    ids = []
    pending = [(tree, walk.root, walk.path)]
    while pending:
        members, item, path = pending.pop()
        node = dict(members)
        ids.append(node["id"])
        _check_node(test, members, item, path)
        if item.children is not None:
            test.assertEqual([_last_component(dict(child)["url"]) for child in node["children"]],
                             [child.name for child in item.children], path)
            pending += [(child, expected, path + b"/" + expected.name)
                        for child, expected in zip(node["children"], item.children)]
    test.assertEqual(len(set(ids)), len(ids), "ids that are not unique")


def _check_node(test, members, item, path):
    node = dict(members)
    test.assertEqual([key for key, _ in members], NODE_KEYS + ["children"] * (item.children is not None), path)
    test.assertRegex(node["id"], UPPER_CASE_UUID)
    test.assertTrue(node["url"].startswith("file:///"), node["url"])
    test.assertTrue(node["url"].isascii(), node["url"])
    test.assertEqual(urllib.parse.unquote_to_bytes(node["url"][len("file://"):]), path)
    test.assertEqual(_shown(node["name"]), _shown(item.name.decode("utf-8", "replace")))
    test.assertEqual(
        (node["size"], node["isDirectory"], node["fileCategory"]), (item.size, item.is_directory, item.category), path
    )


def _shown(name):
    """The name with each run of replacement characters reduced to one."""
    return re.sub("\N{REPLACEMENT CHARACTER}+", "\N{REPLACEMENT CHARACTER}", name)


def _last_component(url):
    return urllib.parse.unquote_to_bytes(url.rpartition("/")[2])
