"""The interface file as a table of what it means: everything but where things stand and how they
look. Printed by `python3 -B tests/interface_file/outline.py`."""

import base64
import json
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

FILE = Path(__file__).resolve().parents[2] / "resources/MainMenu.xib"
KEYS = {"\r": "Return", "\x1b": "Escape"}
# What a view or a cell is if the file says nothing.
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
TEXT_VIEW_DEFAULTS = {"editable": "YES", "selectable": "YES"}


class Outline:
    """The lines of the table."""

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
            yield from self._top_level(element)

    # What stands at the top

    def _top_level(self, element):
        if element.tag in ("customObject", "viewController"):
            yield f"{element.tag} {self._class_of(element)}"
            yield from self._connections(element)
        elif element.tag == "window":
            yield f"window {json.dumps(element.get('title'))}"
            style = element.find("windowStyleMask").attrib
            yield "    style: " + " ".join(k for k, v in style.items() if v == "YES")
            for name in ("restorable", "releasedWhenClosed", "autorecalculatesKeyViewLoop"):
                yield f"    {name}: {element.get(name, 'YES')}"
            yield from self._connections(element)
            yield from self._inside(element, "    ")
        else:
            yield from self._inside_of(element, "")

    def _connections(self, element):
        for each in element.iterfind("connections/outlet"):
            target = self._by_id[each.get("destination")]
            yield f"    outlet {each.get('property')}: {self._kind(target)} {self._name(target)}"

    # Views, controls and menus

    def _inside(self, element, indent):
        for child in element:
            yield from self._inside_of(child, indent)

    def _inside_of(self, element, indent):
        description = self._description(element)
        if description:
            yield indent + description
            indent += "    "
        yield from self._inside(element, indent)

    def _description(self, element):
        tag = element.tag
        if tag == "menuItem" and element.get("isSeparatorItem") == "YES":
            return "separator"
        if tag in ("menuItem", "menu"):
            return self._joined(tag, element, element)
        if tag in ("textField", "button"):
            return self._joined(self._kind(element), element, element.find("*[@key='cell']"))
        is_view = tag in ("customView", "imageView", "textView", "progressIndicator")
        is_outlet = element.get("id") in self._outlets and element.get("key") != "cell"
        if is_view or is_outlet:
            return self._joined(self._kind(element), element, None)
        return None

    def _joined(self, kind, element, cell):
        parts = [kind]
        if cell is not None and cell.get("title") is not None:
            parts.append(json.dumps(cell.get("title"), ensure_ascii=False))
        for each in (element, *([cell] if cell is not None else [])):
            if each.get("id") in self._outlets:
                parts.append(f"= {self._outlets[each.get('id')]}")
        parts += self._states(element, cell) + self._keys(element, cell)
        spoken = element.find("accessibility")
        if spoken is not None:
            parts.append(f"spoken {json.dumps(spoken.get('description'), ensure_ascii=False)}")
        for each in element.iterfind("connections/action"):
            target = self._name(self._by_id[each.get("target")])
            parts.append(f"sends {each.get('selector')} to {target}")
        for each in element.iterfind("connections/outlet"):
            target = self._name(self._by_id[each.get("destination")])
            parts.append(f"{each.get('property')} {target}")
        return ", ".join(parts).replace(", ", " ", 1)

    def _states(self, element, cell):
        defaults = DEFAULTS | (TEXT_VIEW_DEFAULTS if element.tag == "textView" else {})
        states = []
        for name, default in defaults.items():
            for each in (element, *([cell] if cell is not None and cell is not element else [])):
                if each.get(name, default) != default:
                    states.append(f"{name} {each.get(name)}")
        return states + [element.get("style")] * (element.get("style") is not None)

    def _keys(self, element, cell):
        if cell is None:
            return []
        encoded = cell.find("string[@key='keyEquivalent']")
        key = cell.get("keyEquivalent")
        if encoded is not None:
            key = base64.b64decode(encoded.text.strip() + "==").decode()
        if key is None:
            return []
        mask = element.find("modifierMask")
        modifiers = [k for k, v in mask.attrib.items() if v == "YES"] if mask is not None else []
        if element.tag == "menuItem" and mask is None:
            modifiers = ["command"]
        return ["key " + "-".join([*modifiers, KEYS.get(key, key)])]

    # Names

    def _class_of(self, element):
        return element.get("customClass", element.tag)

    def _kind(self, element):
        if element.tag == "button":
            return f"{element.find('buttonCell').get('type')} button"
        return self._class_of(element)

    def _name(self, element):
        """An outlet's name, else a class of the installer's own, else a title."""
        cell = element.find("*[@key='cell']")
        for each in (element, cell):
            if each is not None and each.get("id") in self._outlets:
                return self._outlets[each.get("id")]
        if cell is not None:
            return json.dumps(cell.get("title"), ensure_ascii=False)
        return self._class_of(element)


if __name__ == "__main__":
    sys.stdout.writelines(f"{line}\n" for line in Outline(FILE.read_text("utf-8")).lines())
