"""Every small change to the interface file: a connection is dropped or leads elsewhere, or an
attribute that means something is dropped or changed. Where things stand and how they look is left
alone: that is looked at on pictures."""

import re

from source import Change

# What an element's attributes say beyond its look.
MEANING = (
    "allowsExpansionToolTips autorecalculatesKeyViewLoop closable command controlSize customClass"
    " description editable enabled hidden indeterminate keyEquivalent keyPath lineBreakMode"
    " miniaturizable option releasedWhenClosed restorable selectable selector style title titled"
    " type"
).split()
ATTRIBUTE = re.compile(r' (\w+)="([^"]*)"')
TAG = re.compile(r"<(\w+)((?: [\w-]+=\"[^\"]*\")*)(/?)>")
OPPOSITE = {"YES": "NO", "NO": "YES"}
# Where attributes of the same name only tell how the file is stored, or how something looks.
STORED = {"deployment", "plugIn", "capability", "document", "image", "box", "scroller"}


def interface_changes(path, content):
    """Each once, in the order of the file."""
    ids = re.findall(r'<(\w+)[^>]* id="([^"]*)"', content)
    made = {}
    for kind, start, end, new in _edits(content, ids):
        changed = content[:start] + new + content[end:]
        first, last = content.rfind("\n", 0, start) + 1, content.find("\n", end)
        before = content[first:last].strip()
        after = changed[first : last + len(changed) - len(content)].strip()
        line = content.count("\n", 0, start) + 1
        made.setdefault(changed, Change(path, kind, line, before, after, changed))
    return list(made.values())


def _edits(content, ids):
    for tag in TAG.finditer(content):
        name, start = tag[1], tag.start()
        if name in ("outlet", "action"):
            yield "dropped", start, tag.end(), ""
        elif name == "string":
            yield "dropped", start, content.index("</string>", start) + len("</string>"), ""
        for attribute in ATTRIBUTE.finditer(content, start, tag.end()):
            yield from _attribute_edits(name, attribute, ids)


def _attribute_edits(tag, attribute, ids):
    key, value = attribute[1], attribute[2]
    start, end = attribute.start(2), attribute.end(2)
    if key in ("destination", "target"):
        yield "connected", start, end, _another(value, ids)
    elif key == "property" and tag == "outlet":
        yield "changed", start, end, f"{value}2"
    elif key in MEANING and tag not in STORED:
        if key != "title":
            yield "dropped", attribute.start(), attribute.end(), ""
        yield "changed", start, end, OPPOSITE.get(value, f"{value}~")


def _another(identifier, ids):
    """The next element of the same kind, or of any if there is only one."""
    kind = next(tag for tag, each in ids if each == identifier) if identifier[0] != "-" else ""
    others = [each for tag, each in ids if tag == kind]
    if len(others) < 2:
        others = [each for _, each in ids]
    return others[(others.index(identifier) + 1) % len(others)]
