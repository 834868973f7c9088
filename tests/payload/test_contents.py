"""What script/check-payload requires each archive to hold."""

import pytest
from checking import SHADERS, SUITE, UTILITY, findings
from sample_payload import information

BUNDLE = "Tressimo.app/Contents"
DEVICE = "Morvella/Sources/Vellicor.amxd"

# How a sound payload is spoilt, and the error.
CONTENTS = {
    "the suite without its application": (
        lambda p: p.drop(SUITE, "Morvella/Morvella.app/"),
        'morvella.zip: "Morvella/Morvella.app/" is missing',
    ),
    "the application in another case": (
        lambda p: p.rename(SUITE, "Morvella.app", "morvella.app"),
        'morvella.zip: "Morvella/Morvella.app/" is missing',
    ),
    "the suite without its device": (
        lambda p: p.drop(SUITE, DEVICE),
        f'morvella.zip: "{DEVICE}" is missing',
    ),
    "an empty device": (
        lambda p: p.replace(SUITE, DEVICE, b""),
        f'morvella.zip: "{DEVICE}" is empty',
    ),
    "a folder for the device": (
        lambda p: p.rename(SUITE, DEVICE, f"{DEVICE}/late"),
        f'morvella.zip: "{DEVICE}" is missing',
    ),
    "a file beside the suite": (
        lambda p: p.add(SUITE, "Read me.txt"),
        'morvella.zip: "Read me.txt" lies beside the top folder "Morvella"',
    ),
    "no utility": (
        lambda p: p.rename(UTILITY, "Tressimo.app", "Tressimo"),
        "Tressimo.zip: holds 0 application bundles at its top, not one",
    ),
    "two utilities": (
        lambda p: p.add(UTILITY, "Other.app/Contents/Info.plist"),
        "Tressimo.zip: holds 2 application bundles at its top, not one",
    ),
    "a file named like the utility": (
        lambda p: p.replace(UTILITY, "Tressimo.app", b"x"),
        'Tressimo.zip: "Tressimo.app/" is missing',
    ),
    "the utility without its information": (
        lambda p: p.drop(UTILITY, f"{BUNDLE}/Info.plist"),
        f'Tressimo.zip: "{BUNDLE}/Info.plist" is missing',
    ),
    "information that names no executable": (
        lambda p: p.replace(UTILITY, f"{BUNDLE}/Info.plist", information("")),
        f'Tressimo.zip: "{BUNDLE}/Info.plist" names no CFBundleExecutable',
    ),
    "the utility without its executable": (
        lambda p: p.drop(UTILITY, f"{BUNDLE}/MacOS/Tressimo"),
        f'Tressimo.zip: "{BUNDLE}/MacOS/Tressimo" is missing',
    ),
    "an executable that cannot be executed": (
        lambda p: p.replace(UTILITY, f"{BUNDLE}/MacOS/Tressimo", b"x"),
        f'Tressimo.zip: "{BUNDLE}/MacOS/Tressimo" is not executable',
    ),
    "a file beside the utility": (
        lambda p: p.add(UTILITY, "Read me.txt"),
        'Tressimo.zip: "Read me.txt" lies beside the top folder "Tressimo.app"',
    ),
    "shaders without one folder": (
        lambda p: p.drop(SHADERS, "ISF/Dariwent"),
        'ISF.zip: "ISF/Dariwent/" is missing',
    ),
    "shaders without the other folder": (
        lambda p: p.drop(SHADERS, "ISF/Standard"),
        'ISF.zip: "ISF/Standard/" is missing',
    ),
}


@pytest.mark.parametrize("spoil, error", CONTENTS.values(), ids=CONTENTS)
def test_refuses_contents(folder, payload, spoil, error):
    spoil(payload)
    payload.write(folder)
    assert findings(folder) == [error]


def test_refuses_damaged_information(folder, payload):
    payload.replace(UTILITY, f"{BUNDLE}/Info.plist", b"<plist>")
    payload.write(folder)
    (error,) = findings(folder)
    assert error.startswith(f'Tressimo.zip: "{BUNDLE}/Info.plist" cannot be read')
