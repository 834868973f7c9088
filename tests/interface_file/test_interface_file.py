"""Compares the interface file with one table, interface.txt, and with what the code asks of it."""

import difflib
import re
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from outline import FILE, Outline

HERE = Path(__file__).resolve().parent
DOORS = FILE.parents[1] / "platform/cocoa"
CLASSES = {
    "button": "NSButton",
    "customView": "NSView",
    "progressIndicator": "NSProgressIndicator",
    "textFieldCell": "NSTextFieldCell",
    "textView": "NSTextView",
}


class InterfaceFileTest(unittest.TestCase):
    def setUp(self):
        self.root = ElementTree.parse(FILE).getroot()
        self.by_id = {each.get("id"): each for each in self.root.iter() if each.get("id")}

    def controller(self, name):
        return self.root.find(f"objects/viewController[@customClass='{name}']")

    def class_of(self, identifier):
        element = self.by_id[identifier]
        return element.get("customClass", CLASSES.get(element.tag))

    def test_means_what_the_table_says(self):
        expected = (HERE / "interface.txt").read_text("utf-8").splitlines()
        found = list(Outline(FILE.read_text("utf-8")).lines())
        difference = "\n".join(difflib.unified_diff(expected, found, "table", "file", lineterm=""))
        self.assertFalse(difference, f"\n{difference}\nThe table is what outline.py prints.")

    def test_every_outlet_leads_to_an_object_of_its_propertys_class(self):
        for name in ("MorvellaInstallerViewController", "MorvellaInstallerLicenseVC"):
            declared = (DOORS / f"{name}.h").read_text("utf-8")
            properties = re.findall(r"IBOutlet (\w+)\s*\*\s*(\w+);", declared)
            connected = self.controller(name).findall("connections/outlet")
            found = [
                (self.class_of(each.get("destination")), each.get("property"))
                for each in connected
                if each.get("property") != "view"
            ]
            self.assertEqual(sorted(found), sorted(properties))

    def test_every_action_of_the_controller_is_sent_by_one_button(self):
        declared = (DOORS / "MorvellaInstallerViewController.h").read_text("utf-8")
        controller = self.controller("MorvellaInstallerViewController").get("id")
        actions = self.root.iterfind(f".//action[@target='{controller}']")
        sent = sorted(each.get("selector") for each in actions)
        self.assertEqual(sent, sorted(re.findall(r"IBAction\)(\w+:)", declared)))

    def test_every_control_is_on_the_way_of_the_tab_key_and_back(self):
        for page in self.root.iterfind("objects/customView"):
            wanted = {each.get("id") for tag in ("button", "textView") for each in page.iter(tag)}
            passed, view = [], page
            while wanted and view.get("id") not in passed:
                passed.append(view.get("id"))
                following = view.find("connections/outlet[@property='nextKeyView']")
                view = self.by_id[following.get("destination")]
            self.assertEqual(view, page)
            self.assertEqual(wanted, set(passed) - {page.get("id")})


if __name__ == "__main__":
    unittest.main()
