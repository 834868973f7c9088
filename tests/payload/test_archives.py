"""What script/check-payload finds in any archive, and what it lets pass."""

import re
import unittest
import zipfile

from checking import CheckPayload
from payload import LINK

FIFO = 0o010644


class Sound(CheckPayload):
    def test_a_sound_payload_passes_with_its_sizes(self):
        self.write()
        status, lines, _ = self.check()
        self.assertEqual(status, 0)
        self.assertEqual(len(lines), 4)
        for line, name, entries in zip(lines, self.payload.archives, (3, 2, 2)):
            packed = (self.folder / name).stat().st_size
            with zipfile.ZipFile(self.folder / name) as file:
                unpacked = sum(info.file_size for info in file.infolist())
            self.assertEqual(
                line, f"{name}: {entries} entries, {packed} bytes packed, {unpacked} bytes unpacked"
            )
        self.assertEqual(lines[3], "The payload is complete and sound.")

    def test_the_archives_can_be_named_in_any_order(self):
        self.write()
        files = [self.folder / name for name in ("ISF.zip", "morvella.zip", "Tressimo.zip")]
        self.assertEqual(self.check(*files)[0], 0)

    def test_two_archives_are_not_a_payload(self):
        self.write()
        status, _, stderr = self.check(self.folder / "ISF.zip", self.folder / "morvella.zip")
        self.assertEqual(status, 2)
        self.assertIn("name a folder", stderr)

    def test_folder_entries_pass(self):
        self.payload.add("ISF.zip", "ISF/", b"", 0o040755)
        self.payload.add("ISF.zip", "ISF/Dariwent/", b"", 0o040755)
        self.expect()

    def test_links_that_stay_inside_pass(self):
        self.payload.add("morvella.zip", "Morvella/Frameworks/A/Current", b"1", LINK)
        self.payload.add("morvella.zip", "Morvella/Frameworks/A/1/code")
        self.payload.add("morvella.zip", "Morvella/Latest", b"Frameworks/A/Current/../1", LINK)
        self.expect()

    def test_links_in_a_circle_pass(self):
        self.payload.add("ISF.zip", "ISF/one", b"two", LINK)
        self.payload.add("ISF.zip", "ISF/two", b"one", LINK)
        self.expect()

    def test_names_in_utf8_without_its_flag_pass(self):
        self.payload.add("ISF.zip", "ISF/Standard/Gr\u00fcn \U0001f3b9.fs")
        self.write()
        with zipfile.ZipFile(self.folder / "ISF.zip") as file:
            self.assertTrue(file.infolist()[-1].flag_bits & 0x800)
        self.clear_utf8_flags("ISF.zip")
        with zipfile.ZipFile(self.folder / "ISF.zip") as file:
            self.assertFalse(file.infolist()[-1].flag_bits & 0x800)
        self.assertEqual(self.findings(), [])

    def clear_utf8_flags(self, archive):
        path = self.folder / archive
        content = bytearray(path.read_bytes())
        for signature, offset in ((b"PK\x03\x04", 6), (b"PK\x01\x02", 8)):
            for match in re.finditer(re.escape(signature), bytes(content)):
                content[match.start() + offset + 1] &= 0xF7
        path.write_bytes(content)

    def test_leftovers_are_only_noted(self):
        self.payload.add("ISF.zip", "__MACOSX/ISF/._Dariwent")
        self.payload.add("ISF.zip", "ISF/.DS_Store")
        self.write()
        status, lines, _ = self.check()
        self.assertEqual(status, 0)
        self.assertIn('note: ISF.zip: 1 entries are "__MACOSX" leftovers', lines)
        self.assertIn('note: ISF.zip: 1 entries are ".DS_Store" leftovers', lines)

    def test_only_notes_more_than_500_entries(self):
        for number in range(500 - len(self.payload.archives["ISF.zip"])):
            self.payload.add("ISF.zip", f"ISF/Standard/{number}.fs")
        self.write()
        self.assertNotIn("note", "".join(self.check()[1]))
        self.payload.add("ISF.zip", "ISF/Standard/one more.fs")
        self.write()
        status, lines, _ = self.check()
        self.assertEqual(status, 0)
        notes = [line for line in lines if line.startswith("note: ")]
        self.assertEqual(len(notes), 1)
        self.assertTrue(notes[0].startswith("note: ISF.zip: of 501 entries, should all fail, "))


class Files(CheckPayload):
    def test_an_archive_that_is_missing(self):
        self.write()
        (self.folder / "Tressimo.zip").unlink()
        self.assertEqual(self.findings(), ["error: Tressimo.zip: is missing"])

    def test_an_archive_named_in_another_case(self):
        self.write()
        (self.folder / "morvella.zip").rename(self.folder / "Morvella.zip")
        self.assertEqual(self.findings(), ["error: morvella.zip: is missing"])

    def test_a_file_that_is_no_archive(self):
        self.write()
        (self.folder / "ISF.zip").write_bytes(b"not an archive")
        self.assertEqual(
            self.findings(), ["error: ISF.zip: cannot be read (File is not a zip file)"]
        )

    def test_an_archive_that_is_cut_off(self):
        self.write()
        path = self.folder / "ISF.zip"
        path.write_bytes(path.read_bytes()[:-30])
        self.assertEqual(
            self.findings(), ["error: ISF.zip: cannot be read (File is not a zip file)"]
        )

    def test_an_entry_whose_checksum_is_wrong(self):
        self.write()
        path = self.folder / "ISF.zip"
        with zipfile.ZipFile(path) as file:
            checksum = file.getinfo("ISF/Standard/Invert.fs").CRC.to_bytes(4, "little")
        self.spoil("ISF.zip", checksum, b"\1\2\3\4")
        (first, second) = self.findings()
        self.assertTrue(first.startswith('error: ISF.zip: "ISF/Dariwent/Ripple.fs" is damaged'))
        self.assertTrue(second.startswith('error: ISF.zip: "ISF/Standard/Invert.fs" is damaged'))

    def test_an_entry_that_is_packed_by_another_method(self):
        self.write()
        with zipfile.ZipFile(self.folder / "ISF.zip", "a", zipfile.ZIP_LZMA) as file:
            file.writestr("ISF/late.fs", "x")
        self.assertEqual(
            self.findings(),
            ['error: ISF.zip: "ISF/late.fs" is packed by method 14, neither stored nor deflated'],
        )

    def test_an_entry_that_is_encrypted(self):
        self.write()
        path = self.folder / "ISF.zip"
        content = bytearray(path.read_bytes())
        content[content.index(b"PK\x01\x02") + 8] |= 1
        path.write_bytes(content)
        self.assertEqual(self.findings(), ['error: ISF.zip: "ISF/Dariwent/Ripple.fs" is encrypted'])


class Names(CheckPayload):
    def test_an_absolute_name(self):
        self.payload.add("ISF.zip", "/etc/hosts")
        self.expect('ISF.zip: "/etc/hosts" is an absolute name')

    def test_a_name_that_climbs_out(self):
        self.payload.add("ISF.zip", "ISF/../../late")
        self.expect('ISF.zip: "ISF/../../late" is a name with ".."')

    def test_a_name_with_a_backslash(self):
        self.payload.add("ISF.zip", "ISF\\Standard\\Invert.fs")
        self.expect('ISF.zip: "ISF\\Standard\\Invert.fs" is a name with a backslash or NUL')

    def test_a_name_with_a_nul(self):
        self.payload.add("ISF.zip", "ISF/late.fs")
        self.write()
        self.spoil("ISF.zip", b"ISF/late.fs", b"ISF/l\0te.fs")
        self.assertEqual(
            self.findings(),
            ['error: ISF.zip: "ISF/l\\x00te.fs" is a name with a backslash or NUL'],
        )

    def test_a_finding_is_one_line_whatever_the_name(self):
        self.payload.add("ISF.zip", "/ISF\nlate")
        self.expect('ISF.zip: "/ISF\\nlate" is an absolute name')

    def test_a_name_with_an_empty_part(self):
        self.payload.add("ISF.zip", "ISF//late")
        self.expect('ISF.zip: "ISF//late" is a name with an empty part or "."')

    def test_a_name_with_a_dot_part(self):
        self.payload.add("ISF.zip", "ISF/./late")
        self.expect('ISF.zip: "ISF/./late" is a name with an empty part or "."')

    def test_a_name_that_is_not_utf8(self):
        self.payload.add("ISF.zip", "ISF/late.fs")
        self.write()
        self.spoil("ISF.zip", b"ISF/late.fs", b"ISF/l\xfcte.fs")
        (error,) = self.findings()
        self.assertTrue(error.endswith("is a name that is not UTF-8"))

    def test_dots_inside_a_name_pass(self):
        self.payload.add("ISF.zip", "ISF/Standard/..late...fs")
        self.expect()


class Collisions(CheckPayload):
    def test_a_name_that_is_there_twice(self):
        self.payload.add("ISF.zip", "ISF/Standard/Invert.fs")
        self.expect('ISF.zip: "ISF/Standard/Invert.fs" is there twice')

    def test_files_that_differ_only_by_case(self):
        self.payload.add("ISF.zip", "ISF/Standard/invert.fs")
        self.expect('ISF.zip: "ISF/Standard/Invert.fs" and "invert.fs" differ only by case')

    def test_folders_that_differ_only_by_case(self):
        self.payload.add("ISF.zip", "ISF/STANDARD/late.fs")
        self.expect('ISF.zip: "ISF/STANDARD" and "Standard" differ only by case')

    def test_names_that_differ_only_by_normal_form(self):
        self.payload.add("ISF.zip", "ISF/Gru\u0308n.fs")
        self.payload.add("ISF.zip", "ISF/Gr\u00fcn.fs")
        self.expect(
            'ISF.zip: "ISF/Gru\u0308n.fs" and "Gr\u00fcn.fs" differ only by Unicode normal form'
        )

    def test_names_that_differ_by_case_and_normal_form(self):
        self.payload.add("ISF.zip", "ISF/GRU\u0308N.fs")
        self.payload.add("ISF.zip", "ISF/gr\u00fcn.fs")
        self.expect('ISF.zip: "ISF/GRU\u0308N.fs" and "gr\u00fcn.fs" differ only by case')

    def test_the_same_name_in_two_folders_passes(self):
        self.payload.add("ISF.zip", "ISF/Dariwent/invert.fs")
        self.expect()

    def test_a_file_with_entries_below_it(self):
        self.payload.add("ISF.zip", "ISF/Standard/Invert.fs/late")
        self.expect('ISF.zip: "ISF/Standard/Invert.fs" has entries below it but is not a folder')

    def test_an_entry_below_a_link(self):
        self.payload.add("ISF.zip", "ISF/link", b"Standard", LINK)
        self.payload.add("ISF.zip", "ISF/link/late")
        self.expect('ISF.zip: "ISF/link" has entries below it but is not a folder')


class Kinds(CheckPayload):
    def test_a_link_to_an_absolute_path(self):
        self.payload.add("ISF.zip", "ISF/link", b"/etc", LINK)
        self.expect('ISF.zip: "ISF/link" is a symbolic link leading outside ("/etc")')

    def test_a_link_that_climbs_out(self):
        self.payload.add("ISF.zip", "ISF/link", b"../../late", LINK)
        self.expect('ISF.zip: "ISF/link" is a symbolic link leading outside ("../../late")')

    def test_a_link_that_climbs_out_through_another(self):
        self.payload.add("ISF.zip", "ISF/a/b/top", b"../..", LINK)
        self.payload.add("ISF.zip", "ISF/link", b"a/b/top/../../late", LINK)
        self.expect('ISF.zip: "ISF/link" is a symbolic link leading outside ("a/b/top/../../late")')

    def test_an_entry_that_is_neither_file_nor_folder_nor_link(self):
        self.payload.add("ISF.zip", "ISF/pipe", b"", FIFO)
        self.expect('ISF.zip: "ISF/pipe" is neither file, folder nor symbolic link')


if __name__ == "__main__":
    unittest.main()
