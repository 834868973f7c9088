"""Archives that are missing, damaged, incomplete or hostile."""

import re
import stat
import zipfile

import pytest

import pages
import snapshot
from expectations import installed
from log_lines import failed_line, refused_line
from scenario import Scenario

# The folder at the top of each archive.
TOPS = {"morvella.zip": "Morvella", "Tressimo.zip": "Tressimo.app", "ISF.zip": "ISF"}
REFUSED = [refused_line("morvella.zip")]
for archive in ("Tressimo.zip", "ISF.zip"):
    REFUSED += [refused_line(archive), failed_line(archive)]
PLANTED = "planted by an archive\n"
PLANTED_FILE = snapshot.of_content(PLANTED.encode(), executable=False)


class TestBadArchives(Scenario):
    @pytest.mark.parametrize(
        ("archive", "is_there", "piece", "critical"),
        [
            ("ISF.zip", False, "shaders_to", pages.NO_USER_FILES),
            ("Tressimo.zip", True, "utilities_to", pages.NO_UTILITIES),
            ("morvella.zip", True, "suite_to", pages.NOT_INSTALLED),
        ],
    )
    def test_missing_or_truncated_archive(self, archive, is_there, piece, critical):
        log = [refused_line(archive)] if is_there else []
        log += [failed_line(archive)] if critical != pages.NOT_INSTALLED else []
        whole = self.bundle
        path = self.copy_bundle() / archive
        path.write_bytes(path.read_bytes()[:20]) if is_there else path.unlink()
        stage = self.make_stage()
        made = [place.relative_to(stage.root) for place in (stage.utilities, stage.shared_data)]
        added = {**installed(whole, stage, **{piece: None}), **dict.fromkeys(made, snapshot.FOLDER)}
        self.run(stage, criticals=[critical], log=log, adds=added)

    @pytest.mark.parametrize(
        ("missing", "message"),
        [
            ("Morvella/Morvella.app", pages.NOT_INSTALLED),
            ("Morvella/Sources/Vellicor.amxd", pages.NOT_VERIFIED),
        ],
    )
    def test_incomplete_suite(self, missing, message):
        remove_from_archive(self.copy_bundle() / "morvella.zip", missing)
        stage = self.make_stage()
        self.run(stage, criticals=[message], adds=installed(self.bundle, stage))


def remove_from_archive(archive, item):
    """Rewrites the zip file without the item and its contents."""
    old = archive.rename(archive.with_suffix(".old"))
    with zipfile.ZipFile(old) as source, zipfile.ZipFile(archive, "w") as target:
        for entry in source.infolist():
            if not re.match(re.escape(item) + "(/|$)", entry.filename):
                target.writestr(entry, source.read(entry))
    old.unlink()


class TestHostileArchives(Scenario):
    """More entries are appended to each of the three archives.

    TOP in a name stands for the archive's top folder.
    """

    @pytest.fixture(autouse=True)
    def copy(self, prepare):
        self.original, self.resources = self.bundle, self.copy_bundle()

    def add(self, names, links=()):
        for archive, top in TOPS.items():
            with zipfile.ZipFile(self.resources / archive, "a") as opened:
                for name, target in links:
                    link = zipfile.ZipInfo(name.replace("TOP", top))
                    link.create_system = 3  # Unix: otherwise the mode is ignored.
                    link.external_attr = (stat.S_IFLNK | 0o777) << 16
                    opened.writestr(link, target)
                for name in names:
                    opened.writestr(name.replace("TOP", top), PLANTED)

    @pytest.mark.parametrize(
        ("names", "links", "unpacked"),
        [
            (["../Planted.txt", "TOP/../../Planted.txt"], [], {}),
            (["TOP/Up/Planted.txt"], [("TOP/Up", "../..")], {"TOP/Up": "link to ../.."}),
            (["TOP/Extra", "TOP/Extra/Inner.txt"], [], {"TOP/Extra": PLANTED_FILE}),
            (["TOP/" + 256 * "x"], [], {}),
        ],
        ids=["climb out", "follow a link", "use a file as a folder", "have a name of 256 bytes"],
    )
    def test_hostile_entries_fail_and_the_rest_is_installed(self, names, links, unpacked):
        self.add(names, links)
        stage = self.make_stage()
        places = [stage.user_library, stage.utilities, stage.shared_data]
        planted = {
            (place / name.replace("TOP", top)).relative_to(stage.root): item
            for place, top in zip(places, TOPS.values())
            for name, item in unpacked.items()
        }
        criticals = [pages.NO_UTILITIES, pages.NO_USER_FILES]
        added = {**installed(self.original, stage), **planted}
        self.run(stage, criticals=criticals, log=REFUSED, adds=added)
        assert {path.name for path in self.folder.iterdir()} == {"stage", self.bundle.name}

    def expect_installed(self):
        stage = self.make_stage()
        self.run(stage, adds=installed(self.bundle, stage))

    def test_names_of_255_bytes_and_in_another_encoding(self):
        self.add(["TOP/" + 255 * "x", "TOP/" + 85 * "キ", "TOP/Ger?t.txt"])
        for archive in TOPS:
            path = self.resources / archive
            path.write_bytes(path.read_bytes().replace(b"Ger?t", "Gerät".encode("latin-1")))
        self.expect_installed()

    @pytest.mark.slow
    @pytest.mark.parametrize("number", [1_000, pytest.param(10_000, marks=pytest.mark.deep)])
    def test_many_entries(self, number):
        self.patience = 60
        self.add([f"TOP/Many/{entry}.txt" for entry in range(number)])
        self.expect_installed()
