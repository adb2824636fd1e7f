"""Makes a folder with very many files, the same each time."""

import os
import random

DEEPEST = 12
LETTERS = "abcdefghijklmnopqrstuvwxyz_-"
EXTENSIONS = ["jpg", "mp4", "so", "h", "txt", "json", "zip", "png", "py", "dat"]
# Half of all folders are made in these, so that the treemap shows about half of all files.
OLDEST = 60
# A folder in fifty holds hundreds of files, the others a handful: 57,000 folders for a million files.
MANY, FEW = 500, 16


def make_big_tree(folder, files):
    """Makes the folder if it does not exist. It gets its name when it is complete."""
    if folder.exists():
        return
    parts = folder.with_name(folder.name + ".unfinished")
    parts.mkdir(parents=True)  # fails where another maker is at work
    dice = random.Random(20)
    branches = [(str(parts), 0)]
    number = 0
    while number < files:
        reach = len(branches) if dice.random() < 0.5 else min(len(branches), OLDEST)
        path, depth = branches[dice.randrange(reach)]
        if depth < DEEPEST:
            deeper = f"{path}/{_name(dice, number)}"
            os.mkdir(deeper)
            branches.append((deeper, depth + 1))
        count = MANY if dice.random() < 1 / 50 else dice.randrange(FEW)
        for _ in range(min(count, files - number)):
            _make_file(f"{path}/{_name(dice, number)}.{dice.choice(EXTENSIONS)}", dice)
            number += 1
    parts.rename(folder)


def _name(dice, number):
    return "".join(dice.choices(LETTERS, k=dice.randrange(4, 20))) + str(number)


def _make_file(path, dice):
    descriptor = os.open(path, os.O_CREAT | os.O_WRONLY, 0o600)
    # Most are small, and a few are large. They take space on the disk: holes would not count.
    size = 1 << 20 if dice.random() < 1 / 1000 else int(2 ** dice.uniform(6, 14))
    os.posix_fallocate(descriptor, 0, size)
    os.close(descriptor)
