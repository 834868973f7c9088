"""What script/check-payload requires each archive to hold."""

import pytest
from conftest import SHADERS, SUITE, UTILITY, findings, information

APPLICATION = "Morvella/Morvella.app/"
DEVICE = "Morvella/Sources/Vellicor.amxd"
INFORMATION = "Tressimo.app/Contents/Info.plist"
PROGRAM = "Tressimo.app/Contents/MacOS/Tressimo"
BUNDLES = "application bundles at its top, not one"

# How a sound payload is spoilt, and the error.
SPOILT = [
    (lambda p: p.drop(SUITE, APPLICATION), f'morvella.zip: "{APPLICATION}" is missing'),
    # The name in another case.
    (
        lambda p: p.rename(SUITE, "Morvella.app", "morvella.app"),
        f'morvella.zip: "{APPLICATION}" is missing',
    ),
    (lambda p: p.drop(SUITE, DEVICE), f'morvella.zip: "{DEVICE}" is missing'),
    (lambda p: p.rename(SUITE, DEVICE, f"{DEVICE}/x"), f'morvella.zip: "{DEVICE}" is missing'),
    (lambda p: p.replace(SUITE, DEVICE, b""), f'morvella.zip: "{DEVICE}" is empty'),
    (lambda p: p.add(SUITE, "x"), 'morvella.zip: "x" lies beside the top folder "Morvella"'),
    (lambda p: p.rename(UTILITY, "Tressimo.app", "x"), f"Tressimo.zip: holds 0 {BUNDLES}"),
    (lambda p: p.add(UTILITY, "x.app/y"), f"Tressimo.zip: holds 2 {BUNDLES}"),
    # A file instead of the bundle.
    (
        lambda p: p.replace(UTILITY, "Tressimo.app", b"x"),
        'Tressimo.zip: "Tressimo.app/" is missing',
    ),
    (lambda p: p.drop(UTILITY, INFORMATION), f'Tressimo.zip: "{INFORMATION}" is missing'),
    (
        lambda p: p.replace(UTILITY, INFORMATION, information("")),
        f'Tressimo.zip: "{INFORMATION}" names no CFBundleExecutable',
    ),
    (lambda p: p.drop(UTILITY, PROGRAM), f'Tressimo.zip: "{PROGRAM}" is missing'),
    (
        lambda p: p.replace(UTILITY, PROGRAM, b"x"),
        f'Tressimo.zip: "{PROGRAM}" is not executable',
    ),
    (lambda p: p.add(UTILITY, "x"), 'Tressimo.zip: "x" lies beside the top folder "Tressimo.app"'),
    (lambda p: p.drop(SHADERS, "ISF/Dariwent"), 'ISF.zip: "ISF/Dariwent/" is missing'),
    (lambda p: p.drop(SHADERS, "ISF/Standard"), 'ISF.zip: "ISF/Standard/" is missing'),
]


@pytest.mark.parametrize("spoil, error", SPOILT)
def test_refuses_contents(folder, payload, spoil, error):
    spoil(payload)
    payload.write(folder)
    assert findings(folder) == [error]


def test_refuses_damaged_information(folder, payload):
    payload.replace(UTILITY, INFORMATION, b"<plist>")
    payload.write(folder)
    (error,) = findings(folder)
    assert error.startswith(f'Tressimo.zip: "{INFORMATION}" cannot be read')
