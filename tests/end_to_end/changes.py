"""Every change that a run over a previous installation makes on the stage, and who makes it."""

import fcntl
import json
import os
from pathlib import Path

import folders
import stage as stages
from display import Display
from expectations import HIDING
from gate import Gate
from descriptions import FINISH, LICENCE, SETTINGS, WELCOME
from installer import Installer
from messages import PREVIOUS_INSTALLATION
from processes import children
from waiting import wait_until

# Who is at work on the stage's files: the installer itself, or the archiver with one of its tasks.
INSTALLER, PACKING = "installer", "packing"
OWN_FILES = 6
OWN_SIZE = 1 << 18


def make_stage(folder):
    """With as much of the user's own that packing it takes many steps."""
    stage = stages.make(folder, previous=True, demo=False)
    for number in range(OWN_FILES):
        own = stage.destination / f"My Patches/Take {number}.wav"
        own.write_bytes(os.urandom(OWN_SIZE))
    return stage


def start_installation(installer):
    for page, button in ((WELCOME, "Next"), (LICENCE, "Accept"), (SETTINGS, "Next")):
        installer.wait_for_choice(page)
        installer.press(button)
    installer.wait_for_sheet(PREVIOUS_INSTALLATION)
    installer.press("Continue")


def wait_for_change(installer, gate, number):
    """Waits until the change of this number is about to be made; whether there is one."""

    def finished():
        hidden = installer.stage.destination / ".Morvella.app"
        return HIDING in installer.log and hidden.exists()

    wait_until(lambda: gate.arrived >= number or finished(), f"change {number}", interval=0.001)
    return gate.arrived >= number


def at_work(installer):
    for command in children(installer.process.pid).values():
        if "-c" in command:
            return PACKING
        return next(Path(word).name for word in command if word.endswith(".zip"))
    return INSTALLER


def known_changes(executable):
    """Who makes each change, in order; looked for once for each build."""
    bundle = executable.parent
    record = bundle.parent / "tests/end_to_end/changes.json"
    with open(record.with_suffix(".lock"), "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        parts = [executable, bundle / "Helpers/ditto", *sorted((bundle / "Resources").iterdir())]
        build = [[str(part), part.stat().st_mtime_ns] for part in parts] + [OWN_FILES, OWN_SIZE]
        if record.exists():
            known = json.loads(record.read_text())
            if known["build"] == build:
                return known["changes"]
        changes = look_for_changes(bundle)
        record.write_text(json.dumps({"build": build, "changes": changes}))
        return changes


def look_for_changes(bundle):
    found = []
    with Display() as display, folders.temporary_folder("changes") as folder:
        gate = Gate(folder / "gate", bundle)
        stage = make_stage(folder / "stage")
        with Installer(display, bundle, stage, environment=gate.environment) as installer:
            start_installation(installer)
            while wait_for_change(installer, gate, len(found) + 1):
                found.append(at_work(installer))
                gate.allow(len(found))
            installer.wait_for_page(FINISH)
    return found
