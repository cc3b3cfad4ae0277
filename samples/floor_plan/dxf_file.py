"""Writes a drawing as a DXF file: header, tables, blocks, entities and objects."""

from . import dxf_objects
from .dxf_entities import EntityWriter
from .dxf_tags import Tags
from .shapes import Drawing

MODEL, PAPER = "*Model_Space", "*Paper_Space"
PAPER_SIZE = 420.0, 297.0  # A3, mm


def encode(drawing: Drawing, extents, modern: bool) -> bytes:
    """The file's bytes. `extents` is ((xmin, ymin), (xmax, ymax)) of model space."""
    return DxfFile(drawing, extents, modern).encoded()


class DxfFile:
    def __init__(self, drawing: Drawing, extents, modern: bool):
        self.drawing = drawing
        self.extents = extents
        self.modern = modern
        self.tags = Tags(modern)
        self.entities = EntityWriter(self.tags)

    def encoded(self) -> bytes:
        tags = self.tags
        tags.section("TABLES", self._tables)
        tags.section("BLOCKS", self._blocks)
        tags.section("ENTITIES", self._entities)
        if self.modern:
            tags.section("OBJECTS", lambda: dxf_objects.write(
                tags, self.drawing, self.entities.clipped))
        tags.add(0, "EOF")
        body, tags.lines = tags.lines, []
        # Only now are all handles known, hence the next free one.
        tags.section("HEADER", self._header)
        if self.modern:
            tags.section("CLASSES", lambda: dxf_objects.write_classes(tags))
        tags.lines += body
        return tags.encoded()

    def _header(self) -> None:
        tags = self.tags
        low, high = self.extents

        def variable(name, *pairs):
            tags.add(9, name)
            tags.add_all(*pairs)

        def point(name, at):
            variable(name, (10, float(at[0])), (20, float(at[1])), (30, 0.0))

        variable("$ACADVER", (1, "AC1027" if self.modern else "AC1009"))
        variable("$DWGCODEPAGE", (3, "ANSI_936"))
        point("$INSBASE", (0, 0))
        point("$EXTMIN", low)
        point("$EXTMAX", high)
        variable("$LIMMIN", (10, 0.0), (20, 0.0))
        variable("$LIMMAX", (10, PAPER_SIZE[0]), (20, PAPER_SIZE[1]))
        variable("$LTSCALE", (40, 100.0))
        variable("$TEXTSTYLE", (7, "Standard"))
        variable("$CLAYER", (8, "0"))
        variable("$DIMSTYLE", (2, self.drawing.dim_styles[-1].name))
        variable("$LUNITS", (70, 2))
        variable("$LUPREC", (70, 4))
        variable("$PDMODE", (70, 35))
        variable("$PDSIZE", (40, 200.0))
        if self.modern:
            variable("$INSUNITS", (70, 4))
            variable("$MEASUREMENT", (70, 1))
            variable("$HANDSEED", (5, tags.handle_seed))

    def _tables(self) -> None:
        drawing = self.drawing
        self._table("VPORT", [None], lambda _: self._vport())
        self._table("LTYPE", drawing.linetypes, self._linetype)
        self._table("LAYER", drawing.layers, self._layer)
        self._table("STYLE", drawing.text_styles, self._text_style)
        self._table("VIEW", [], None)
        self._table("UCS", [], None)
        self._table("APPID", ["ACAD"] + drawing.applications, self._application)
        self._table("DIMSTYLE", drawing.dim_styles, self._dim_style)
        if self.modern:
            self._table("BLOCK_RECORD", [MODEL, PAPER, *drawing.blocks], self._block_record)

    def _table(self, name: str, records, write) -> None:
        tags = self.tags
        handle = tags.handle(("table", name))
        tags.add_all((0, "TABLE"), (2, name))
        tags.modern_only((5, handle), (330, "0"), (100, "AcDbSymbolTable"))
        tags.add(70, len(records))
        if name == "DIMSTYLE":
            tags.modern_only((100, "AcDbDimStyleTable"), (71, 0))
        for record in records:
            write(record)
        tags.add(0, "ENDTAB")

    def _record(self, kind: str, name: str, subclass: str, xdict: str | None = None) -> None:
        """Head of a symbol table record up to its name."""
        tags = self.tags
        tags.add(0, kind)
        code = 105 if kind == "DIMSTYLE" else 5
        tags.modern_only((code, tags.handle((kind, name))))
        if xdict:
            tags.add_all((102, "{ACAD_XDICTIONARY"), (360, xdict), (102, "}"))
        tags.modern_only((330, tags.handle(("table", kind))), (100, "AcDbSymbolTableRecord"),
                         (100, subclass))
        tags.add(2, name)

    def _vport(self) -> None:
        tags = self.tags
        (x0, y0), (x1, y1) = self.extents
        self._record("VPORT", "*ACTIVE" if not self.modern else "*Active",
                     "AcDbViewportTableRecord")
        tags.add(70, 0)
        for code, x, y in ((10, 0, 0), (11, 1, 1), (12, (x0 + x1) / 2, (y0 + y1) / 2),
                           (13, 0, 0), (14, 10, 10), (15, 10, 10)):
            tags.point(code, (x, y), z=None)
        tags.point(16, (0, 0, 1))
        tags.point(17, (0, 0, 0))
        tags.add_all((40, (y1 - y0) * 1.05), (41, 1.6), (42, 50.0), (43, 0.0), (44, 0.0),
                     (50, 0.0), (51, 0.0), (71, 0), (72, 1000), (73, 1), (74, 3), (75, 0),
                     (76, 0), (77, 0), (78, 0))

    def _linetype(self, linetype) -> None:
        tags = self.tags
        self._record("LTYPE", linetype.name, "AcDbLinetypeTableRecord")
        tags.add_all((70, 0), (3, linetype.description), (72, 65), (73, len(linetype.dashes)),
                     (40, float(sum(abs(dash) for dash in linetype.dashes))))
        for dash in linetype.dashes:
            tags.add(49, float(dash))
            tags.modern_only((74, 0))

    def _layer(self, layer) -> None:
        tags = self.tags
        self._record("LAYER", layer.name, "AcDbLayerTableRecord")
        tags.add_all((70, int(layer.frozen) + 4 * int(layer.locked)),
                     (62, -layer.color if layer.off else layer.color), (6, layer.linetype))
        if not layer.plot:
            tags.modern_only((290, 0))
        tags.modern_only((370, layer.lineweight), (390, tags.handle("plot style")))

    def _text_style(self, style) -> None:
        tags = self.tags
        shape_file = not style.name  # a style without a name only loads a file of shapes
        if shape_file and not self.modern:
            return
        self._record("STYLE", style.name, "AcDbTextStyleTableRecord")
        tags.add_all((70, int(shape_file)), (40, 0.0), (41, style.width), (50, 0.0), (71, 0),
                     (42, 2.5), (3, style.font), (4, style.bigfont))

    def _application(self, name: str) -> None:
        self._record("APPID", name, "AcDbRegAppTableRecord")
        self.tags.add(70, 0)

    def _dim_style(self, style) -> None:
        tags = self.tags
        self._record("DIMSTYLE", style.name, "AcDbDimStyleTableRecord")
        tags.add_all((70, 0), (40, 1.0), (41, style.arrow_size), (42, style.extension_offset),
                     (44, style.extension_offset), (73, 0), (74, 0), (77, 1),
                     (140, style.text_height), (147, style.text_gap))
        tags.modern_only((271, 0), (340, tags.handle(("STYLE", style.text_style))))

    def _block_record(self, name: str) -> None:
        tags = self.tags
        xdict = tags.handle("model xdict") if name == MODEL and self.drawing.to_back else None
        self._record("BLOCK_RECORD", name, "AcDbBlockTableRecord", xdict)
        layout = tags.handle(("layout", name)) if name in (MODEL, PAPER) else "0"
        tags.add_all((340, layout), (70, 4), (280, 1), (281, 0))

    def _blocks(self) -> None:
        if self.modern:
            self._block(MODEL, (0.0, 0.0), 0, [])
            self._block(PAPER, (0.0, 0.0), 0, [])
        for block in self.drawing.blocks.values():
            has_attributes = any(hasattr(shape, "prompt") for shape in block.shapes)
            flags = int(block.name.startswith("*")) + 2 * int(has_attributes)
            self._block(block.name, block.base, flags, block.shapes)

    def _block(self, name: str, base, flags: int, shapes) -> None:
        tags = self.tags
        record = tags.handle(("BLOCK_RECORD", name))

        def head(kind, subclass):
            tags.add(0, kind)
            tags.modern_only((5, tags.handle((kind, name))), (330, record), (100, "AcDbEntity"))
            if name == PAPER:
                tags.add(67, 1)
            tags.add(8, "0")
            tags.modern_only((100, subclass))

        head("BLOCK", "AcDbBlockBegin")
        tags.add_all((2, name), (70, flags))
        tags.point(10, base)
        tags.add_all((3, name), (1, ""))
        for shape in shapes:
            self.entities.write(shape, record)
        head("ENDBLK", "AcDbBlockEnd")

    def _entities(self) -> None:
        for space, shapes in ((MODEL, self.drawing.shapes), (PAPER, self.drawing.paper)):
            owner = self.tags.handle(("BLOCK_RECORD", space))
            for shape in shapes:
                self.entities.write(shape, owner, paper=space == PAPER)
