"""Compares the interface file with interface.txt and with the outlets and actions in the code."""

import difflib
import re
import xml.etree.ElementTree as ElementTree
from pathlib import Path

import pytest
from outline import FILE, Outline

EXPECTED = Path(__file__).with_name("interface.txt")
DOORS = FILE.parents[1] / "platform/cocoa"
CLASSES = {
    "button": "NSButton",
    "customView": "NSView",
    "progressIndicator": "NSProgressIndicator",
    "textFieldCell": "NSTextFieldCell",
    "textView": "NSTextView",
}
ROOT = ElementTree.parse(FILE).getroot()
BY_ID = {each.get("id"): each for each in ROOT.iter() if each.get("id")}


def controller(name):
    return ROOT.find(f"objects/viewController[@customClass='{name}']")


def class_of(identifier):
    element = BY_ID[identifier]
    return element.get("customClass", CLASSES.get(element.tag))


def test_matches_the_expected_outline():
    expected = EXPECTED.read_text("utf-8").splitlines()
    found = list(Outline(FILE.read_text("utf-8")).lines())
    difference = "\n".join(difflib.unified_diff(expected, found, "expected", "found", lineterm=""))
    assert not difference, f"\n{difference}\noutline.py prints the new {EXPECTED.name}."


@pytest.mark.parametrize("name", ["MorvellaInstallerViewController", "MorvellaInstallerLicenseVC"])
def test_every_outlet_is_connected_to_an_object_of_its_class(name):
    declared = (DOORS / f"{name}.h").read_text("utf-8")
    properties = re.findall(r"IBOutlet (\w+)\s*\*\s*(\w+);", declared)
    found = [
        (class_of(each.get("destination")), each.get("property"))
        for each in controller(name).findall("connections/outlet")
        if each.get("property") != "view"
    ]
    assert sorted(found) == sorted(properties)


def test_every_action_of_the_controller_is_sent_by_one_button():
    declared = (DOORS / "MorvellaInstallerViewController.h").read_text("utf-8")
    target = controller("MorvellaInstallerViewController").get("id")
    sent = [each.get("selector") for each in ROOT.iterfind(f".//action[@target='{target}']")]
    assert sorted(sent) == sorted(re.findall(r"IBAction\)(\w+:)", declared))


@pytest.mark.parametrize("page", ROOT.findall("objects/customView"), ids=lambda p: p.get("id"))
def test_tab_key_reaches_every_control_of_a_page_and_returns(page):
    wanted = {each.get("id") for tag in ("button", "textView") for each in page.iter(tag)}
    passed, view = [], page
    while wanted and view.get("id") not in passed:
        passed.append(view.get("id"))
        following = view.find("connections/outlet[@property='nextKeyView']")
        view = BY_ID[following.get("destination")]
    assert view is page
    assert set(passed) - {page.get("id")} == wanted
