"""Outlines of boards: rectangles whose corners are cut or rounded and whose edges are recessed."""

import math
from dataclasses import dataclass

SW, SE, NE, NW = range(4)
SOUTH, EAST, NORTH, WEST = range(4)
DIRECTIONS = ((1, 0), (0, 1), (-1, 0), (0, -1))  # of the four edges, counter-clockwise

EDGE_TO_AXIS = 90.0  # a board reaches 10 into a wall whose face is 100 from the axis


@dataclass(frozen=True)
class Rect:
    x0: float
    y0: float
    x1: float
    y1: float

    @property
    def corners(self):
        return ((self.x0, self.y0), (self.x1, self.y0), (self.x1, self.y1), (self.x0, self.y1))

    @property
    def center(self):
        return ((self.x0 + self.x1) / 2, (self.y0 + self.y1) / 2)

    @property
    def size(self):
        return (self.x1 - self.x0, self.y1 - self.y0)

    def vertices(self):
        return [(x, y, 0.0) for x, y in self.corners]


def along(point, *moves):
    """`point` after moves of (direction, distance)."""
    x, y = point
    for (dx, dy), distance in moves:
        x, y = x + dx * distance, y + dy * distance
    return x, y


def notch(depth: float):
    """Corner cut out as a square, as for a rectangular column."""

    def cut(corner, arriving, leaving):
        start = along(corner, (arriving, -depth))
        return [(*start, 0.0), (*along(start, (leaving, depth)), 0.0),
                (*along(corner, (leaving, depth)), 0.0)]

    return cut


def fillet(radius: float):
    """Corner rounded outwards."""

    def cut(corner, arriving, leaving):
        return [(*along(corner, (arriving, -radius)), math.tan(math.pi / 8)),
                (*along(corner, (leaving, radius)), 0.0)]

    return cut


def round_column(radius: float):
    """Corner cut by a circle about the crossing of the axes."""

    def cut(corner, arriving, leaving):
        reach = math.sqrt(radius**2 - EDGE_TO_AXIS**2) - EDGE_TO_AXIS
        sweep = math.pi / 2 - 2 * math.asin(EDGE_TO_AXIS / radius)
        return [(*along(corner, (arriving, -reach)), -math.tan(sweep / 4)),
                (*along(corner, (leaving, reach)), 0.0)]

    return cut


def outline(rect: Rect, corners: dict | None = None, recesses: dict | None = None) -> list:
    """Counter-clockwise vertices of a rectangle.

    `corners` maps SW .. NW to a cut, `recesses` SOUTH .. WEST to the radius of a half circle cut
    into the middle of that edge.
    """
    vertices = []
    for index, corner in enumerate(rect.corners):
        arriving, leaving = DIRECTIONS[index - 1], DIRECTIONS[index]
        cut = (corners or {}).get(index)
        vertices += cut(corner, arriving, leaving) if cut else [(*corner, 0.0)]
        radius = (recesses or {}).get(index)
        if radius:
            far = rect.corners[(index + 1) % 4]
            middle = ((corner[0] + far[0]) / 2, (corner[1] + far[1]) / 2)
            vertices += [(*along(middle, (leaving, -radius)), -1.0),
                         (*along(middle, (leaving, radius)), 0.0)]
    return vertices


def area(vertices: list) -> float:
    """Area in square millimetres of a closed counter-clockwise outline, arcs included."""
    total = 0.0
    for (x0, y0, bulge), (x1, y1, _) in zip(vertices, vertices[1:] + vertices[:1]):
        total += (x0 * y1 - x1 * y0) / 2
        if bulge:
            sweep = 4 * math.atan(bulge)
            radius = math.hypot(x1 - x0, y1 - y0) * (1 + bulge**2) / (4 * bulge)
            total += radius**2 * (sweep - math.sin(sweep)) / 2
    return total
