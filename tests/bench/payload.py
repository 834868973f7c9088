"""Generates payloads of a given size, with the same bytes on every run."""

import random
import subprocess

WORDS = "oscillator envelope filter cutoff resonance macro device chain value preset sample".split()
# Each archive's share of all files, and its top folder.
ARCHIVES = {
    "morvella.zip": (0.8, "Morvella"),
    "Tressimo.zip": (0.1, "Tressimo.app"),
    "ISF.zip": (0.1, "ISF"),
}
# What the installer looks for after unpacking.
REQUIRED = ("Morvella/Morvella.app/Contents/Info.plist", "Morvella/Sources/Vellicor.amxd")


def make_tree(folder, files, size):
    """Fills a new folder with files of `size` bytes in all, half of them compressible."""
    rng = random.Random(f"{files} {size}")
    text = " ".join(rng.choices(WORDS, k=200_000)).encode()
    for number in range(files):
        wanted = size * (number + 1) // files - size * number // files
        place = folder / f"Folder {number // 100}" / f"File {number}.adv"
        place.parent.mkdir(parents=True, exist_ok=True)
        repeated = text * (wanted // len(text) + 1)
        place.write_bytes(rng.randbytes(wanted) if number % 2 else repeated[:wanted])


def make_archives(resources, work, files, size):
    """Replaces the sample archives in the bundle's resources."""
    for archive, (share, top) in ARCHIVES.items():
        source = work / archive.removesuffix(".zip")
        make_tree(source / top, round(files * share), round(size * share))
        for path in REQUIRED if top == "Morvella" else ():
            (source / path).parent.mkdir(parents=True, exist_ok=True)
            (source / path).write_text("required\n")
        (resources / archive).unlink()
        command = ["bsdtar", "--format", "zip", "-c", "-f", resources / archive, top]
        subprocess.run(command, cwd=source, check=True)
