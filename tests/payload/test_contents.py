"""What script/check-payload wants each of the three archives to hold."""

import unittest

from checking import CheckPayload
from payload import Payload, information


class Suite(CheckPayload):
    application = "Morvella/Morvella.app/Contents"
    device = "Morvella/Sources/Vellicor.amxd"

    def test_without_its_application(self):
        self.payload.drop("morvella.zip", f"{self.application}/Info.plist")
        self.payload.drop("morvella.zip", f"{self.application}/MacOS/Morvella")
        self.expect('morvella.zip: "Morvella/Morvella.app/" is missing')

    def test_with_its_application_named_in_another_case(self):
        entries = self.payload.archives["morvella.zip"]
        self.payload.archives["morvella.zip"] = [
            (name.replace("Morvella.app", "morvella.app"), content, mode)
            for name, content, mode in entries
        ]
        self.expect('morvella.zip: "Morvella/Morvella.app/" is missing')

    def test_without_its_device(self):
        self.payload.drop("morvella.zip", self.device)
        self.expect(f'morvella.zip: "{self.device}" is missing')

    def test_with_an_empty_device(self):
        self.payload.replace("morvella.zip", self.device, b"")
        self.expect(f'morvella.zip: "{self.device}" is empty')

    def test_with_a_folder_for_its_device(self):
        self.payload.drop("morvella.zip", self.device)
        self.payload.add("morvella.zip", f"{self.device}/late")
        self.expect(f'morvella.zip: "{self.device}" is missing')

    def test_with_something_beside_its_folder(self):
        self.payload.add("morvella.zip", "Read me.txt")
        self.expect('morvella.zip: "Read me.txt" lies beside the top folder "Morvella"')


class Utility(CheckPayload):
    contents = "Tressimo.app/Contents"

    def test_without_a_bundle(self):
        self.payload.archives["Tressimo.zip"] = []
        self.payload.add("Tressimo.zip", "Tressimo/Tressimo")
        self.expect("Tressimo.zip: holds 0 application bundles at its top, not one")

    def test_with_two_bundles(self):
        self.payload.add("Tressimo.zip", "Other.app/Contents/Info.plist")
        self.expect("Tressimo.zip: holds 2 application bundles at its top, not one")

    def test_with_a_file_named_like_a_bundle(self):
        self.payload.archives["Tressimo.zip"] = []
        self.payload.add("Tressimo.zip", "Tressimo.app")
        self.expect('Tressimo.zip: "Tressimo.app/" is missing')

    def test_without_its_information(self):
        self.payload.drop("Tressimo.zip", f"{self.contents}/Info.plist")
        self.expect(f'Tressimo.zip: "{self.contents}/Info.plist" is missing')

    def test_with_damaged_information(self):
        self.payload.replace("Tressimo.zip", f"{self.contents}/Info.plist", b"<plist>")
        self.write()
        (error,) = self.findings()
        self.assertTrue(
            error.startswith(f'error: Tressimo.zip: "{self.contents}/Info.plist" cannot be read')
        )

    def test_with_information_that_names_no_executable(self):
        self.payload.replace("Tressimo.zip", f"{self.contents}/Info.plist", information(""))
        self.expect(f'Tressimo.zip: "{self.contents}/Info.plist" names no CFBundleExecutable')

    def test_without_its_executable(self):
        self.payload.drop("Tressimo.zip", f"{self.contents}/MacOS/Tressimo")
        self.expect(f'Tressimo.zip: "{self.contents}/MacOS/Tressimo" is missing')

    def test_with_an_executable_that_cannot_be_executed(self):
        self.payload.replace("Tressimo.zip", f"{self.contents}/MacOS/Tressimo", b"x")
        self.expect(f'Tressimo.zip: "{self.contents}/MacOS/Tressimo" is not executable')

    def test_with_something_beside_the_bundle(self):
        self.payload.add("Tressimo.zip", "Read me.txt")
        self.expect('Tressimo.zip: "Read me.txt" lies beside the top folder "Tressimo.app"')


class Shaders(CheckPayload):
    def test_without_one_of_the_folders(self):
        for folder, file in (("Dariwent", "Ripple.fs"), ("Standard", "Invert.fs")):
            with self.subTest(folder):
                self.payload = Payload()
                self.payload.drop("ISF.zip", f"ISF/{folder}/{file}")
                self.expect(f'ISF.zip: "ISF/{folder}/" is missing')

    def test_with_something_beside_their_folder(self):
        self.payload.add("ISF.zip", "Read me.txt")
        self.expect('ISF.zip: "Read me.txt" lies beside the top folder "ISF"')


if __name__ == "__main__":
    unittest.main()
