"""Puts the sample floor plan together."""

from . import blocks, boards, building, sheet
from .shapes import DimStyle, Drawing, Layer, Linetype, TextStyle

LAYERS = [
    Layer("0"),
    Layer("Defpoints", plot=False),
    Layer("轴线", 1, "CENTER", 13),
    Layer("轴号", 3),
    Layer("墙体", 2, lineweight=50),
    Layer("梁", 4, "DASHED", 18),
    Layer("柱", 8, lineweight=35),
    Layer("板轮廓", 3, lineweight=35),
    Layer("BOARD", 5, lineweight=35),
    Layer("板编号", 6),
    Layer("板填充", 9, lineweight=9),
    Layer("预留洞", 1),
    Layer("吊点", 30),
    Layer("桁架", 8, "DASHED", 9),
    Layer("门窗", 4),
    Layer("楼梯", 2),
    Layer("雨篷", 150),
    Layer("景观", 94),
    Layer("标注", 3, lineweight=13),
    Layer("表格", 7),
    Layer("文字", 7),
    Layer("图框", 7, lineweight=70),
    Layer("家具", 40, off=True),
    Layer("旧版", 8, frozen=True),
    Layer("建筑底图", 9, locked=True),
    Layer("辅助线", 8, "PHANTOM", plot=False),
]

LINETYPES = [
    Linetype("BYBLOCK", "", []),
    Linetype("BYLAYER", "", []),
    Linetype("CONTINUOUS", "Solid line", []),
    Linetype("CENTER", "Center ____ _ ____ _ ____", [31.75, -6.35, 6.35, -6.35]),
    Linetype("DASHED", "Dashed __ __ __ __", [12.7, -6.35]),
    Linetype("PHANTOM", "Phantom _____ _ _ _____", [31.75, -6.35, 6.35, -6.35, 6.35, -6.35]),
]

TEXT_STYLES = [
    TextStyle("Standard", "txt"),
    TextStyle("HZ", "tssdeng.shx", "hztxt.shx", 0.7),
    TextStyle("宋体", "simsun.ttc"),
    TextStyle("", "ltypeshp.shx"),
]

DIM_STYLES = [
    DimStyle("Standard", 2.5, 2.5, 0.625, 0.625, "Standard"),
    DimStyle(sheet.DIM_STYLE, 250.0, 120.0, 200.0, 80.0, "HZ"),
]


def floor_plan() -> Drawing:
    drawing = Drawing(LAYERS, LINETYPES, TEXT_STYLES, DIM_STYLES, ["ORN_BOARD"])
    blocks.define_all(drawing)
    building.draw(drawing)
    listed = boards.draw(drawing)
    sheet.draw(drawing, listed)
    drawing.groups["标准间"] = [shape for shape in drawing.shapes
                             if getattr(shape, "xdata", None)][:3]
    return drawing
