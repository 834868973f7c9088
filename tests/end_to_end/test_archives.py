"""The three archives as they should not be."""

import re
import stat
import zipfile

import pytest

import pages
import snapshot
from expectations import expect_files, installed
from log_lines import failed_line, refused_line
from scenario import Scenario

# The folder at the top of each archive.
TOPS = {"morvella.zip": "Morvella", "Tressimo.zip": "Tressimo.app", "ISF.zip": "ISF"}
REFUSED = [
    refused_line("morvella.zip"),
    refused_line("Tressimo.zip"),
    failed_line("Tressimo.zip"),
    refused_line("ISF.zip"),
    failed_line("ISF.zip"),
]
PLANTED = "planted by an archive\n"


class TestBadArchives(Scenario):
    def test_missing_shaders(self):
        self.copy_bundle(without=["ISF.zip"])
        stage = self.make_stage()
        self.run(stage, criticals=[pages.NO_USER_FILES], log=[failed_line("ISF.zip")])
        assert list(stage.shared_data.iterdir()) == []
        assert stage.opened_documents == []

    def test_damaged_utilities(self):
        archive = self.copy_bundle() / "Tressimo.zip"
        archive.write_bytes(archive.read_bytes()[:100])
        stage = self.make_stage()
        log = [refused_line("Tressimo.zip"), failed_line("Tressimo.zip")]
        self.run(stage, criticals=[pages.NO_UTILITIES], log=log)
        assert (stage.shared_data / "ISF").is_dir()

    def test_damaged_suite(self):
        (self.copy_bundle() / "morvella.zip").write_bytes(b"not an archive at all")
        stage = self.make_stage()
        self.run(stage, criticals=[pages.NOT_INSTALLED], log=[refused_line("morvella.zip")])
        assert not stage.destination.exists()

    @pytest.mark.parametrize(
        ("missing", "message"),
        [
            ("Morvella/Morvella.app", pages.NOT_INSTALLED),
            ("Morvella/Sources/Vellicor.amxd", pages.NOT_VERIFIED),
        ],
    )
    def test_suite_that_lacks_something(self, missing, message):
        remove_from_archive(self.copy_bundle() / "morvella.zip", missing)
        stage = self.make_stage()
        before = self.snapshot(stage)
        self.run(stage, criticals=[message])
        expect_files(stage, {**before, **installed(self.bundle, stage)})
        assert stage.opened_documents == []


def remove_from_archive(archive, item):
    """Writes the zip file anew without the item and what is in it."""
    old = archive.rename(archive.with_suffix(".old"))
    with zipfile.ZipFile(old) as source, zipfile.ZipFile(archive, "w") as target:
        for entry in source.infolist():
            if not re.match(re.escape(item) + "(/|$)", entry.filename):
                target.writestr(entry, source.read(entry))
    old.unlink()


class TestHostileArchives(Scenario):
    """Each of the three archives brings some entries more, behind those that are well meant.

    An entry is a name, in which TOP stands for the archive's top folder, and its contents.
    """

    @pytest.fixture(autouse=True)
    def copy(self, prepare):
        self.well_meant, self.resources = self.bundle, self.copy_bundle()
        self.outside = self.folder / "outside"
        self.outside.mkdir()

    def add(self, *entries, links=()):
        for archive, top in TOPS.items():
            with zipfile.ZipFile(self.resources / archive, "a") as opened:
                for name, target in links:
                    link = zipfile.ZipInfo(name.replace("TOP", top))
                    link.create_system = 3  # Unix, or nobody would look at the mode.
                    link.external_attr = (stat.S_IFLNK | 0o777) << 16
                    opened.writestr(link, str(target))
                for name, contents in entries:
                    opened.writestr(name.replace("TOP", top), contents)

    def expect_refused(self, kept=()):
        """`kept` is what is unpacked all the same of the entries added: names and what is there."""
        stage = self.make_stage()
        before = self.snapshot(stage)
        self.run(stage, criticals=[pages.NO_UTILITIES, pages.NO_USER_FILES], log=REFUSED)
        places = [stage.user_library, stage.utilities, stage.shared_data]
        added = {
            (place / name.replace("TOP", top)).relative_to(stage.root): item
            for place, top in zip(places, TOPS.values())
            for name, item in kept
        }
        expect_files(stage, {**before, **installed(self.well_meant, stage), **added})
        self.expect_nothing_outside()

    def expect_taken(self):
        stage = self.make_stage()
        before = self.snapshot(stage)
        self.run(stage)
        expect_files(stage, {**before, **installed(self.bundle, stage)})
        self.expect_nothing_outside()

    def expect_nothing_outside(self):
        assert snapshot.of_folder(self.outside) == {}
        names = {path.name for path in self.folder.iterdir()}
        assert names == {"stage", "outside", self.bundle.name}

    def test_absolute_paths(self):
        """They lead below the destination instead."""
        self.add((f"{self.outside}/Planted.txt", PLANTED))
        self.run(self.make_stage(), elsewhere=True)
        self.expect_nothing_outside()

    def test_paths_that_climb_out(self):
        self.add(("../Planted.txt", PLANTED), ("TOP/../../Planted.txt", PLANTED))
        self.expect_refused()

    def test_paths_through_a_link_that_leads_out(self):
        self.add(("TOP/Out/Planted.txt", PLANTED), links=[("TOP/Out", self.outside)])
        self.expect_refused(kept=[("TOP/Out", f"link to {self.outside}")])

    def test_paths_through_a_link_that_climbs_out(self):
        self.add(("TOP/Up/Planted.txt", PLANTED), links=[("TOP/Up", "../..")])
        self.expect_refused(kept=[("TOP/Up", "link to ../..")])

    def test_file_where_a_folder_must_be(self):
        self.add(("TOP/Extra", PLANTED), ("TOP/Extra/Inner.txt", PLANTED))
        planted = snapshot.of_content(PLANTED.encode(), executable=False)
        self.expect_refused(kept=[("TOP/Extra", planted)])

    def test_names_of_256_bytes(self):
        self.add(("TOP/" + 256 * "x", PLANTED))
        self.expect_refused()

    def test_names_of_255_bytes(self):
        self.add(("TOP/" + 255 * "x", PLANTED), ("TOP/" + 85 * "キ", PLANTED))
        self.expect_taken()

    def test_names_in_another_encoding(self):
        self.add(("TOP/Ger?t.txt", PLANTED))
        for archive in TOPS:
            path = self.resources / archive
            path.write_bytes(path.read_bytes().replace(b"Ger?t", "Gerät".encode("latin-1")))
        self.expect_taken()

    @pytest.mark.slow
    @pytest.mark.parametrize("number", [1_000, pytest.param(10_000, marks=pytest.mark.deep)])
    def test_entries(self, number):
        self.patience = 60  # Three times ten thousand files take what they take.
        self.add(*((f"TOP/Many/{entry}.txt", PLANTED) for entry in range(number)))
        self.expect_taken()
