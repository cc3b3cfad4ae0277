"""The building's grid: axes, bays and what stands on their crossings. Millimetres."""

from .outlines import EDGE_TO_AXIS, Rect, notch, round_column

XS = (0, 3600, 7200, 11400, 15600, 19200, 22800)  # axes 1 to 7
YS = (0, 5400, 7500, 12600)  # axes A to D
ROOMS_SOUTH, CORRIDOR, ROOMS_NORTH = range(3)  # rows of bays
STAIRS = (2, ROOMS_NORTH)

HALF_WALL = 100
COLUMN_RADIUS = 200  # inside; half the side of the square columns round the building
CLEARANCE = 10


def bays():
    """(column, row) of every bay."""
    return [(i, j) for j in range(len(YS) - 1) for i in range(len(XS) - 1)]


def bay_rect(i: int, j: int, inset: float) -> Rect:
    return Rect(XS[i] + inset, YS[j] + inset, XS[i + 1] - inset, YS[j + 1] - inset)


def slab_rect(i: int, j: int) -> Rect:
    return bay_rect(i, j, EDGE_TO_AXIS)


def is_round(i: int, j: int) -> bool:
    """Whether the column on the crossing of axes i and j is round."""
    return 0 < i < len(XS) - 1 and 0 < j < len(YS) - 1


def column_cut(i: int, j: int):
    """How a board's corner gives way to the column on that crossing."""
    if is_round(i, j):
        return round_column(COLUMN_RADIUS + CLEARANCE)
    return notch(COLUMN_RADIUS + CLEARANCE - EDGE_TO_AXIS)
