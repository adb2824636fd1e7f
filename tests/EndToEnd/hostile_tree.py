"""Makes a folder with everything that is difficult for a walk."""

import os
import socket

from walk import CATEGORY_OF

DEEPEST = 300
LONG_NAME = b"n" * 255

FILES = {
    b"letter.txt": 5_000,
    b"photo.JPG": 123_456,
    b"archive.tar.gz": 40_000,
    b"no extension": 17,
    b".hidden.plist": 900,
    b"empty": 0,
    b"Makefile.": 3,
    b"sketch.pages-tef": 222,
    b"same size a": 4_321,
    b"same size b": 4_321,
    b"same size c": 4_321,
    b"not text \xff\xfe.png": 1_234,
    b"cut off \xe2\x82": 77,
    b"\xc3\xbcber \xe6\x97\xa5\xe6\x9c\xac \xf0\x9f\x98\x80.MP3": 8_192,
    b"two\nlines\t\x01\x7f.log": 512,
    b'quotes " and \\ and % and ? and #.json': 64,
    LONG_NAME[:251] + b".mkv": 70_000,
    b"Editor.app/Contents/Info.plist": 700,
    b"Editor.app/Contents/MacOS/editor": 90_000,
    b"Editor.app/Contents/.hidden/secret": 60_000,
    b"Editor.app/.DS_Store": 6_148,
    b"Editor.app/Contents/PlugIns/Inner.plugin/Contents/Info.plist": 333,
    b"Only a name.app/readme.txt": 100,
    b"Upper.APPEX/Contents/Info.plist": 10,
    b"folder.d/inside/deeper.cpp": 2_048,
    **{b"every kind/x." + extension.encode(): 1 for extension in CATEGORY_OF},
}
FOLDERS = [b"empty folder", b"empty.bundle", LONG_NAME]


def make_hostile_tree(root):
    root = os.fsencode(root)
    for name, size in FILES.items():
        path = os.path.join(root, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        _write(path, size)
    for name in FOLDERS:
        os.mkdir(os.path.join(root, name))
    _make_links(root)
    _make_special_files(root)
    _make_deep_folders(root)
    unreadable = os.path.join(root, b"unreadable")
    os.mkdir(unreadable)
    _write(os.path.join(unreadable, b"unseen.iso"), 10_000)
    os.chmod(unreadable, 0)


def _write(path, size):
    with open(path, "wb") as file:
        file.write(b"x" * size)
        file.flush()
        # The number of blocks is final only after the file is flushed.
        os.fsync(file.fileno())


def _make_links(root):
    for name, target in {
        b"to a file": b"letter.txt",
        b"to a folder": b"folder.d",
        b"to nothing": b"missing",
        b"loop": b".",
        b"to the top": b"/",
        b"round and round": b"round and round",
        b"folder.d/back": b"..",
    }.items():
        os.symlink(target, os.path.join(root, name))
    os.link(os.path.join(root, b"photo.JPG"), os.path.join(root, b"folder.d", b"the same photo.jpg"))


def _make_special_files(root):
    os.mkfifo(os.path.join(root, b"fifo.mp4"))
    folder = os.open(root, os.O_RDONLY)
    try:
        with socket.socket(socket.AF_UNIX) as listener:
            # The path would be too long for a socket address.
            listener.bind(f"/proc/self/fd/{folder}/socket.zip")
    finally:
        os.close(folder)
    with open(os.path.join(root, b"sparse.dmg"), "wb") as sparse:
        sparse.write(b"start")
        sparse.truncate(5_000_000_000)
        sparse.flush()
        os.fsync(sparse.fileno())


def _make_deep_folders(root):
    """Nested folders, up to a path that is too long for a system call."""
    name = b"deep" * 5
    folder = os.open(root, os.O_RDONLY)
    for _ in range(DEEPEST):
        os.mkdir(name, dir_fd=folder)
        inner = os.open(name, os.O_RDONLY, dir_fd=folder)
        os.close(folder)
        folder = inner
    file = os.open(b"bottom.c", os.O_WRONLY | os.O_CREAT, 0o600, dir_fd=folder)
    os.write(file, b"int bottom;\n")
    os.fsync(file)
    os.close(file)
    os.close(folder)
