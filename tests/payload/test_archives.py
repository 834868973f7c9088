"""What script/check-payload refuses, notes and accepts in any archive."""

import re
import zipfile

import pytest
from checking import SHADERS, SUITE, UTILITY, check, findings
from sample_payload import FILE, FOLDER, LINK

FIFO = 0o010644


def patch(path, old, new):
    content = path.read_bytes()
    assert old in content
    path.write_bytes(content.replace(old, new))


def test_a_sound_payload_passes_with_its_sizes(folder, payload):
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


# An entry that is added to the shaders, and the error; a third value is a link's target.
ADDED = [
    ("/etc/hosts", '"/etc/hosts" is an absolute name'),
    ("ISF/../../late", '"ISF/../../late" is a name with ".."'),
    ("ISF\\Standard\\x.fs", '"ISF\\Standard\\x.fs" is a name with a backslash or NUL'),
    ("/ISF\nlate", '"/ISF\\nlate" is an absolute name'),
    ("ISF//late", '"ISF//late" is a name with an empty part or "."'),
    ("ISF/./late", '"ISF/./late" is a name with an empty part or "."'),
    ("ISF/Standard/Invert.fs", '"ISF/Standard/Invert.fs" is there 2 times'),
    (
        "ISF/Standard/invert.fs",
        '"ISF/Standard/Invert.fs" and "invert.fs" differ only by case',
    ),
    ("ISF/STANDARD/late.fs", '"ISF/STANDARD" and "Standard" differ only by case'),
    (
        "ISF/Standard/Invert.fs/late",
        '"ISF/Standard/Invert.fs" has entries below it but is not a folder',
    ),
    ("ISF/link", '"ISF/link" is a symbolic link leading outside ("/etc")', b"/etc"),
    ("ISF/link", '"ISF/link" is a symbolic link leading outside ("../../late")', b"../../late"),
    ("Read me.txt", '"Read me.txt" lies beside the top folder "ISF"'),
]


@pytest.mark.filterwarnings("ignore:Duplicate name")
@pytest.mark.parametrize("name, error, target", [(*each, None)[:3] for each in ADDED])
def test_refuses_an_entry(folder, payload, name, error, target):
    payload.add(SHADERS, name, target or b"x", LINK if target else FILE)
    payload.write(folder)
    assert findings(folder) == [f"ISF.zip: {error}"]


def test_refuses_what_is_neither_file_nor_folder_nor_link(folder, payload):
    payload.add(SHADERS, "ISF/pipe", b"", FIFO)
    payload.write(folder)
    assert findings(folder) == ['ISF.zip: "ISF/pipe" is neither file, folder nor symbolic link']


def test_refuses_an_entry_below_a_link(folder, payload):
    payload.add(SHADERS, "ISF/link", b"Standard", LINK)
    payload.add(SHADERS, "ISF/link/late")
    payload.write(folder)
    assert findings(folder) == ['ISF.zip: "ISF/link" has entries below it but is not a folder']


def test_refuses_a_link_that_leads_out_through_another(folder, payload):
    payload.add(SHADERS, "ISF/a/b/top", b"../..", LINK)
    payload.add(SHADERS, "ISF/link", b"a/b/top/../../late", LINK)
    payload.write(folder)
    leads_out = 'is a symbolic link leading outside ("a/b/top/../../late")'
    assert findings(folder) == [f'ISF.zip: "ISF/link" {leads_out}']


@pytest.mark.parametrize(
    "one, other, how",
    [
        ("Gru\u0308n.fs", "Gr\u00fcn.fs", "Unicode normal form"),
        ("GRU\u0308N.fs", "gr\u00fcn.fs", "case"),
    ],
)
def test_refuses_names_that_collide_on_a_mac(folder, payload, one, other, how):
    payload.add(SHADERS, f"ISF/{one}")
    payload.add(SHADERS, f"ISF/{other}")
    payload.write(folder)
    assert findings(folder) == [f'ISF.zip: "ISF/{one}" and "{other}" differ only by {how}']


@pytest.mark.parametrize(
    "spoilt, error",
    [
        (b"ISF/l\0te.fs", '"ISF/l\\x00te.fs" is a name with a backslash or NUL'),
        (b"ISF/l\xffte.fs", "is a name that is not UTF-8"),
    ],
)
def test_refuses_a_name_that_no_writer_makes(folder, payload, spoilt, error):
    payload.add(SHADERS, "ISF/late.fs")
    payload.write(folder)
    patch(folder / SHADERS, b"ISF/late.fs", spoilt)
    (found,) = findings(folder)
    assert found.endswith(error)


ACCEPTED = {
    "folders": [("ISF/", b"", FOLDER), ("ISF/Dariwent/", b"", FOLDER)],
    "links that stay inside": [
        ("ISF/A/Current", b"1", LINK),
        ("ISF/A/1/code", b"x", FILE),
        ("ISF/Latest", b"A/Current/../1", LINK),
    ],
    "links in a circle": [("ISF/one", b"two", LINK), ("ISF/two", b"one", LINK)],
    "dots inside a name": [("ISF/Standard/..late...fs", b"x", FILE)],
    "one name in two folders": [("ISF/Dariwent/invert.fs", b"x", FILE)],
}


@pytest.mark.parametrize("entries", ACCEPTED.values(), ids=ACCEPTED)
def test_accepts(folder, payload, entries):
    for entry in entries:
        payload.add(SHADERS, *entry)
    payload.write(folder)
    assert findings(folder) == []


def test_accepts_utf8_names_without_the_flag(folder, payload):
    payload.add(SHADERS, "ISF/Standard/Gr\u00fcn \U0001f3b9.fs")
    payload.write(folder)
    content = bytearray((folder / SHADERS).read_bytes())
    for signature, offset in ((b"PK\x03\x04", 6), (b"PK\x01\x02", 8)):
        for match in re.finditer(re.escape(signature), bytes(content)):
            content[match.start() + offset + 1] &= 0xF7
    (folder / SHADERS).write_bytes(content)
    with zipfile.ZipFile(folder / SHADERS) as file:
        assert not file.infolist()[-1].flag_bits & 0x800
    assert findings(folder) == []


def test_notes_leftovers(folder, payload):
    payload.add(SHADERS, "__MACOSX/ISF/._Dariwent")
    payload.add(SHADERS, "ISF/.DS_Store")
    payload.write(folder)
    assert findings(folder) == []
    assert findings(folder, "note") == [
        'ISF.zip: 1 entries are "__MACOSX" leftovers',
        'ISF.zip: 1 entries are ".DS_Store" leftovers',
    ]


@pytest.mark.parametrize("entries, noted", [(500, False), (501, True)])
def test_notes_more_entries_than_the_pipe_has_room_for(folder, payload, entries, noted):
    for number in range(entries - len(payload.archives[SHADERS])):
        payload.add(SHADERS, f"ISF/Standard/{number}.fs")
    payload.write(folder)
    assert findings(folder) == []
    notes = findings(folder, "note")
    assert [note.startswith(f"ISF.zip: if all {entries} entries fail, ") for note in notes] == [
        True
    ] * noted


def test_refuses_a_missing_archive(folder, payload):
    payload.write(folder)
    (folder / UTILITY).unlink()
    (folder / SUITE).rename(folder / "Morvella.zip")
    assert findings(folder) == ["morvella.zip: is missing", "Tressimo.zip: is missing"]


@pytest.mark.parametrize("damage", [lambda _: b"no archive", lambda content: content[:-30]])
def test_refuses_a_file_that_is_no_whole_archive(folder, payload, damage):
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


def test_refuses_another_method(folder, payload):
    payload.write(folder)
    with zipfile.ZipFile(folder / SHADERS, "a", zipfile.ZIP_LZMA) as file:
        file.writestr("ISF/late.fs", "x")
    method = "is packed by method 14, neither stored nor deflated"
    assert findings(folder) == [f'ISF.zip: "ISF/late.fs" {method}']


def test_refuses_encryption(folder, payload):
    payload.write(folder)
    content = bytearray((folder / SHADERS).read_bytes())
    content[content.index(b"PK\x01\x02") + 8] |= 1
    (folder / SHADERS).write_bytes(content)
    assert findings(folder) == ['ISF.zip: "ISF/Dariwent/Ripple.fs" is encrypted']
