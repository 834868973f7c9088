"""What a folder contains: names, kinds, contents and whether a file is executable."""

import hashlib
import os
import stat
import zipfile
from pathlib import Path, PurePosixPath

FOLDER = "folder"


def of_folder(root):
    """{relative path: what is there}; two equal snapshots mean two equal folders."""
    found = {}
    for folder, folders, files in os.walk(root):
        for name in folders + files:
            path = Path(folder) / name
            found[path.relative_to(root)] = _of_item(path)
    return found


def _of_item(path):
    mode = path.lstat().st_mode
    if stat.S_ISLNK(mode):
        return f"link to {os.readlink(path)}"
    if stat.S_ISDIR(mode):
        return FOLDER
    return of_content(path.read_bytes(), mode & stat.S_IXUSR)


def of_content(content, executable):
    kind = "executable" if executable else "file"
    return f"{kind} {hashlib.sha256(content).hexdigest()}"


def of_archive(archive):
    """The snapshot of what unpacking a zip file creates."""
    found = {}
    with zipfile.ZipFile(archive) as opened:
        for entry in opened.infolist():
            path = PurePosixPath(_name(entry))
            if path.parts[0] == "__MACOSX" or path.name.startswith("._"):
                continue
            for folder in path.parents[:-1]:
                found[Path(folder)] = FOLDER
            mode = entry.external_attr >> 16
            if entry.is_dir():
                found[Path(path)] = FOLDER
            elif stat.S_ISLNK(mode):
                found[Path(path)] = f"link to {opened.read(entry).decode()}"
            else:
                found[Path(path)] = of_content(opened.read(entry), mode & stat.S_IXUSR)
    return found


def _name(entry):
    """The name with the same bytes as in the archive, in whatever encoding."""
    utf_8 = entry.flag_bits & 0x800
    return entry.filename if utf_8 else os.fsdecode(entry.filename.encode("cp437"))


def moved(snapshot, source, target):
    """The snapshot as it looks when everything at and below `source` has moved to `target`."""
    return {
        target / path.relative_to(source) if path.is_relative_to(source) else path: item
        for path, item in snapshot.items()
    }


def below(snapshot, folder):
    """The part of a snapshot that lies in `folder`, with paths relative to it."""
    return {p.relative_to(folder): item for p, item in snapshot.items() if folder in p.parents}


def without(snapshot, place):
    """The snapshot without what is at and below `place`."""
    return {p: item for p, item in snapshot.items() if p != place and place not in p.parents}


def placed(snapshot, folder):
    """The snapshot's items below `folder`, together with that folder and its parents."""
    found = {parent: FOLDER for parent in [folder, *folder.parents] if parent != Path(".")}
    found.update({folder / path: item for path, item in snapshot.items()})
    return found
