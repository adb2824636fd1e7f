"""Makes folders with all that a walk may stumble over, the same for the same random numbers. Everything is made
relative to open folders, since paths get longer than the kernel takes, and others may put links into the way."""

import os
import socket

FOLDER = os.O_RDONLY | os.O_DIRECTORY | os.O_NOFOLLOW
PARTS = [b"\n", b"\x1b[31m", b"\t\x01\x7f", "\u202e".encode(), "\u200b".encode(), b"<b>&amp;", b"\xff\xfe", b"\xe2\x82", b"%41",
         b"'\"\\", b" ", b"? #", "e\u0301".encode(), "\U0001f600 日本".encode(), b".", b"~", b"-rf", "İı".encode()]
ENDS = [b"", b".txt", b".JPG", b".tar.gz", b".app", b".APPEX", b".bundle", b".", b".mp4 ", b".PDF\n", b".dmg-part", b".\xff"]
SIZES = [0, 1, 17, 4_095, 4_097, 4_321, 123_456]


def hostile_name(random):
    if random.random() < 0.05:
        return b"n" * 251 + b".mkv"
    name = b"".join(random.choices(PARTS, k=random.randint(1, 4))) + b"%d" % random.randrange(10**6)
    return name + random.choice(ENDS)


def make_hostile_tree(path, random, count):
    """Makes about so many items in the folder, some of them very deep."""
    top = os.open(path, FOLDER)
    grow(top, random, count)
    os.close(top)
    make_nested(path, 300, b"deep" * 5)


def grow(folder, random, count):
    names = [b"missing"]
    while count > 0:
        name, kind = hostile_name(random), random.randrange(14)
        count -= 1
        try:
            if kind == 0:
                os.symlink(random.choice([b"/", b".", b"..", names[-1], name]), name, dir_fd=folder)
            elif kind == 1:
                os.mkfifo(name, dir_fd=folder)
            elif kind == 2 and len(names) > 1:
                os.link(names[-1], name, src_dir_fd=folder, dst_dir_fd=folder)
            elif kind == 3 and len(name) < 60:
                with socket.socket(socket.AF_UNIX) as listener:
                    listener.bind(b"/proc/self/fd/%d/%s" % (folder, name))
            elif kind <= 6:
                inner = make_folder(folder, name)
                share = random.randint(0, count)
                grow(inner, random, share)
                count -= share
                if kind == 5:
                    contents = make_folder(inner, b"Contents")
                    make_file(contents, b"Info.plist", 700)
                    os.close(contents)
                os.fchmod(inner, random.choice([0, 0o700, 0o700, 0o700]))
                os.close(inner)
            else:
                make_file(folder, name, random.choice(SIZES), hole=10**12 if random.random() < 0.1 else 0)
                names.append(name)
        except FileExistsError:
            pass


def make_folder(folder, name):
    """Returns it open."""
    os.mkdir(name, dir_fd=folder)
    return os.open(name, FOLDER, dir_fd=folder)


def make_file(folder, name, size, hole=0):
    """So many bytes, and behind them a hole."""
    file = os.open(name, os.O_WRONLY | os.O_CREAT | os.O_EXCL | os.O_NOFOLLOW, 0o600, dir_fd=folder)
    os.write(file, b"x" * size)
    os.ftruncate(file, size + hole)
    # The blocks that a file takes are settled only once it is on the disk.
    os.fsync(file)
    os.close(file)


def make_nested(path, depth, name):
    """Folders in folders, with a file of five bytes in the innermost."""
    folder = os.open(path, FOLDER)
    for _ in range(depth):
        inner = make_folder(folder, name)
        os.close(folder)
        folder = inner
    make_file(folder, b"bottom.c", 5)
    os.close(folder)
