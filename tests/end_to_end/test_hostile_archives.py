import stat
import zipfile

import pytest

import disturbed
import snapshot
from expectations import (
    HIDING,
    expect_files,
    font_lines,
    installation_lines,
    installed,
    start_lines,
)
from fault import Fault

# The folder at the top of each archive.
TOPS = {"morvella.zip": "Morvella", "Tressimo.zip": "Tressimo.app", "ISF.zip": "ISF"}
PLANTED = "planted by an archive\n"


class TestHostileArchives(Fault):
    """Each of the three archives brings some entries more, behind those that are well meant.

    An entry is a name, in which TOP stands for the archive's top folder, and its contents.
    """

    @pytest.fixture(autouse=True)
    def copy(self, prepare):
        self.well_meant, self.bundle = self.bundle, self.copy_bundle()
        self.outside = self.folder / "outside"
        self.outside.mkdir()

    def add(self, *entries, links=()):
        for archive, top in TOPS.items():
            with zipfile.ZipFile(self.bundle / "Resources" / archive, "a") as opened:
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
        self.expect_run(
            stage,
            *start_lines(stage),
            *font_lines(self.bundle, stage),
            *disturbed.archives_refused(stage),
            HIDING,
        )
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
        self.expect_run(stage, *start_lines(stage), *installation_lines(self.bundle, stage))
        expect_files(stage, {**before, **installed(self.bundle, stage)})
        self.expect_nothing_outside()

    def expect_nothing_outside(self):
        assert snapshot.of_folder(self.outside) == {}
        names = {path.name for path in self.folder.iterdir()}
        assert names == {"stage", "outside", self.bundle.name}

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
            path = self.bundle / "Resources" / archive
            path.write_bytes(path.read_bytes().replace(b"Ger?t", "Gerät".encode("latin-1")))
        self.expect_taken()

    @pytest.mark.slow
    @pytest.mark.parametrize("number", [1_000, pytest.param(10_000, marks=pytest.mark.deep)])
    def test_entries(self, number):
        self.patience = 60  # Three times ten thousand files take what they take.
        self.add(*((f"TOP/Many/{entry}.txt", PLANTED) for entry in range(number)))
        self.expect_taken()
