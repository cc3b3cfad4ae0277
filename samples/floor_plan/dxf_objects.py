"""Writes the objects behind a drawing: dictionaries, layouts, groups, draw order, clip boundaries."""

from .dxf_tags import Tags
from .shapes import Drawing

CLASSES = (
    ("ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", 0),
    ("ACDBPLACEHOLDER", "AcDbPlaceHolder", 0),
    ("LAYOUT", "AcDbLayout", 0),
    ("SORTENTSTABLE", "AcDbSortentsTable", 0),
    ("SPATIAL_FILTER", "AcDbSpatialFilter", 0),
)


def write_classes(tags: Tags) -> None:
    for record, cpp_name, flags in CLASSES:
        tags.add_all((0, "CLASS"), (1, record), (2, cpp_name), (3, "ObjectDBX Classes"),
                     (90, flags), (91, 1), (280, 0), (281, 0))


def write(tags: Tags, drawing: Drawing, clipped: list) -> None:
    root = tags.handle("root")
    _dictionary(tags, root, "0", [
        ("ACAD_GROUP", tags.handle("groups")),
        ("ACAD_LAYOUT", tags.handle("layouts")),
        ("ACAD_MLINESTYLE", tags.handle("mline styles")),
        ("ACAD_PLOTSTYLENAME", tags.handle("plot styles")),
    ])
    _groups(tags, drawing, root)
    _layouts(tags, root)
    _mline_styles(tags, root)
    _plot_styles(tags, root)
    if drawing.to_back:
        _draw_order(tags, drawing)
    for insert in clipped:
        _clip_boundary(tags, insert)


def _object(tags: Tags, kind: str, handle: str, owner: str) -> None:
    tags.add_all((0, kind), (5, handle))
    if owner != "0":
        tags.add_all((102, "{ACAD_REACTORS"), (330, owner), (102, "}"))
    tags.add(330, owner)


def _dictionary(tags: Tags, handle: str, owner: str, entries, owns: bool = False) -> None:
    _object(tags, "DICTIONARY", handle, owner)
    tags.add(100, "AcDbDictionary")
    if owns:
        tags.add(280, 1)
    tags.add(281, 1)
    for name, entry in entries:
        tags.add_all((3, name), (360 if owns else 350, entry))


def _groups(tags: Tags, drawing: Drawing, root: str) -> None:
    handle = tags.handle("groups")
    _dictionary(tags, handle, root,
                [(name, tags.handle(("group", name))) for name in drawing.groups])
    for name, members in drawing.groups.items():
        _object(tags, "GROUP", tags.handle(("group", name)), handle)
        tags.add_all((100, "AcDbGroup"), (300, ""), (70, 0), (71, 1))
        for member in members:
            tags.add(340, tags.handle(member))


def _layouts(tags: Tags, root: str) -> None:
    handle = tags.handle("layouts")
    spaces = (("Model", "*Model_Space"), ("布局1", "*Paper_Space"))
    _dictionary(tags, handle, root,
                [(name, tags.handle(("layout", space))) for name, space in spaces])
    for order, (name, space) in enumerate(spaces):
        _object(tags, "LAYOUT", tags.handle(("layout", space)), handle)
        _plot_settings(tags, model=order == 0)
        tags.add_all((100, "AcDbLayout"), (1, name), (70, 1), (71, order))
        tags.point(10, (0.0, 0.0), z=None)
        tags.point(11, (420.0, 297.0), z=None)
        tags.point(12, (0.0, 0.0))
        tags.point(14, (0.0, 0.0))
        tags.point(15, (420.0, 297.0))
        tags.add(146, 0.0)
        tags.point(13, (0.0, 0.0))
        tags.point(16, (1.0, 0.0))
        tags.point(17, (0.0, 1.0))
        tags.add_all((76, 0), (330, tags.handle(("BLOCK_RECORD", space))))


def _plot_settings(tags: Tags, model: bool) -> None:
    tags.add_all((100, "AcDbPlotSettings"), (1, ""), (2, "none_device"),
                 (4, "ISO_A3_(420.00_x_297.00_MM)"), (6, ""))
    tags.add_all(*((code, 7.5) for code in (40, 41, 42, 43)))
    tags.add_all((44, 420.0), (45, 297.0), (46, 0.0), (47, 0.0), (48, 0.0), (49, 0.0),
                 (140, 0.0), (141, 0.0), (142, 1.0), (143, 100.0), (70, 1024 if model else 0),
                 (72, 1), (73, 0), (74, 5), (7, ""), (75, 16), (147, 1.0), (148, 0.0),
                 (149, 0.0))


def _mline_styles(tags: Tags, root: str) -> None:
    handle, style = tags.handle("mline styles"), tags.handle("mline style")
    _dictionary(tags, handle, root, [("Standard", style)])
    _object(tags, "MLINESTYLE", style, handle)
    tags.add_all((100, "AcDbMlineStyle"), (2, "Standard"), (70, 0), (3, ""), (62, 256),
                 (51, 90.0), (52, 90.0), (71, 2))
    for offset in (0.5, -0.5):
        tags.add_all((49, offset), (62, 256), (6, "BYLAYER"))


def _plot_styles(tags: Tags, root: str) -> None:
    handle, style = tags.handle("plot styles"), tags.handle("plot style")
    _object(tags, "ACDBDICTIONARYWDFLT", handle, root)
    tags.add_all((100, "AcDbDictionary"), (281, 1), (3, "Normal"), (350, style),
                 (100, "AcDbDictionaryWithDefault"), (340, style))
    _object(tags, "ACDBPLACEHOLDER", style, handle)


def _draw_order(tags: Tags, drawing: Drawing) -> None:
    """Gives the shapes of `to_back` the lowest handles to sort by, in turn with their owners."""
    xdict, table = tags.handle("model xdict"), tags.handle("sort entities")
    model = tags.handle(("BLOCK_RECORD", "*Model_Space"))
    _dictionary(tags, xdict, model, [("ACAD_SORTENTS", table)], owns=True)
    _object(tags, "SORTENTSTABLE", table, xdict)
    tags.add_all((100, "AcDbSortentsTable"), (330, model))
    first = [tags.handle(shape) for shape in drawing.shapes[: len(drawing.to_back)]]
    back = [tags.handle(shape) for shape in drawing.to_back]
    for entity, sort_handle in [*zip(back, first), *zip(first, back)]:
        tags.add_all((331, entity), (5, sort_handle))


def _clip_boundary(tags: Tags, insert) -> None:
    xdict, filters = tags.handle(("xdict", insert)), tags.handle(("filters", insert))
    boundary = tags.handle(("boundary", insert))
    _dictionary(tags, xdict, tags.handle(insert), [("ACAD_FILTER", filters)], owns=True)
    _dictionary(tags, filters, xdict, [("SPATIAL", boundary)], owns=True)
    _object(tags, "SPATIAL_FILTER", boundary, filters)
    tags.add_all((100, "AcDbFilter"), (100, "AcDbSpatialFilter"), (70, len(insert.clip)))
    for corner in insert.clip:
        tags.point(10, corner, z=None)
    tags.point(210, (0.0, 0.0, 1.0))
    tags.point(11, (0.0, 0.0))
    tags.add_all((71, 1), (72, 0), (73, 0))
    # From the world to the block, for a reference that is neither turned nor scaled; then from
    # the world to the boundary's own coordinates, which are the world's.
    for at in (insert.at, (0.0, 0.0)):
        for row in ((1.0, 0.0, 0.0, -at[0]), (0.0, 1.0, 0.0, -at[1]), (0.0, 0.0, 1.0, 0.0)):
            for value in row:
                tags.add(40, float(value))
