"""Prints the interface file as an outline, without layout and appearance.

Run `python3 -B tests/interface_file/outline.py >tests/interface_file/interface.txt` after a change.
"""

import base64
import json
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

FILE = Path(__file__).resolve().parents[2] / "resources/MainMenu.xib"
KEYS = {"\r": "Return", "\x1b": "Escape"}
# The attributes of a view or a cell to print, unless they have this default value.
DEFAULTS = {
    "hidden": "NO",
    "enabled": "YES",
    "editable": "NO",
    "selectable": "NO",
    "indeterminate": "NO",
    "lineBreakMode": "wordWrapping",
    "controlSize": "regular",
    "allowsExpansionToolTips": "NO",
    "state": "off",
}
TEXT_VIEW_DEFAULTS = DEFAULTS | {"editable": "YES", "selectable": "YES"}
WINDOW = ("restorable", "releasedWhenClosed", "autorecalculatesKeyViewLoop", "tabbingMode")
SHOWN = {"menu", "menuItem", "textField", "button"}
SHOWN |= {"customView", "imageView", "textView", "progressIndicator"}


def quoted(text):
    return json.dumps(text, ensure_ascii=False)


class Outline:
    """The lines of the outline."""

    def __init__(self, text):
        self._root = ElementTree.fromstring(text)
        self._by_id = {each.get("id"): each for each in self._root.iter() if each.get("id")}
        controller = "objects/viewController[@customClass='MorvellaInstallerViewController']"
        self._outlets = {
            outlet.get("destination"): outlet.get("property")
            for outlet in self._root.iterfind(f"{controller}/connections/outlet")
            if outlet.get("property") != "view"
        }

    def lines(self):
        for element in self._root.find("objects"):
            if element.tag in ("customObject", "viewController"):
                yield f"{element.tag} {self._class_of(element)}"
                yield from self._connections(element)
            elif element.tag == "window":
                yield from self._window(element)
            else:
                yield from self._view(element, "")

    def _window(self, element):
        yield f"window {quoted(element.get('title'))}"
        style = element.find("windowStyleMask").attrib
        yield "    style: " + " ".join(k for k, v in style.items() if v == "YES")
        for name in WINDOW:
            yield f"    {name}: {element.get(name, 'YES')}"
        yield from self._connections(element)
        for child in element:
            yield from self._view(child, "    ")

    def _connections(self, element):
        for each in element.iterfind("connections/outlet"):
            if each.get("property") == self._outlets.get(each.get("destination")):
                continue  # The object's own line names this outlet.
            target = self._by_id[each.get("destination")]
            yield f"    outlet {each.get('property')}: {self._kind(target)} {self._name(target)}"

    def _view(self, element, indent):
        outlet = element.get("id") in self._outlets and element.get("key") != "cell"
        if element.get("isSeparatorItem") == "YES":
            yield f"{indent}separator"
        elif element.tag in SHOWN or outlet:
            yield indent + self._description(element)
            indent += "    "
        for child in element:
            yield from self._view(child, indent)

    def _description(self, element):
        cell = element.find("*[@key='cell']") if element.tag in ("textField", "button") else None
        both = [element] if cell is None else [element, cell]
        parts = [self._kind(element)]
        if cell is not None or element.tag.startswith("menu"):
            parts[0] += f" {quoted(both[-1].get('title'))}" if "title" in both[-1].attrib else ""
        parts += [f"= {self._outlets[e.get('id')]}" for e in both if e.get("id") in self._outlets]
        defaults = TEXT_VIEW_DEFAULTS if element.tag == "textView" else DEFAULTS
        for name, default in defaults.items():
            parts += [f"{name} {e.get(name)}" for e in both if e.get(name, default) != default]
        parts += [element.get("style")] if "style" in element.attrib else []
        parts += self._key(element, both[-1])
        spoken = (each.get("description") for each in element.iterfind("accessibility"))
        parts += [f"spoken {quoted(text)}" for text in spoken]
        for each in element.iterfind("connections/*"):
            target = self._name(self._by_id[each.get("target") or each.get("destination")])
            is_action = each.tag == "action"
            said = f"sends {each.get('selector')} to" if is_action else each.get("property")
            parts.append(f"{said} {target}")
        return ", ".join(parts)

    def _key(self, element, cell):
        """The key equivalent, which may be base64-encoded in the file."""
        encoded = cell.find("string[@key='keyEquivalent']")
        key = cell.get("keyEquivalent")
        if encoded is not None:
            key = base64.b64decode(encoded.text.strip() + "==").decode()
        if key is None:
            return []
        mask = element.find("modifierMask")
        modifiers = ["command"] if element.tag == "menuItem" else []
        if mask is not None:
            modifiers = [name for name, value in mask.attrib.items() if value == "YES"]
        return ["key " + "-".join([*modifiers, KEYS.get(key, key)])]

    def _class_of(self, element):
        return element.get("customClass", element.tag)

    def _kind(self, element):
        if element.tag == "button":
            return f"{element.find('buttonCell').get('type')} button"
        return self._class_of(element)

    def _name(self, element):
        """The name of its outlet; without one, its title if it has a cell, else its class."""
        cell = element.find("*[@key='cell']")
        for each in (element, cell):
            if each is not None and each.get("id") in self._outlets:
                return self._outlets[each.get("id")]
        return self._class_of(element) if cell is None else quoted(cell.get("title"))


if __name__ == "__main__":
    sys.stdout.writelines(f"{line}\n" for line in Outline(FILE.read_text("utf-8")).lines())
