"""Changes a folder while it is scanned. Nothing is changed through a link, wherever one may lead."""

import os
import shutil

from hostile_tree import FOLDER


def rage(path, random):
    """Changes what lies below the folder for ever, as fast as it can. Every name begins with an "s"."""
    top = os.open(path, FOLDER)
    while True:
        folder = os.dup(top)
        try:
            for _ in range(random.randrange(4)):
                inner = os.open(f"s{random.randrange(6)}", FOLDER, dir_fd=folder)
                os.close(folder)
                folder = inner
            change(folder, random, f"s{random.randrange(6)}", f"s{random.randrange(6)}")
        except OSError:
            pass  # something else is there by now
        finally:
            os.close(folder)


def change(folder, random, name, other):
    kind = random.randrange(12)
    if kind <= 3:
        os.mkdir(name, dir_fd=folder)
    elif kind <= 5:
        file = os.open(name, os.O_WRONLY | os.O_CREAT | os.O_NOFOLLOW, 0o600, dir_fd=folder)
        os.write(file, b"x" * random.randrange(9_000))
        os.ftruncate(file, random.randrange(9_000))
        os.close(file)
    elif kind <= 7:
        os.rename(name, other, src_dir_fd=folder, dst_dir_fd=folder)
    elif kind <= 9:
        os.rename(name, other + ".old", src_dir_fd=folder, dst_dir_fd=folder)
        os.symlink(random.choice(["/", "/usr", ".."]), name, dir_fd=folder)
    elif kind == 10:
        os.unlink(name, dir_fd=folder)
    else:
        shutil.rmtree(name, dir_fd=folder)
