"""Payloads of a given size: what is installed and packed, the same bytes on every run."""

import random
import subprocess

WORDS = [
    "oscillator", "envelope", "filter", "cutoff", "resonance", "macro", "device", "chain", "value",
    "preset", "sample", "region", "warp", "marker", "clip", "track", "return", "send", "volume",
]  # fmt: skip

# Which part of all files each archive has, and the folder on its top.
ARCHIVES = {
    "morvella.zip": (0.8, "Morvella"),
    "Tressimo.zip": (0.1, "Tressimo.app"),
    "ISF.zip": (0.1, "ISF"),
}
# What the installation cannot do without.
REQUIRED = ("Morvella/Morvella.app/Contents/Info.plist", "Morvella/Sources/Vellicor.amxd")
PACK = "bsdtar", "--format", "zip", "-c", "-f"


def make_tree(folder, files, size):
    """Fills a new folder with files of `size` bytes in all: every other one as dense as recorded
    sound, the rest as loose as a device's text."""
    chance = random.Random(f"{files} {size}")
    text = " ".join(chance.choices(WORDS, k=200_000)).encode()
    for number in range(files):
        wanted = size * (number + 1) // files - size * number // files
        place = folder / f"Folder {number // 100}" / f"File {number}.adv"
        if number % 100 == 0:
            place.parent.mkdir(parents=True)
        if number % 2:
            content = chance.randbytes(wanted)
        else:
            start = chance.randrange(len(text))
            content = (text[start:] + text * (wanted // len(text) + 1))[:wanted]
        place.write_bytes(content)


def make_archives(resources, work, files, size):
    """Puts three archives with so many files into the bundle's resources, in the samples' place."""
    for archive, (share, top) in ARCHIVES.items():
        source = work / archive.removesuffix(".zip")
        make_tree(source / top, round(files * share), round(size * share))
        for path in REQUIRED if top == "Morvella" else ():
            (source / path).parent.mkdir(parents=True, exist_ok=True)
            (source / path).write_text("required\n")
        pack(source / top, resources / archive)


def pack(folder, archive):
    archive.unlink(missing_ok=True)
    subprocess.run([*PACK, archive, folder.name], cwd=folder.parent, check=True)
