"""Everything but the boards: axes, walls, columns, doors, stairs and the site."""

from . import blocks
from .grid import (COLUMN_RADIUS, CORRIDOR, HALF_WALL, ROOMS_NORTH, ROOMS_SOUTH, STAIRS, XS, YS,
                   bay_rect, bays, is_round)
from .outlines import Rect
from .shapes import (DOWN, Arc, Circle, Ellipse, Hatch, Insert, Line, Point, Polyline, Spline,
                     Text)

DOOR_FROM, DOOR_TO = 600, 1500  # from the bay's left axis
LAST_COLUMN = len(XS) - 2


def draw(drawing) -> None:
    for part in (_axes, _walls, _beams, _columns, _doors, _windows, _stairs, _site, _furniture,
                 _leftovers):
        drawing.shapes += part()


def _bubble(name: str, at) -> Insert:
    text = Text(at, 400.0, name, style="HZ", centered=True, layer="轴号")
    return Insert(blocks.BUBBLE, at, layer="轴号", attributes=[("编号", text)])


def _axes() -> list:
    shapes = []
    for number, x in enumerate(XS, start=1):
        shapes += [Line((x, -3600.0), (x, YS[-1] + 1200.0), layer="轴线"),
                   _bubble(str(number), (float(x), -4000.0))]
    for letter, y in zip("ABCD", YS):
        shapes += [Line((-3600.0, y), (XS[-1] + 1200.0, y), layer="轴线"),
                   _bubble(letter, (-4000.0, float(y)))]
    return shapes


def _walls() -> list:
    face = Rect(-HALF_WALL, -HALF_WALL, XS[-1] + HALF_WALL, YS[-1] + HALF_WALL)
    shapes = [Polyline(face.vertices(), layer="墙体")]
    for i, j in bays():
        room = bay_rect(i, j, HALF_WALL)
        ends = (i == 0, i == LAST_COLUMN)
        if j != CORRIDOR or ends[0]:
            shapes.append(Line((room.x0, room.y0), (room.x0, room.y1), layer="墙体"))
        if j != CORRIDOR or ends[1]:
            shapes.append(Line((room.x1, room.y0), (room.x1, room.y1), layer="墙体"))
        shapes += _wall_with_door(i, room, room.y0, door=j != ROOMS_SOUTH)
        shapes += _wall_with_door(i, room, room.y1, door=j != ROOMS_NORTH)
    for i in range(LAST_COLUMN + 1):
        for axis in YS[1:3]:
            shapes += [Line((XS[i] + at, axis - HALF_WALL), (XS[i] + at, axis + HALF_WALL),
                            layer="墙体") for at in (DOOR_FROM, DOOR_TO)]
    return shapes


def _wall_with_door(i: int, room: Rect, y: float, door: bool) -> list:
    if not door:
        return [Line((room.x0, y), (room.x1, y), layer="墙体")]
    return [Line((room.x0, y), (XS[i] + DOOR_FROM, y), layer="墙体"),
            Line((XS[i] + DOOR_TO, y), (room.x1, y), layer="墙体")]


def _beams() -> list:
    return [Line((XS[0], axis + side), (XS[-1], axis + side), layer="梁")
            for axis in YS[1:3] for side in (-125, 125)]


def _columns() -> list:
    shapes = []
    for i, x in enumerate(XS):
        for j, y in enumerate(YS):
            if is_round(i, j):
                circle = [(x - COLUMN_RADIUS, y, 1.0), (x + COLUMN_RADIUS, y, 1.0)]
                shapes += [Circle((x, y), COLUMN_RADIUS, layer="柱"),
                           Hatch([circle], layer="柱")]
            else:
                square = Rect(x - COLUMN_RADIUS, y - COLUMN_RADIUS, x + COLUMN_RADIUS,
                              y + COLUMN_RADIUS).vertices()
                shapes += [Polyline(square, layer="柱"), Hatch([square], layer="柱")]
    return shapes


def _doors() -> list:
    """Hinged left and right by turning, mirroring and an extrusion pointing down."""
    shapes = []
    for i, x in enumerate(XS[:-1]):
        south, north = YS[1] - HALF_WALL, YS[2] + HALF_WALL
        left, right = float(x + DOOR_FROM), float(x + DOOR_TO)
        if i % 2 == 0:
            shapes.append(Insert(blocks.DOOR, (left, south), scale=(1.0, -1.0), layer="门窗"))
        else:
            shapes.append(Insert(blocks.DOOR, (right, south), rotation=180.0, layer="门窗"))
        if i % 3 == 0:
            shapes.append(Insert(blocks.DOOR, (left, north), layer="门窗"))
        elif i % 3 == 1:
            shapes.append(Insert(blocks.DOOR, (right, north), scale=(-1.0, 1.0), layer="门窗"))
        else:
            shapes.append(Insert(blocks.DOOR, (-right, north), extrusion=DOWN, layer="门窗"))
    return shapes


def _windows() -> list:
    shapes = []
    for x0, x1 in zip(XS, XS[1:]):
        wide = (x1 - x0) / 3000.0
        for y in (YS[0], YS[-1]):
            shapes.append(Insert(blocks.WINDOW, ((x0 + x1) / 2, float(y)), scale=(wide, 1.0),
                                 layer="门窗"))
    for x in (XS[0], XS[-1]):
        shapes.append(Insert(blocks.WINDOW, (float(x), (YS[1] + YS[2]) / 2),
                             scale=(0.8, 1.0), rotation=90.0, layer="门窗"))
    return shapes


def _stairs() -> list:
    room = bay_rect(*STAIRS, HALF_WALL)
    x, y = room.x0 + 300.0, room.y0 + 400.0
    clip = [(x - 100.0, y - 50.0), (x + 3300.0, y + 4300.0)]
    arrow = [(x + 750.0, y, 0.0), (x + 750.0, y + 3600.0, 0.0)]
    return [
        Insert(blocks.STAIR_DETAIL, (x, y), layer="楼梯", clip=clip),
        Polyline(arrow, closed=False, width=20.0, layer="楼梯"),
        Text((x + 300.0, y - 250.0), 200.0, "上", style="HZ", layer="文字"),
        Insert(blocks.LEVEL, (room.center[0] - 600.0, room.y1 - 500.0), layer="文字"),
        Text((room.center[0] - 300.0, room.y1 - 250.0), 200.0, "%%p0.000", layer="文字"),
    ]


def _site() -> list:
    middle = (XS[3] + XS[4]) / 2
    canopy = [(middle - 1800.0, YS[-1] + 100.0, 0.0), (middle + 1800.0, YS[-1] + 100.0, 0.0),
              (middle + 1800.0, YS[-1] + 900.0, 0.5), (middle - 1800.0, YS[-1] + 900.0, 0.0)]
    path = [(middle, 15300.0), (middle + 1500.0, 15600.0), (middle + 2500.0, 14200.0),
            (middle + 4500.0, 14000.0), (middle + 6500.0, 15200.0)]
    bushes = [Ellipse((x, 14600.0), (500.0, 0.0), 0.6, layer="景观") for x in (2000.0, 4500.0)]
    kerb = Arc((9000.0, 16500.0), 2000.0, 225.0, 315.0, layer="景观")
    return [
        Polyline(canopy, old_style=True, layer="雨篷"),
        Spline(3, [0, 0, 0, 0, 0.5, 1, 1, 1, 1], path, layer="景观"),
        Ellipse((7000.0, 14600.0), (0.0, 500.0), 0.5, 0.0, 3.141592653589793, layer="景观"),
        *bushes,
        kerb,
        *(Point((x, y), layer="建筑底图") for x in (-2000.0, 25000.0) for y in (-1000.0, 14000.0)),
        Polyline([(-2500.0, -1500.0, 0.0), (25500.0, -1500.0, 0.0), (25500.0, 14500.0, 0.2),
                  (-2500.0, 14500.0, 0.0)], layer="建筑底图", linetype="DASHED"),
        Line((XS[0], YS[0]), (XS[-1], YS[-1]), layer="辅助线"),
        Line((XS[0], YS[-1]), (XS[-1], YS[0]), layer="辅助线"),
    ]


def _furniture() -> list:
    return [Insert(blocks.DESK, (x + 1200.0, 1200.0), rotation=turn, layer="家具")
            for x, turn in zip(XS[:-1], (0.0, 15.0, 90.0, 0.0, 270.0, 345.0))]


def _leftovers() -> list:
    """Boards of an earlier revision, on a frozen layer."""
    return [Polyline(Rect(x + 90.0, 90.0, x + 1290.0, 5310.0).vertices(), layer="旧版")
            for x in XS[:2]]
