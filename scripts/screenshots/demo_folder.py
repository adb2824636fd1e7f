"""Makes the folder for the screenshots: a home folder, a thousand times smaller."""

import os
import random

MB = 1_000_000

# Folder, how many files, names, and sizes in bytes from and to.
CONTENTS = [
    ("Pictures/2021 Lofoten", 140, "DSC_{:04}.jpg", 3 * MB, 9 * MB),
    ("Pictures/2022 Lisbon", 110, "IMG_{:04}.heic", 2 * MB, 5 * MB),
    ("Pictures/2023 Dolomites", 160, "DSC_{:04}.raw", 22 * MB, 31 * MB),
    ("Pictures/Scans", 40, "negative {:03}.tiff", 40 * MB, 90 * MB),
    ("Videos/Family", 30, "clip {:02}.mov", 120 * MB, 900 * MB),
    ("Videos/Films", 14, "Film {:02}.mkv", 900 * MB, 4_200 * MB),
    ("Videos/Screen recordings", 12, "recording {:02}.webm", 20 * MB, 300 * MB),
    ("Music/Bach/Goldberg Variations", 32, "{:02} Variation.flac", 12 * MB, 45 * MB),
    ("Music/Field recordings", 24, "take {:02}.wav", 60 * MB, 240 * MB),
    ("Music/Podcasts", 80, "episode {:03}.mp3", 25 * MB, 70 * MB),
    ("Downloads", 18, "installer-{:02}.zip", 40 * MB, 700 * MB),
    ("Downloads/Distributions", 4, "linux-{:02}-amd64.tar.xz", 700 * MB, 2_900 * MB),
    ("Documents/Tax", 60, "receipt {:03}.pdf", MB // 8, 3 * MB),
    ("Documents/Thesis/figures", 70, "figure-{:02}.svg", MB // 50, 2 * MB),
    ("Documents/Thesis", 25, "chapter {:02}.docx", MB // 5, 6 * MB),
    ("Documents/Books", 55, "book {:02}.epub", MB // 2, 40 * MB),
    ("Documents/Statistics", 45, "measurements {:02}.csv", MB, 160 * MB),
    ("Projects/weather/src", 120, "module_{:03}.cpp", 2_000, 90_000),
    ("Projects/weather/build", 90, "object_{:03}.o", MB // 10, 9 * MB),
    ("Projects/weather/data", 20, "grid_{:02}.sqlite", 30 * MB, 420 * MB),
    ("Projects/garden/node_modules/charts", 210, "index_{:03}.js", 1_000, 400_000),
    ("Projects/garden/assets", 45, "texture_{:02}.png", MB, 14 * MB),
    ("Projects/notes", 140, "note {:03}.md", 500, 40_000),
    ("Virtual machines", 3, "debian-{:02}.img", 1_800 * MB, 5_200 * MB),
    ("Backups/phone", 25, "backup-{:02}.tar.gz", 90 * MB, 800 * MB),
    (".cache/browser", 260, "entry-{:04}", 10_000, 6 * MB),
    (".cache/thumbnails", 120, "thumb-{:04}.png", 8_000, 60_000),
    (".local/share/mail", 60, "archive-{:02}.db", 4 * MB, 130 * MB),
    (".local/share/logs", 30, "session-{:02}.log", 10_000, 12 * MB),
]


def make_demo_folder(folder):
    """The same files each time, each a thousandth of its size."""
    dice = random.Random(20)
    for path, count, names, smallest, largest in CONTENTS:
        (folder / path).mkdir(parents=True, exist_ok=True)
        for number in range(1, count + 1):
            # Most files are small, and a few are large.
            size = int(smallest + (largest - smallest) * dice.random() ** 2)
            # Random, since some file systems store zeros in no space.
            (folder / path / names.format(number)).write_bytes(dice.randbytes(size // 1_000))
    os.sync()
