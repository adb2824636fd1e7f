"""Writing pictures."""

import struct
import zlib


def _chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def encode(width, height, rgb):
    """A PNG of rows of red, green and blue bytes."""
    stride = width * 3
    rows = b"".join(b"\0" + rgb[start : start + stride] for start in range(0, stride * height, stride))
    return b"".join(
        (
            b"\x89PNG\r\n\x1a\n",
            _chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)),
            _chunk(b"IDAT", zlib.compress(rows, 9)),
            _chunk(b"IEND", b""),
        )
    )
