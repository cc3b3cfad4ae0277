"""The slabs and the boards they are split into."""

from dataclasses import dataclass

from . import blocks
from .grid import CORRIDOR, ROOMS_NORTH, ROOMS_SOUTH, STAIRS, XS, YS, bays, column_cut, slab_rect
from .outlines import NE, NW, SE, SOUTH, SW, Rect, area, fillet, outline
from .shapes import DOWN, Circle, Hatch, Insert, Line, Polyline, Text

WIDTHS = {  # of the boards of a slab, from south to north
    ROOMS_SOUTH: (1800.0, 1800.0, 1540.0),
    CORRIDOR: (1920.0,),
    ROOMS_NORTH: (1600.0, 1600.0, 1640.0),
}
JOINT = 40.0
THICKNESS = 60.0
BLOCK_SLABS = {(1, ROOMS_NORTH): "mirrored", (4, ROOMS_NORTH): "plain", (5, ROOMS_NORTH): "below"}
BALCONIES = (0, 2, 5)


@dataclass
class Board:
    """What the quantities table counts."""

    number: str
    size: tuple  # of the rectangle around it
    area: float  # mm²


def draw(drawing) -> list:
    """Draws all slabs; returns their boards."""
    boards = []
    for i, j in bays():
        if (i, j) == STAIRS:
            continue
        if (i, j) in BLOCK_SLABS:
            boards += _slab_of_blocks(drawing, i, BLOCK_SLABS[i, j])
        else:
            boards += _slab(drawing, i, j)
    for i in BALCONIES:
        boards.append(_balcony(drawing, i))
    return boards


def number(edge: bool, span: float, width: float) -> str:
    """Number as the trade gives it: edge or middle board, thicknesses in cm, size in dm."""
    return f"DBS{1 if edge else 2}-67-{span // 100:.0f}{width // 100:.0f}"


def _slab(drawing, i: int, j: int) -> list:
    slab = slab_rect(i, j)
    widths = WIDTHS[j]
    boards = []
    y = slab.y0
    for k, width in enumerate(widths):
        first, last = k == 0, k == len(widths) - 1
        corners = {}
        if first:
            corners |= {SW: column_cut(i, j), SE: column_cut(i + 1, j)}
        if last:
            corners |= {NE: column_cut(i + 1, j + 1), NW: column_cut(i, j + 1)}
        recesses = {} if first or last or i % 2 else {SOUTH: 60.0}
        rect = Rect(slab.x0, y, slab.x1, y + width)
        name = number(first or last, XS[i + 1] - XS[i], width)
        boards.append(_board(drawing, rect, outline(rect, corners, recesses), name,
                             layer="BOARD" if j == CORRIDOR else "板轮廓"))
        y += width + JOINT
    if j == CORRIDOR:
        _hatch(drawing, drawing.shapes[-1], boards[-1])
    return boards


def _board(drawing, rect: Rect, vertices: list, name: str, layer: str) -> Board:
    drawing.shapes += [
        *_trusses(rect),
        *_openings(rect, layer),
        Insert(blocks.HOOK, (rect.x0 + 700.0, rect.y0 + 350.0), layer="吊点", columns=2, rows=2,
               spacing=(rect.size[0] - 1400.0, rect.size[1] - 700.0)),
        Text((rect.center[0], rect.center[1] + 150.0), 200.0, name, style="HZ", centered=True,
             layer="板编号"),
        Polyline(vertices, layer=layer, xdata=[("ORN_BOARD", [
            (1000, name), (1040, THICKNESS), (1070, len(vertices))])]),
    ]
    return Board(name, rect.size, area(vertices))


def _trusses(rect: Rect) -> list:
    """Lattice girders along the span, at most 600 apart."""
    count = int(rect.size[1] // 600)
    step = rect.size[1] / (count + 1)
    return [Line((rect.x0 + 50.0, rect.y0 + step * k), (rect.x1 - 50.0, rect.y0 + step * k),
                 layer="桁架") for k in range(1, count + 1)]


def _openings(rect: Rect, layer: str) -> list:
    """A round opening for a pipe; in the corridor also a wide ring, as donuts are drawn."""
    x, y = rect.x0 + 900.0, rect.center[1]
    if layer == "BOARD":
        return [Polyline([(x - 75.0, y, 1.0), (x + 75.0, y, 1.0)], width=20.0, layer="预留洞")]
    return [Circle((x, y), 55.0, layer="预留洞")]


def _hatch(drawing, board: Polyline, record: Board) -> None:
    """Corridor boards are hatched around their number, behind everything else."""
    xs = [x for x, _, _ in board.vertices]
    ys = [y for _, y, _ in board.vertices]
    x, y = (min(xs) + max(xs)) / 2, (min(ys) + max(ys)) / 2 + 150.0
    half = len(record.number) * 80.0
    window = Rect(x - half, y - 150.0, x + half, y + 150.0).vertices()
    hatch = Hatch([board.vertices, window], "ANSI31", [(45.0, 150.0)], layer="板填充")
    drawing.shapes.append(hatch)
    drawing.to_back.append(hatch)


def _slab_of_blocks(drawing, i: int, placing: str) -> list:
    slab = slab_rect(i, ROOMS_NORTH)
    reference = Insert(blocks.SLAB, (slab.x0, slab.y0), layer="板轮廓")
    if placing == "mirrored":
        reference.at, reference.scale = (slab.x1, slab.y0), (-1.0, 1.0)
    elif placing == "below":
        # Seen from below: x runs the other way in the reference's own coordinates.
        reference.at, reference.extrusion = (-slab.x1, slab.y0), DOWN
    drawing.shapes.append(reference)
    vertices = drawing.blocks[blocks.BOARD].shapes[0].vertices
    size = (blocks.BOARD_LENGTH, blocks.BOARD_WIDTH)
    return [Board(blocks.BOARD, size, area(vertices)) for _ in range(3)]


def _balcony(drawing, i: int) -> Board:
    rect = Rect(XS[i] + 300.0, YS[0] - 1400.0, XS[i + 1] - 300.0, YS[0] - 110.0)
    vertices = outline(rect, {SW: fillet(300.0), SE: fillet(300.0)})
    name = f"YTB-{(XS[i + 1] - XS[i]) // 100}13"
    return _board(drawing, rect, vertices, name, layer="BOARD")
