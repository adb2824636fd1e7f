"""A disk that lies, in the kernel's own protocol for disks that a program serves. Each folder at its top is one lie."""

import contextlib
import ctypes
import errno
import itertools
import os
import stat
import struct
import sys
import time
import zlib

LOOKUP, FORGET, STATFS, INIT, OPENDIR, READDIR, INTERRUPT, FORGET_MANY = 1, 2, 17, 26, 27, 28, 36, 42
FILE, FOLDER = stat.S_IFREG, stat.S_IFDIR
SIZES = {"-1": (2**64 - 1, 1), "largest": (2**63 - 1, 2**54 - 1), "sparse": (2**63 - 1, 2), "believed": (2**53, 2**44)}
BLOCKS = 2**50  # of the disk
SLOWNESS = 1  # seconds for an answer
FAULT = ("", 0)  # in a listing: it fails here


def files(*names):
    return [(name, FILE) for name in names]


NAMES = [f"file {number}" for number in range(100)]
LIES = {  # what the disk lists, and the files, folders and bytes that a scan finds
    "fails in the middle": (files(*NAMES) + [FAULT] + files("late"), [0, 1, 0]),
    "names twice": (files(*NAMES, *NAMES), [200, 1, 200 * 512]),
    "name with a slash": (files("a/b", "file"), [0, 1, 0]),
    "name of nothing": (files("", "file"), [0, 1, 0]),
    "dots as files": (files(".", "..", "..."), [1, 1, 512]),
    "overlong names": (files("x" * 1_000, "y" * 1_000), [2, 1, 1024]),
    "other types": ([("folder", FILE), ("file", FOLDER)], [1, 2, 512]),
    "impossible sizes": (files(*SIZES), [4, 1, 2**53 + 1024]),
    "sizes on a disk of unknown size": (files("largest 1", "largest 2"), [2, 1, 0]),
    "slow": (files("1", "2"), [2, 1, 1024]),
    "endless": (((f"{number} ".ljust(1_000, "x"), FILE) for number in itertools.count()), None),
    "bottomless": ([("folder", FOLDER)], None),
}
FIRST_ITEM = 2 + len(LIES)  # 1 is the top, then come the lies


class LyingDisk:
    def __init__(self, mount_point):
        self.device = os.open("/dev/fuse", os.O_RDWR)
        options = f"fd={self.device},rootmode=40000,user_id={os.getuid()},group_id={os.getgid()}".encode()
        if ctypes.CDLL(None).mount(b"lying", os.fsencode(mount_point), b"fuse", 0, options) == 0:
            print("mounted", flush=True)
        self.items = {}  # the lie of each that was looked up
        self.listings = []  # by handle: the entries, the one that did not fit, the number of those listed

    def serve(self):
        while request := os.read(self.device, 1 << 18):
            _, operation, number, node = struct.unpack("<IIQQ", request[:24])
            if operation in [FORGET, FORGET_MANY, INTERRUPT]:
                continue
            try:
                error, reply = 0, self.answer(operation, node, request[40:])
            except OSError as failure:
                error, reply = -failure.errno, b""
            with contextlib.suppress(FileNotFoundError):  # if nobody waits for it any more
                os.write(self.device, struct.pack("<IiQ", 16 + len(reply), error, number) + reply)

    def answer(self, operation, node, body):
        lie = self.items.get(node) or ["", "", *LIES][node]
        if operation == INIT:
            return struct.pack("<4I2H2I2H8I", 7, 31, 0, 0, 0, 0, 4096, 1, 0, 0, *[0] * 8)
        if operation == LOOKUP:
            return self.look_up(lie, node, os.fsdecode(body.rstrip(b"\0")))
        if operation == OPENDIR:
            is_empty = not lie or node >= FIRST_ITEM and lie != "bottomless"
            self.listings.append([iter([] if is_empty else LIES[lie][0]), None, 0])
            return struct.pack("<QQ", len(self.listings) - 1, 0)
        if operation == READDIR:
            return self.list(self.listings[struct.unpack("<Q", body[:8])[0]], struct.unpack("<I", body[16:20])[0])
        if operation == STATFS:
            return struct.pack("<5Q10I", 0 if "unknown" in lie else BLOCKS, 0, 0, 0, 0, 4096, 255, 4096, 0, *[0] * 6)
        raise OSError(errno.ENOSYS, "")

    def look_up(self, lie, parent, name):
        time.sleep(SLOWNESS if lie == "slow" else 0)
        node = FIRST_ITEM + zlib.crc32(os.fsencode(name), parent) if lie else 2 + list(LIES).index(name)
        self.items[node] = lie or name
        size, blocks = SIZES.get(name.split(" ")[0], (512, 1))
        mode = FILE | 0o644 if lie and name != "folder" else FOLDER | 0o755
        return struct.pack("<4Q2I6Q10I", node, 0, 0, 2**32, 0, 0, node, size, blocks, *[0] * 6, mode, 1, *[0] * 3,
                           4096, 0)

    def list(self, listing, size):
        """As many entries as fit."""
        entries, entry, number = listing
        reply = b""
        while entry := entry or next(entries, None):
            name = entry[0].encode()
            piece = struct.pack("<QQII", 7, number + 1, len(name), entry[1] >> 12) + name
            piece += bytes(-len(piece) % 8)
            if entry == FAULT and not reply:
                raise OSError(errno.EIO, "")
            if entry == FAULT or len(reply) + len(piece) > size:
                break
            reply, number, entry = reply + piece, number + 1, None
        listing[1:] = entry, number
        return reply


if __name__ == "__main__":
    LyingDisk(sys.argv[1]).serve()
