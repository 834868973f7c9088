"""What script/check-payload refuses, notes and accepts."""

import zipfile

import pytest
from conftest import FILE, FOLDER, LINK, SHADERS, SUITE, UTILITY, check, findings, information

FIFO = 0o010644


def patch(path, old, new):
    content = path.read_bytes()
    assert old in content
    path.write_bytes(content.replace(old, new))


def test_accepts_a_sound_payload_and_prints_its_sizes(folder, payload):
    payload.write(folder)
    *sizes, verdict = check(folder).stdout.splitlines()
    assert verdict == "The payload is complete and sound."
    for line, name, entries in zip(sizes, payload.archives, (3, 2, 2), strict=True):
        with zipfile.ZipFile(folder / name) as file:
            unpacked = sum(info.file_size for info in file.infolist())
        packed = (folder / name).stat().st_size
        sizes = f"{entries} entries, {packed} bytes packed, {unpacked} bytes unpacked"
        assert line == f"{name}: {sizes}"


def test_needs_a_folder(folder):
    run = check(folder / "nowhere")
    assert run.returncode == 2
    assert "there is no folder" in run.stderr


OUTSIDE = "is a symbolic link leading outside"
# Entries to add to the shaders, and the resulting error.
REFUSED = [
    ([("/etc/hosts",)], '"/etc/hosts" is an absolute path'),
    ([("/ISF\nlate",)], '"/ISF\\nlate" is an absolute path'),
    ([("ISF/../../late",)], '"ISF/../../late" contains ".."'),
    ([("ISF\\Standard\\x",)], '"ISF\\Standard\\x" contains a backslash or NUL'),
    ([("ISF//late",)], '"ISF//late" contains an empty part or "."'),
    ([("ISF/./late",)], '"ISF/./late" contains an empty part or "."'),
    ([("Read me.txt",)], '"Read me.txt" is outside the top folder "ISF"'),
    ([("ISF/pipe", b"", FIFO)], '"ISF/pipe" is not a file, folder or symbolic link'),
    ([("ISF/x",), ("ISF/x",)], '"ISF/x" occurs 2 times'),
    ([("ISF/x",), ("ISF/X",)], '"ISF/X" and "x" differ only in case'),
    ([("ISF/STANDARD/x",)], '"ISF/STANDARD" and "Standard" differ only in case'),
    (
        [("ISF/Gru\u0308n",), ("ISF/Gr\u00fcn",)],
        '"ISF/Gru\u0308n" and "Gr\u00fcn" differ only in Unicode normalization',
    ),
    (
        [("ISF/GRU\u0308N",), ("ISF/gr\u00fcn",)],
        '"ISF/GRU\u0308N" and "gr\u00fcn" differ only in case',
    ),
    ([("ISF/x",), ("ISF/x/late",)], '"ISF/x" has entries below it but is not a folder'),
    (
        [("ISF/x", b"Standard", LINK), ("ISF/x/late",)],
        '"ISF/x" has entries below it but is not a folder',
    ),
    ([("ISF/x", b"/etc", LINK)], f'"ISF/x" {OUTSIDE} ("/etc")'),
    ([("ISF/x", b"../../late", LINK)], f'"ISF/x" {OUTSIDE} ("../../late")'),
    (  # It leads outside only through the other link.
        [("ISF/a/b/top", b"../..", LINK), ("ISF/x", b"a/b/top/../../late", LINK)],
        f'"ISF/x" {OUTSIDE} ("a/b/top/../../late")',
    ),
]


@pytest.mark.filterwarnings("ignore:Duplicate name")
@pytest.mark.parametrize("entries, error", REFUSED, ids=[error for _, error in REFUSED])
def test_refuses_bad_entries(folder, payload, entries, error):
    for entry in entries:
        payload.add(SHADERS, *entry)
    assert findings(folder, payload) == [f"ISF.zip: {error}"]


@pytest.mark.parametrize(
    "malformed, error",
    [
        (b"ISF/l\0te.fs", '"ISF/l\\x00te.fs" contains a backslash or NUL'),
        (b"ISF/l\xffte.fs", "is not valid UTF-8"),
    ],
)
def test_refuses_a_malformed_name(folder, payload, malformed, error):
    payload.add(SHADERS, "ISF/late.fs")
    payload.write(folder)
    patch(folder / SHADERS, b"ISF/late.fs", malformed)
    (found,) = findings(folder)
    assert found.endswith(error)


ACCEPTED = {
    "folders": [("ISF/", b"", FOLDER), ("ISF/Dariwent/", b"", FOLDER)],
    "links that stay inside": [
        ("ISF/A/Current", b"1", LINK),
        ("ISF/A/1/code", b"x", FILE),
        ("ISF/Latest", b"A/Current/../1", LINK),
    ],
    "links that form a cycle": [("ISF/one", b"two", LINK), ("ISF/two", b"one", LINK)],
    "dots inside a name": [("ISF/Standard/..late...fs", b"x", FILE)],
    "the same name in two folders": [("ISF/Dariwent/invert.fs", b"x", FILE)],
}


@pytest.mark.parametrize("entries", ACCEPTED.values(), ids=ACCEPTED)
def test_accepts_entries(folder, payload, entries):
    for entry in entries:
        payload.add(SHADERS, *entry)
    assert findings(folder, payload) == []


def test_accepts_utf8_names_without_the_flag(folder, payload, monkeypatch):
    monkeypatch.setattr(
        zipfile.ZipInfo, "_encodeFilenameFlags", lambda info: (info.filename.encode(), 0)
    )
    payload.add(SHADERS, "ISF/Standard/Gr\u00fcn \U0001f3b9.fs")
    payload.write(folder)
    with zipfile.ZipFile(folder / SHADERS) as file:
        assert not file.infolist()[-1].flag_bits & 0x800
    assert findings(folder) == []


def test_notes_leftovers(folder, payload):
    payload.add(SHADERS, "__MACOSX/ISF/._Dariwent")
    payload.add(SHADERS, "ISF/.DS_Store")
    assert findings(folder, payload) == []
    assert findings(folder, kind="note") == [
        'ISF.zip: 1 entries are "__MACOSX" leftovers',
        'ISF.zip: 1 entries are ".DS_Store" leftovers',
    ]


@pytest.mark.parametrize("entries, noted", [(500, False), (501, True)])
def test_notes_more_entries_than_the_pipe_holds_messages_for(folder, payload, entries, noted):
    for number in range(entries - len(payload.archives[SHADERS])):
        payload.add(SHADERS, f"ISF/Standard/{number}.fs")
    assert findings(folder, payload) == []
    notes = findings(folder, kind="note")
    assert len(notes) == noted
    assert all(note.startswith(f"ISF.zip: if all {entries} entries fail, ") for note in notes)


def test_refuses_a_missing_archive(folder, payload):
    payload.write(folder)
    (folder / UTILITY).unlink()
    (folder / SUITE).rename(folder / "Morvella.zip")
    assert findings(folder) == ["morvella.zip: is missing", "Tressimo.zip: is missing"]


@pytest.mark.parametrize("damage", [lambda _: b"not an archive", lambda content: content[:-30]])
def test_refuses_an_invalid_or_truncated_archive(folder, payload, damage):
    payload.write(folder)
    (folder / SHADERS).write_bytes(damage((folder / SHADERS).read_bytes()))
    assert findings(folder) == ["ISF.zip: cannot be read (File is not a zip file)"]


def test_refuses_a_wrong_checksum(folder, payload):
    payload.replace(SHADERS, "ISF/Standard/Invert.fs", b"other content")
    payload.write(folder)
    with zipfile.ZipFile(folder / SHADERS) as file:
        checksum = file.getinfo("ISF/Standard/Invert.fs").CRC.to_bytes(4, "little")
    patch(folder / SHADERS, checksum, b"\1\2\3\4")
    (error,) = findings(folder)
    assert error.startswith('ISF.zip: "ISF/Standard/Invert.fs" is damaged')


def test_refuses_another_compression_method(folder, payload):
    payload.write(folder)
    with zipfile.ZipFile(folder / SHADERS, "a", zipfile.ZIP_LZMA) as file:
        file.writestr("ISF/late.fs", "x")
    method = "uses compression method 14, not stored or deflated"
    assert findings(folder) == [f'ISF.zip: "ISF/late.fs" {method}']


def test_refuses_an_encrypted_entry(folder, payload):
    payload.write(folder)
    content = bytearray((folder / SHADERS).read_bytes())
    content[content.index(b"PK\x01\x02") + 8] |= 1
    (folder / SHADERS).write_bytes(content)
    assert findings(folder) == ['ISF.zip: "ISF/Dariwent/Ripple.fs" is encrypted']


APPLICATION = "Morvella/Morvella.app/"
DEVICE = "Morvella/Sources/Vellicor.amxd"
INFORMATION = "Tressimo.app/Contents/Info.plist"
PROGRAM = "Tressimo.app/Contents/MacOS/Tressimo"
BUNDLES = "application bundles at the top level, not one"

# How to break a sound payload, and the resulting error.
BROKEN = [
    (lambda p: p.drop(SUITE, APPLICATION), f'morvella.zip: "{APPLICATION}" is missing'),
    # The name in another case.
    (
        lambda p: p.rename(SUITE, "Morvella.app", "morvella.app"),
        f'morvella.zip: "{APPLICATION}" is missing',
    ),
    (lambda p: p.drop(SUITE, DEVICE), f'morvella.zip: "{DEVICE}" is missing'),
    (lambda p: p.rename(SUITE, DEVICE, f"{DEVICE}/x"), f'morvella.zip: "{DEVICE}" is missing'),
    (lambda p: p.replace(SUITE, DEVICE, b""), f'morvella.zip: "{DEVICE}" is empty'),
    (lambda p: p.add(SUITE, "x"), 'morvella.zip: "x" is outside the top folder "Morvella"'),
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
        f'Tressimo.zip: "{INFORMATION}" has no CFBundleExecutable',
    ),
    (lambda p: p.drop(UTILITY, PROGRAM), f'Tressimo.zip: "{PROGRAM}" is missing'),
    (
        lambda p: p.replace(UTILITY, PROGRAM, b"x"),
        f'Tressimo.zip: "{PROGRAM}" is not executable',
    ),
    (lambda p: p.add(UTILITY, "x"), 'Tressimo.zip: "x" is outside the top folder "Tressimo.app"'),
    (lambda p: p.drop(SHADERS, "ISF/Dariwent"), 'ISF.zip: "ISF/Dariwent/" is missing'),
    (lambda p: p.drop(SHADERS, "ISF/Standard"), 'ISF.zip: "ISF/Standard/" is missing'),
]


@pytest.mark.parametrize("break_it, error", BROKEN)
def test_refuses_wrong_contents(folder, payload, break_it, error):
    break_it(payload)
    assert findings(folder, payload) == [error]


def test_refuses_a_damaged_information_dictionary(folder, payload):
    payload.replace(UTILITY, INFORMATION, b"<plist>")
    (error,) = findings(folder, payload)
    assert error.startswith(f'Tressimo.zip: "{INFORMATION}" cannot be read')
