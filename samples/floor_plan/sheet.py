"""What stands around the plan: quantities table, notes, dimensions, frame and title block."""

from collections import defaultdict

from .grid import XS, YS
from .outlines import Rect
from .shapes import Block, Dimension, Line, MText, Polyline, Text

FRAME = Rect(-5200.0, -5200.0, 37200.0, 17600.0)
DIM_STYLE = "建筑100"

TABLE_LEFT, TABLE_TOP = 26200.0, 14800.0
COLUMN_WIDTHS = (3600.0, 2600.0, 1400.0, 2600.0)
ROW_HEIGHT, TEXT_HEIGHT = 600.0, 280.0

NOTES = (
    "{\\fSimSun|b1|i0|c134|p2;说明：}\\P"
    "1. 本层采用桁架钢筋混凝土叠合板，预制层厚60mm，现浇层厚70mm。\\P"
    "2. 板编号DBS1为边板，DBS2为中板；其后为厚度、标志跨度(dm)与标志宽度(dm)。\\P"
    "3. 预制板搁置长度10mm，板缝宽40mm；板角避让柱边净距10mm。\\P"
    "4. 预留洞直径%%c110，吊点距板端700mm，安装前须与设备专业核对。\\P"
    "5. 面积按板轮廓计算，单位为m\\U+00B2；\\C1;红色\\C256;为预留洞，虚线为桁架筋。\\P"
    "6. 楼梯间不设叠合板，做法见{\\L楼梯大样}；阳台坡度\\S1/100;，尺寸单位均为毫米。\\P"
    "7. 阳台板YTB为悬挑构件，外侧转角半径300mm；雨篷与景观仅为示意。"
)


def draw(drawing, boards: list) -> None:
    frame = Polyline(FRAME.vertices(), width=60.0, layer="图框")
    drawing.shapes += [frame, *_table(boards), _notes()]
    _dimensions(drawing)
    drawing.paper += _title_block()


def _rows(boards: list) -> list:
    kinds = defaultdict(list)
    for board in boards:
        kinds[board.number, board.size].append(board.area)
    rows = [(number, f"{length:.0f}×{width:.0f}", str(len(areas)), f"{sum(areas) / 1e6:.3f}")
            for (number, (length, width)), areas in sorted(kinds.items())]
    total = sum(board.area for board in boards) / 1e6
    return [("编号", "规格", "数量", "面积(m²)"), *rows, ("合计", "", str(len(boards)), f"{total:.3f}")]


def _table(boards: list) -> list:
    rows = _rows(boards)
    edges = [TABLE_LEFT + sum(COLUMN_WIDTHS[:k]) for k in range(len(COLUMN_WIDTHS) + 1)]
    levels = [TABLE_TOP - ROW_HEIGHT * k for k in range(len(rows) + 1)]
    title = Text(((edges[0] + edges[-1]) / 2, TABLE_TOP + 500.0), 450.0, "板材统计表", style="HZ",
                 centered=True, layer="表格")
    shapes = [title]
    shapes += [Line((edges[0], y), (edges[-1], y), layer="表格") for y in levels]
    shapes += [Line((x, levels[0]), (x, levels[-1]), layer="表格") for x in edges]
    for row, level in zip(rows, levels):
        for value, x0, x1 in zip(row, edges, edges[1:]):
            if value:
                at = ((x0 + x1) / 2, level - ROW_HEIGHT / 2)
                shapes.append(Text(at, TEXT_HEIGHT, value, style="HZ", centered=True,
                                   layer="表格"))
    return shapes


def _notes() -> MText:
    return MText((TABLE_LEFT, 3400.0), 300.0, NOTES, sum(COLUMN_WIDTHS), style="宋体", layer="文字")


def _dimensions(drawing) -> None:
    for x0, x1 in [*zip(XS, XS[1:]), (XS[0], XS[-1])]:
        level = -2600.0 if x1 - x0 < 5000 else -3200.0
        _dimension(drawing, (float(x0), -1600.0), (float(x1), -1600.0), level, rotation=0.0)
    for y0, y1 in zip(YS, YS[1:]):
        _dimension(drawing, (-1600.0, float(y0)), (-1600.0, float(y1)), -2600.0, rotation=90.0)


def _dimension(drawing, first, second, level: float, rotation: float) -> None:
    """`level` is the y of a horizontal dimension's line, the x of a vertical one's."""
    vertical = rotation == 90.0
    ends = [(level, p[1]) if vertical else (p[0], level) for p in (first, second)]
    middle = tuple((a + b) / 2 for a, b in zip(*ends))
    text_at = (middle[0] - 250.0, middle[1]) if vertical else (middle[0], middle[1] + 250.0)
    length = abs(second[1] - first[1]) if vertical else abs(second[0] - first[0])
    ticks = [Line((x - 80.0, y - 80.0), (x + 80.0, y + 80.0)) for x, y in ends]
    name = f"*D{sum(block.startswith('*D') for block in drawing.blocks) + 1}"
    drawing.add_block(Block(name, [
        Line(first, ends[0]),
        Line(second, ends[1]),
        Line(*ends),
        *ticks,
        Text(text_at, 250.0, f"{length:.0f}", centered=True, rotation=rotation),
    ]))
    drawing.shapes.append(Dimension(first, second, ends[1], text_at, rotation, length, DIM_STYLE,
                                    name, layer="标注"))


def _title_block() -> list:
    border = Rect(25.0, 5.0, 415.0, 292.0)
    title = Rect(235.0, 5.0, 415.0, 45.0)
    return [
        Polyline(border.vertices(), width=0.7, layer="图框"),
        Polyline(title.vertices(), layer="图框"),
        Line((235.0, 25.0), (415.0, 25.0), layer="图框"),
        Text((325.0, 35.0), 7.0, "三层预制板平面布置图", style="HZ", centered=True, layer="文字"),
        Text((325.0, 15.0), 5.0, "1:100", centered=True, layer="文字"),
    ]
