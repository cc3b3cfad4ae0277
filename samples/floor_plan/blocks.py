"""Block definitions of the floor plan."""

from .outlines import NE, NORTH, SE, SW, Rect, fillet, notch, outline
from .shapes import (Arc, AttributeDefinition, Block, Circle, Drawing, Ellipse, Insert, Line,
                     Polyline, Solid, Text)

HOOK, DOOR, WINDOW, BUBBLE, DESK = "吊钩", "M0921", "C1515", "轴号", "书桌"
LEVEL, STAIR_DETAIL = "标高", "楼梯大样"
BOARD, SLAB = "DBS1-67-3616", "楼板-3651"

BOARD_LENGTH, BOARD_WIDTH, BOARD_JOINT = 3420.0, 1600.0, 60.0


def define_all(drawing: Drawing) -> None:
    for make in (_hook, _door, _window, _bubble, _desk, _level, _board, _slab, _stair_detail,
                 _old_node):
        drawing.add_block(make())
    drawing.add_block(Block("空块"))


def _hook() -> Block:
    """Lifting hook; most of it on layer 0, so that it takes the layer of its reference."""
    return Block(HOOK, [
        Circle((0.0, 0.0), 40.0),
        Line((-60.0, 0.0), (60.0, 0.0)),
        Line((0.0, -60.0), (0.0, 60.0)),
        Arc((0.0, 0.0), 70.0, 200.0, 340.0, layer="吊点"),
    ])


def _door() -> Block:
    """Hinge at the origin, opening along +x, leaf swung to +y."""
    leaf = Rect(0.0, 0.0, 40.0, 900.0)
    return Block(DOOR, [Polyline(leaf.vertices()), Arc((0.0, 0.0), 900.0, 0.0, 90.0)])


def _window() -> Block:
    frame = Rect(-750.0, -100.0, 750.0, 100.0)
    return Block(WINDOW, [
        Polyline(frame.vertices()),
        Line((-750.0, -35.0), (750.0, -35.0)),
        Line((-750.0, 35.0), (750.0, 35.0)),
    ])


def _bubble() -> Block:
    return Block(BUBBLE, [
        Circle((0.0, 0.0), 400.0),
        AttributeDefinition((0.0, 0.0), 400.0, "编号", "轴线编号", "1", style="HZ"),
    ])


def _desk() -> Block:
    """Drawn about a far corner: the base point is not the origin."""
    top = Rect(100000.0, 50000.0, 101400.0, 50700.0)
    return Block(DESK, [
        Polyline(outline(top, {SW: fillet(80.0), SE: fillet(80.0)})),
        Circle((100700.0, 49700.0), 230.0),
        Ellipse((101100.0, 50400.0), (150.0, 0.0), 0.5),
    ], base=(100000.0, 50000.0))


def _level() -> Block:
    return Block(LEVEL, [
        Solid([(0.0, 0.0), (-150.0, 200.0), (150.0, 200.0)]),
        Line((-150.0, 200.0), (1500.0, 200.0)),
    ])


def _board() -> Block:
    rect = Rect(0.0, 0.0, BOARD_LENGTH, BOARD_WIDTH)
    vertices = outline(rect, {SW: notch(120.0), SE: notch(120.0), NE: fillet(50.0)},
                       {NORTH: 75.0})
    hooks = [Insert(HOOK, (x, y), layer="吊点", rotation=turn, scale=(1.0, sy))
             for x, turn in ((700.0, 0.0), (BOARD_LENGTH - 700.0, 90.0))
             for y, sy in ((350.0, 1.0), (BOARD_WIDTH - 350.0, -1.0))]
    mid = (rect.center[0], rect.center[1] + 150.0)
    return Block(BOARD, [
        Polyline(vertices, layer="板轮廓"),
        Polyline(Rect(300.0, 300.0, 500.0, 500.0).vertices()),
        Circle((BOARD_LENGTH / 2, 400.0), 55.0, layer="预留洞"),
        Text(mid, 200.0, BOARD, style="HZ", centered=True, layer="板编号"),
        *hooks,
    ])


def _slab() -> Block:
    """Three boards: as they are, mirrored, turned by half a circle."""
    step = BOARD_WIDTH + BOARD_JOINT
    return Block(SLAB, [
        Insert(BOARD, (0.0, 0.0)),
        Insert(BOARD, (BOARD_LENGTH, step), scale=(-1.0, 1.0)),
        Insert(BOARD, (BOARD_LENGTH, 2 * step + BOARD_WIDTH), rotation=180.0),
    ])


def _stair_detail() -> Block:
    """Two flights that run past what is shown; the references clip them."""
    treads = [Line((x, y), (x + 1500.0, y), layer="楼梯")
              for x in (0.0, 1700.0) for y in range(0, 6000, 280)]
    return Block(STAIR_DETAIL, [
        *treads,
        Polyline([(1500.0, 0.0, 0.0), (1500.0, 5500.0, -1.0), (1700.0, 5500.0, 0.0),
                  (1700.0, 0.0, 0.0)], closed=False, layer="楼梯"),
        Circle((1600.0, 2800.0), 300.0),
    ])


def _old_node() -> Block:
    """Left behind by an earlier revision; nothing refers to it."""
    return Block("旧节点", [
        Polyline([(0.0, 0.0, 1.0), (200.0, 0.0, 1.0)], layer="旧版"),
        Line((-100.0, 0.0), (300.0, 0.0), layer="旧版"),
    ])
