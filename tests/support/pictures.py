"""Reads the pixels of the display."""

import subprocess


class Picture:
    """A picture of an area of the display. The area is x, y, width and height in pixels."""

    def __init__(self, area):
        self.area = area
        x, y, self.width, self.height = area
        self.bytes = subprocess.run(
            ["import", "-window", "root", "-crop", f"{self.width}x{self.height}+{x}+{y}", "+repage", "-depth", "8",
             "rgb:-"], check=True, capture_output=True, stdin=subprocess.DEVNULL).stdout

    def pixel(self, x, y):
        """Returns red, green and blue of a pixel. The position is relative to the display, not to the picture."""
        start = ((y - self.area[1]) * self.width + x - self.area[0]) * 3
        return tuple(self.bytes[start:start + 3])

    def row(self, y, left, right):
        return [self.pixel(x, y) for x in range(left, right)]

    def column(self, x, top, bottom):
        return [self.pixel(x, y) for y in range(top, bottom)]

    def differences(self, other, covered=(0, 0, 0, 0), margin=0):
        """Returns the positions of pixels that differ from another picture of the same area. Ignores the `covered`
        rectangle with its margin."""
        left, top = covered[0] - margin, covered[1] - margin
        right, bottom = covered[0] + covered[2] + margin, covered[1] + covered[3] + margin
        found = []
        for y in range(self.area[1], self.area[1] + self.height):
            start = (y - self.area[1]) * self.width * 3
            line = slice(start, start + self.width * 3)
            if self.bytes[line] == other.bytes[line]:
                continue
            found += [(x, y) for x in range(self.area[0], self.area[0] + self.width)
                      if not (left <= x < right and top <= y < bottom) and self.pixel(x, y) != other.pixel(x, y)]
        return found

    def brightness(self):
        """Returns the average brightness, from 0 (black) to 1 (white)."""
        return sum(self.bytes) / len(self.bytes) / 255

    def brightest(self):
        return max(self.bytes)
