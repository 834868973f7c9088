"""Where the controls stand, read from the interface file that the application itself loads."""

import xml.etree.ElementTree as ElementTree

from picture import Rectangle


class InterfaceFile:
    def __init__(self, path):
        self._root = ElementTree.parse(path).getroot()
        self._parents = {child: parent for parent in self._root.iter() for child in parent}
        window = self._root.find(".//window")
        self.title = window.get("title")
        content = window.find("rect[@key='contentRect']")
        self.width, self.height = _number(content, "width"), _number(content, "height")

    def button(self, action):
        """The area of the button that sends this action, counted from the window's upper left."""
        for sent in self._root.iterfind(f".//action[@selector='{action}']"):
            return self._area(self._ancestor(sent, "button"))
        raise LookupError(f"no button sends {action}")

    def outlet(self, name):
        """The area of the control, or of the cell's control, that is connected to this outlet."""
        destination = self._root.find(f".//outlet[@property='{name}']").get("destination")
        return self._area(self._root.find(f".//*[@id='{destination}']"))

    def spinners(self):
        """Areas of everything that moves by itself."""
        return [self._area(each) for each in self._root.iter("progressIndicator")]

    def _ancestor(self, element, tag):
        while element.tag != tag:
            element = self._parents[element]
        return element

    def _area(self, view):
        """Sums the frames up to the page, which lies at the window's right; Cocoa counts them from
        the lower left corner."""
        x = y = 0
        size = None
        while view is not None:
            frame = view.find("rect[@key='frame']")
            if frame is not None:
                page = frame
                if size is None:
                    size = _number(frame, "width"), _number(frame, "height")
                x, y = x + _number(frame, "x"), y + _number(frame, "y")
            view = self._parents.get(view)
        x += self.width - _number(page, "width") - _number(page, "x")
        y -= _number(page, "y")
        return Rectangle(x, self.height - y - size[1], *size)


def _number(rect, key):
    return round(float(rect.get(key)))
