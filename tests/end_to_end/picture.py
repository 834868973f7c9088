"""Pictures of a virtual screen, read from the frame buffer that Xvfb keeps in a file."""

import struct
import zlib
from dataclasses import dataclass


@dataclass(frozen=True)
class Rectangle:
    """In pixels, counted from the upper left corner."""

    x: int
    y: int
    width: int
    height: int

    @property
    def center(self):
        return self.x + self.width // 2, self.y + self.height // 2

    def within(self, outer):
        left, top = max(self.x, 0), max(self.y, 0)
        right = min(self.x + self.width, outer.width)
        bottom = min(self.y + self.height, outer.height)
        return Rectangle(left, top, max(right - left, 0), max(bottom - top, 0))


class Picture:
    """Four bytes per pixel: blue, green, red, and one that means nothing."""

    def __init__(self, width, height, pixels):
        self.width, self.height, self.pixels = width, height, pixels

    @classmethod
    def of_screen(cls, frame_buffer, area):
        """`frame_buffer` holds an X window dump; `area` is cut out of it."""
        (header, _, _, _, width, height, _, _, _, _, _, depth, line) = struct.unpack_from(
            ">13I", frame_buffer
        )
        (colors,) = struct.unpack_from(">I", frame_buffer, 76)
        if depth != 32:
            raise ValueError(f"the screen has {depth} bits per pixel, not 32")
        start = header + colors * 12
        area = Rectangle(area.x, area.y, area.width, area.height)
        if area.x < 0 or area.y < 0 or area.x + area.width > width or area.y + area.height > height:
            raise ValueError(f"{area} is not wholly on the screen of {width} x {height}")
        pixels = bytearray()
        for row in range(area.y, area.y + area.height):
            first = start + row * line + area.x * 4
            pixels += frame_buffer[first : first + area.width * 4]
        return cls(area.width, area.height, bytes(pixels))

    def color(self, x, y):
        """Blue, green and red."""
        first = (y * self.width + x) * 4
        return self.pixels[first : first + 3]

    def without(self, areas):
        """The same picture with some areas blanked."""
        pixels = bytearray(self.pixels)
        for area in (area.within(self) for area in areas):
            for row in range(area.y, area.y + area.height):
                first = (row * self.width + area.x) * 4
                pixels[first : first + area.width * 4] = bytes(area.width * 4)
        return Picture(self.width, self.height, bytes(pixels))

    def __eq__(self, other):
        if not isinstance(other, Picture):
            return NotImplemented
        return (self.width, self.height, self.pixels) == (other.width, other.height, other.pixels)

    def save(self, path):
        """Writes a PNG file."""
        lines = bytearray()
        for row in range(self.height):
            line = self.pixels[row * self.width * 4 : (row + 1) * self.width * 4]
            colors = bytearray(self.width * 3)
            colors[0::3], colors[1::3], colors[2::3] = line[2::4], line[1::4], line[0::4]
            lines += b"\0" + colors
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(
            b"\x89PNG\r\n\x1a\n"
            + _chunk(b"IHDR", header)
            + _chunk(b"IDAT", zlib.compress(bytes(lines), 6))
            + _chunk(b"IEND", b"")
        )


def _chunk(kind, content):
    checksum = zlib.crc32(kind + content)
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", checksum)
