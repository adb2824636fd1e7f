"""Removing folders."""

import os
import shutil
import stat


def remove_tree(folder):
    """Removes a folder, even if some folders in it cannot be read or written."""
    try:
        shutil.rmtree(folder)
    except PermissionError:
        for root, folders, _ in os.walk(os.fsencode(folder)):
            for name in folders:
                path = os.path.join(root, name)
                if not stat.S_ISLNK(os.lstat(path).st_mode):
                    os.chmod(path, 0o700)
        shutil.rmtree(folder)
