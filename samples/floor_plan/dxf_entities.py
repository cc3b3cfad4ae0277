"""Writes shapes as DXF entities."""

import math

from . import shapes
from .dxf_tags import Tags

# What R12 has no entity for is left out there.
MODERN_ONLY = (shapes.Ellipse, shapes.Spline, shapes.Hatch, shapes.MText)


class EntityWriter:
    def __init__(self, tags: Tags):
        self.tags = tags
        self.clipped = []  # references whose clip boundary still has to be written as objects

    def write(self, shape, owner: str, paper: bool = False) -> None:
        """`owner` is the handle of the block record the shape belongs to."""
        if isinstance(shape, MODERN_ONLY) and not self.tags.modern:
            return
        getattr(self, "_" + type(shape).__name__.lower())(shape, owner, paper)

    def _common(self, kind: str, shape, owner: str, paper: bool, key=None) -> None:
        tags = self.tags
        tags.add(0, kind)
        tags.modern_only((5, tags.handle(key or shape)))
        if tags.modern and getattr(shape, "clip", None) and key is None:
            self.clipped.append(shape)
            tags.add_all((102, "{ACAD_XDICTIONARY"), (360, tags.handle(("xdict", shape))),
                         (102, "}"))
        tags.modern_only((330, owner), (100, "AcDbEntity"))
        if paper:
            tags.add(67, 1)
        tags.add(8, shape.layer)
        if shape.linetype:
            tags.add(6, shape.linetype)
        if shape.color is not None:
            tags.add(62, shape.color)

    def _extrusion(self, shape) -> None:
        if shape.extrusion != shapes.UP:
            self.tags.point(210, shape.extrusion)

    def _xdata(self, shape) -> None:
        for application, values in shape.xdata:
            self.tags.add_all((1001, application), *values)

    def _line(self, line, owner, paper):
        self._common("LINE", line, owner, paper)
        self.tags.modern_only((100, "AcDbLine"))
        self.tags.point(10, line.start)
        self.tags.point(11, line.end)
        self._xdata(line)

    def _polyline(self, polyline, owner, paper):
        if polyline.old_style or not self.tags.modern:
            self._old_polyline(polyline, owner, paper)
            return
        tags = self.tags
        self._common("LWPOLYLINE", polyline, owner, paper)
        tags.add_all((100, "AcDbPolyline"), (90, len(polyline.vertices)),
                     (70, int(polyline.closed)), (43, float(polyline.width)))
        for x, y, bulge in polyline.vertices:
            tags.point(10, (x, y), z=None)
            if bulge:
                tags.add(42, bulge)
        self._extrusion(polyline)
        self._xdata(polyline)

    def _old_polyline(self, polyline, owner, paper):
        tags = self.tags
        self._common("POLYLINE", polyline, owner, paper)
        tags.modern_only((100, "AcDb2dPolyline"))
        tags.add(66, 1)
        tags.point(10, (0.0, 0.0))
        tags.add_all((70, int(polyline.closed)), (40, float(polyline.width)),
                     (41, float(polyline.width)))
        self._extrusion(polyline)
        self._xdata(polyline)
        parent = tags.handle(polyline)
        for index, (x, y, bulge) in enumerate(polyline.vertices):
            self._common("VERTEX", polyline, parent, paper, key=(polyline, index))
            tags.modern_only((100, "AcDbVertex"), (100, "AcDb2dVertex"))
            tags.point(10, (x, y))
            tags.add(42, float(bulge))
            tags.add(70, 0)
        self._common("SEQEND", polyline, parent, paper, key=(polyline, "end"))

    def _circle(self, circle, owner, paper):
        self._common("CIRCLE", circle, owner, paper)
        self.tags.modern_only((100, "AcDbCircle"))
        self.tags.point(10, circle.center)
        self.tags.add(40, float(circle.radius))
        self._extrusion(circle)
        self._xdata(circle)

    def _arc(self, arc, owner, paper):
        self._common("ARC", arc, owner, paper)
        self.tags.modern_only((100, "AcDbCircle"))
        self.tags.point(10, arc.center)
        self.tags.add(40, float(arc.radius))
        self._extrusion(arc)
        self.tags.modern_only((100, "AcDbArc"))
        self.tags.add_all((50, float(arc.start)), (51, float(arc.end)))

    def _ellipse(self, ellipse, owner, paper):
        self._common("ELLIPSE", ellipse, owner, paper)
        self.tags.add(100, "AcDbEllipse")
        self.tags.point(10, ellipse.center)
        self.tags.point(11, ellipse.major)
        self.tags.point(210, ellipse.extrusion)
        self.tags.add_all((40, ellipse.ratio), (41, ellipse.start), (42, ellipse.end))

    def _spline(self, spline, owner, paper):
        tags = self.tags
        self._common("SPLINE", spline, owner, paper)
        tags.add(100, "AcDbSpline")
        tags.point(210, spline.extrusion)
        tags.add_all((70, 8), (71, spline.degree), (72, len(spline.knots)),
                     (73, len(spline.controls)), (74, 0), (42, 1e-10), (43, 1e-10))
        for knot in spline.knots:
            tags.add(40, float(knot))
        for control in spline.controls:
            tags.point(10, control)

    def _point(self, point, owner, paper):
        self._common("POINT", point, owner, paper)
        self.tags.modern_only((100, "AcDbPoint"))
        self.tags.point(10, point.at)

    def _solid(self, solid, owner, paper):
        self._common("SOLID", solid, owner, paper)
        self.tags.modern_only((100, "AcDbTrace"))
        corners = solid.corners + solid.corners[-1:] * (4 - len(solid.corners))
        for index, corner in enumerate(corners):
            self.tags.point(10 + index, corner)

    def _text(self, text, owner, paper, attribute_tag=None):
        tags = self.tags
        self._common("ATTRIB" if attribute_tag else "TEXT", text, owner, paper)
        tags.modern_only((100, "AcDbText"))
        self._text_body(text)
        tags.modern_only((100, "AcDbAttribute" if attribute_tag else "AcDbText"))
        if attribute_tag:
            tags.add_all((2, attribute_tag), (70, 0))
        if text.centered:
            tags.add(74 if attribute_tag else 73, 2)
        self._xdata(text)

    def _text_body(self, text) -> None:
        tags = self.tags
        half = len(text.value) * text.height * text.width / 2 if text.centered else 0.0
        turn = math.radians(text.rotation)
        drop = text.height / 2 if text.centered else 0.0
        tags.point(10, (text.at[0] - half * math.cos(turn) + drop * math.sin(turn),
                        text.at[1] - half * math.sin(turn) - drop * math.cos(turn)))
        tags.add_all((40, float(text.height)), (1, text.value))
        if text.rotation:
            tags.add(50, float(text.rotation))
        if text.width != 1.0:
            tags.add(41, text.width)
        tags.add(7, text.style)
        if text.centered:
            tags.add(72, 1)
            tags.point(11, text.at)
        self._extrusion(text)

    def _mtext(self, mtext, owner, paper):
        tags = self.tags
        self._common("MTEXT", mtext, owner, paper)
        tags.add(100, "AcDbMText")
        tags.point(10, mtext.at)
        tags.add_all((40, float(mtext.height)), (41, float(mtext.width)), (71, 1), (72, 5))
        value = mtext.value
        while len(value) > 250:
            tags.add(3, value[:250])
            value = value[250:]
        tags.add_all((1, value), (7, mtext.style), (73, 1), (44, 1.0))

    def _attributedefinition(self, definition, owner, paper):
        tags = self.tags
        self._common("ATTDEF", definition, owner, paper)
        tags.modern_only((100, "AcDbText"))
        tags.point(10, definition.at)
        tags.add_all((40, float(definition.height)), (1, definition.default),
                     (7, definition.style), (72, 1))
        tags.point(11, definition.at)
        tags.modern_only((100, "AcDbAttributeDefinition"))
        tags.add_all((3, definition.prompt), (2, definition.tag), (70, 0), (74, 2))

    def _hatch(self, hatch, owner, paper):
        tags = self.tags
        self._common("HATCH", hatch, owner, paper)
        tags.add(100, "AcDbHatch")
        tags.point(10, (0.0, 0.0))
        tags.point(210, hatch.extrusion)
        tags.add_all((2, hatch.pattern), (70, 0 if hatch.lines else 1), (71, 0),
                     (91, len(hatch.loops)))
        for index, loop in enumerate(hatch.loops):
            tags.add_all((92, 3 if index == 0 else 18), (72, int(any(b for _, _, b in loop))),
                         (73, 1), (93, len(loop)))
            curved = any(bulge for _, _, bulge in loop)
            for x, y, bulge in loop:
                tags.point(10, (x, y), z=None)
                if curved:
                    tags.add(42, float(bulge))
            tags.add(97, 0)
        tags.add_all((75, 0), (76, 1))
        if hatch.lines:
            self._hatch_lines(hatch.lines)
        tags.add(98, 0)

    def _hatch_lines(self, lines) -> None:
        self.tags.add_all((52, 0.0), (41, 1.0), (77, 0), (78, len(lines)))
        for angle, spacing in lines:
            turn = math.radians(angle)
            self.tags.add_all((53, float(angle)), (43, 0.0), (44, 0.0),
                              (45, -spacing * math.sin(turn)), (46, spacing * math.cos(turn)),
                              (79, 0))

    def _insert(self, insert, owner, paper):
        tags = self.tags
        self._common("INSERT", insert, owner, paper)
        tags.modern_only((100, "AcDbBlockReference"))
        if insert.attributes:
            tags.add(66, 1)
        tags.add(2, insert.block)
        tags.point(10, insert.at)
        if insert.scale != (1.0, 1.0):
            tags.add_all((41, float(insert.scale[0])), (42, float(insert.scale[1])), (43, 1.0))
        if insert.rotation:
            tags.add(50, float(insert.rotation))
        if (insert.columns, insert.rows) != (1, 1):
            tags.add_all((70, insert.columns), (71, insert.rows),
                         (44, float(insert.spacing[0])), (45, float(insert.spacing[1])))
        self._extrusion(insert)
        self._xdata(insert)
        if insert.attributes:
            for tag, text in insert.attributes:
                self._text(text, tags.handle(insert), paper, attribute_tag=tag)
            self._common("SEQEND", insert, tags.handle(insert), paper, key=(insert, "end"))

    def _dimension(self, dimension, owner, paper):
        tags = self.tags
        self._common("DIMENSION", dimension, owner, paper)
        tags.modern_only((100, "AcDbDimension"))
        tags.add(2, dimension.block)
        tags.point(10, dimension.line_at)
        tags.point(11, dimension.text_at)
        tags.add(70, 32 if tags.modern else 0)
        tags.modern_only((71, 5), (42, float(dimension.measurement)))
        tags.add_all((1, ""), (3, dimension.style))
        tags.modern_only((100, "AcDbAlignedDimension"))
        tags.point(13, dimension.first)
        tags.point(14, dimension.second)
        tags.add(50, float(dimension.rotation))
        tags.modern_only((100, "AcDbRotatedDimension"))
