"""The expected result of a scan, computed without the program's code."""

import os
import stat
from dataclasses import dataclass

BUNDLES = {"app", "appex", "bundle", "kext", "plugin", "prefpane", "qlgenerator", "saver", "xpc"}

CATEGORIES = {
    "image": "jpg jpeg png gif tiff bmp heic webp raw svg psd",
    "video": "mp4 mkv mov avi wmv flv webm m4v",
    "audio": "mp3 wav m4a flac aac ogg wma",
    "application": "app dmg pkg exe ipa",
    "archive": "zip tar gz rar 7z bz2 xz dmg-part",
    "sourceCode": "swift m h c cpp py js ts html css go rs java kt sh json yaml xml php rb pl sql",
    "document": "pdf docx doc xlsx xls pptx ppt txt rtf pages numbers key csv md epub pages-tef",
    "system": "sys dll dylib so plist db sqlite ini log lock bak",
}
CATEGORY_OF = {extension: category for category, list_ in CATEGORIES.items() for extension in list_.split()}

FOLDER_FLAGS = os.O_RDONLY | os.O_DIRECTORY | os.O_NOFOLLOW


@dataclass
class Item:
    name: bytes
    size: int = 0
    is_directory: bool = False
    category: str = "other"
    children: list = None


@dataclass
class Walk:
    """The tree of a folder, with counts."""

    path: bytes
    root: Item = None
    files: int = 0
    folders: int = 0
    links: int = 0

    def __post_init__(self):
        self.root = self._folder(self.path, None)
        self.root.name = os.path.basename(self.path)

    def _folder(self, name, parent):
        self.folders += 1
        item = Item(name, is_directory=True, children=[])
        try:
            descriptor = os.open(name, FOLDER_FLAGS, dir_fd=parent)
        except PermissionError:
            return item
        try:
            # As bytes: os.listdir returns text for a descriptor.
            for entry in map(os.fsencode, os.listdir(descriptor)):
                item.children.append(self._entry(entry, descriptor))
        finally:
            os.close(descriptor)
        item.size = sum(child.size for child in item.children)
        item.children.sort(key=lambda child: -child.size)
        return item

    def _entry(self, name, parent):
        status = _lstat(name, parent)
        if stat.S_ISLNK(status.st_mode):
            self.links += 1
            return Item(name)
        if stat.S_ISDIR(status.st_mode):
            if _extension(name) in BUNDLES and _is_bundle(name, parent):
                self.files += 1
                return Item(name, _sum_of_visible(name, parent), category="application")
            return self._folder(name, parent)
        self.files += 1
        return Item(name, _measure(status), category=CATEGORY_OF.get(_extension(name), "other"))


def _lstat(name, parent):
    return os.stat(name, dir_fd=parent, follow_symlinks=False)


def _measure(status):
    return min(status.st_size, status.st_blocks * 512)


def _extension(name):
    stem, stop, extension = name.rpartition(b".")
    return extension.decode("utf-8", "replace").lower() if stop and stem else ""


def _is_bundle(name, parent):
    try:
        contents = _lstat(os.path.join(name, b"Contents"), parent)
        _lstat(os.path.join(name, b"Contents", b"Info.plist"), parent)
    except OSError:
        return False
    return stat.S_ISDIR(contents.st_mode)


def _sum_of_visible(name, parent):
    total = 0
    descriptor = os.open(name, FOLDER_FLAGS, dir_fd=parent)
    try:
        for entry in map(os.fsencode, os.listdir(descriptor)):
            if entry.startswith(b"."):
                continue
            status = _lstat(entry, descriptor)
            is_folder = stat.S_ISDIR(status.st_mode)
            total += _sum_of_visible(entry, descriptor) if is_folder else _measure(status)
    finally:
        os.close(descriptor)
    return total
