"""Draws a plan as SVG, as it would be plotted; hatches become a light tint."""

import math
from xml.sax.saxutils import escape, quoteattr

from . import shapes

# AutoCAD colour numbers the plan uses, darkened where they would vanish on white.
COLORS = {1: "#d00000", 2: "#a08000", 3: "#008f30", 4: "#0090a0", 5: "#0000d0", 6: "#b000b0",
          7: "#000000", 8: "#808080", 9: "#a8a8a8", 30: "#e07000", 94: "#4c8a3c", 150: "#2070c0"}
DASHES = {"CENTER": "600 150 150 150", "DASHED": "200 120"}


def picture(drawing, extents) -> str:
    (x0, y0), (x1, y1) = extents
    painter = Painter(drawing)
    body = "\n".join(painter.draw(drawing.shapes))
    defs = "\n".join(painter.definitions)
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="{_n(x0)} {_n(-y1)} {_n(x1 - x0)} '
            f'{_n(y1 - y0)}" font-family="WenQuanYi Micro Hei, Microsoft YaHei, sans-serif" '
            f'fill="none" stroke-width="18">\n'
            f'<rect x="{_n(x0)}" y="{_n(-y1)}" width="{_n(x1 - x0)}" height="{_n(y1 - y0)}" '
            f'fill="white"/>\n<defs>\n{defs}\n</defs>\n'
            f'<g transform="scale(1 -1)">\n{body}\n</g>\n</svg>\n')


def _n(value: float) -> str:
    return f"{value:.1f}".removesuffix(".0")


class Painter:
    def __init__(self, drawing):
        self.layers = {layer.name: layer for layer in drawing.layers}
        self.blocks = {name: f"b{k}" for k, name in enumerate(drawing.blocks)}
        self.bases = {name: block.base for name, block in drawing.blocks.items()}
        self.definitions = []
        for name, block in drawing.blocks.items():
            content = "".join(self.draw(block.shapes))
            self.definitions.append(f'<g id="{self.blocks[name]}">{content}</g>')

    def draw(self, members: list) -> list:
        return [text for shape in members if (text := self._draw(shape))]

    def _draw(self, shape) -> str:
        layer = self.layers[shape.layer]
        paint = getattr(self, "_" + type(shape).__name__.lower(), None)
        if paint is None or layer.off or layer.frozen or not layer.plot:
            return ""
        return paint(shape, self._pen(layer))

    def _pen(self, layer) -> str:
        """Attributes of a stroke; on layer 0 it follows the reference."""
        if layer.name == "0":
            return ""
        pen = f' stroke="{COLORS[layer.color]}"'
        if layer.lineweight >= 35:
            pen += ' stroke-width="35"'
        if layer.linetype in DASHES:
            pen += f' stroke-dasharray="{DASHES[layer.linetype]}"'
        return pen

    def _path(self, vertices: list, closed: bool) -> str:
        steps = [f"M{_n(vertices[0][0])} {_n(vertices[0][1])}"]
        ends = vertices[1:] + (vertices[:1] if closed else [])
        for (x0, y0, bulge), (x1, y1, _) in zip(vertices, ends):
            if bulge:
                radius = math.hypot(x1 - x0, y1 - y0) * (1 + bulge**2) / abs(4 * bulge)
                steps.append(f"A{_n(radius)} {_n(radius)} 0 {int(abs(bulge) > 1)} "
                             f"{int(bulge > 0)} {_n(x1)} {_n(y1)}")
            else:
                steps.append(f"L{_n(x1)} {_n(y1)}")
        return " ".join(steps)

    def _line(self, line, pen) -> str:
        (x0, y0), (x1, y1) = line.start, line.end
        return f'<path d="M{_n(x0)} {_n(y0)}L{_n(x1)} {_n(y1)}"{pen}/>'

    def _polyline(self, polyline, pen) -> str:
        return f'<path d="{self._path(polyline.vertices, polyline.closed)}"{pen}/>'

    def _circle(self, circle, pen) -> str:
        (x, y), radius = circle.center, circle.radius
        return f'<circle cx="{_n(x)}" cy="{_n(y)}" r="{_n(radius)}"{pen}/>'

    def _arc(self, arc, pen) -> str:
        (x, y), r = arc.center, arc.radius
        first, last = (math.radians(angle) for angle in (arc.start, arc.end))
        sweep = (last - first) % math.tau
        start = (x + r * math.cos(first), y + r * math.sin(first), math.tan(sweep / 4))
        end = (x + r * math.cos(last), y + r * math.sin(last), 0.0)
        return f'<path d="{self._path([start, end], closed=False)}"{pen}/>'

    def _ellipse(self, ellipse, pen) -> str:
        (x, y), (mx, my) = ellipse.center, ellipse.major
        points = []
        for k in range(41):
            t = ellipse.start + (ellipse.end - ellipse.start) * k / 40
            c, s = math.cos(t), math.sin(t) * ellipse.ratio
            points.append((x + mx * c - my * s, y + my * c + mx * s, 0.0))
        return f'<path d="{self._path(points, closed=False)}"{pen}/>'

    def _spline(self, spline, pen) -> str:
        last = spline.knots[-1]
        points = [(*_spline_point(spline, last * k / 60), 0.0) for k in range(61)]
        return f'<path d="{self._path(points, closed=False)}"{pen}/>'

    def _hatch(self, hatch, pen) -> str:
        path = "".join(self._path(loop, closed=True) + "Z" for loop in hatch.loops)
        color = COLORS[self.layers[hatch.layer].color]
        return (f'<path d="{path}" fill="{color}" fill-opacity="0.25" fill-rule="evenodd"'
                f' stroke="none"/>')

    def _text(self, text, pen) -> str:
        color = COLORS[self.layers[text.layer].color] if text.layer != "0" else "currentColor"
        anchor = ' text-anchor="middle" dy="0.36em"' if text.centered else ""
        value = text.value.replace("%%p", "±").replace("%%c", "⌀")
        return (f'<text transform="translate({_n(text.at[0])} {_n(text.at[1])}) '
                f'rotate({_n(text.rotation)}) scale(1 -1)" font-size="{_n(text.height * 1.2)}" '
                f'fill={quoteattr(color)} stroke="none"{anchor}>{escape(value)}</text>')

    def _dimension(self, dimension, pen) -> str:
        return f'<use href="#{self.blocks[dimension.block]}"{pen}/>'

    def _insert(self, insert, pen) -> str:
        sx, sy = insert.scale
        turn = math.radians(insert.rotation)
        flip = -1.0 if insert.extrusion == shapes.DOWN else 1.0
        c, s = math.cos(turn), math.sin(turn)
        bx, by = self.bases[insert.block]
        parts = []
        for row in range(insert.rows):
            for column in range(insert.columns):
                x, y = column * insert.spacing[0] - bx * sx, row * insert.spacing[1] - by * sy
                e, f = insert.at[0] + c * x - s * y, insert.at[1] + s * x + c * y
                matrix = " ".join(f"{v:.6g}" for v in (flip * c * sx, s * sx, -flip * s * sy,
                                                       c * sy, flip * e, f))
                parts.append(f'<use href="#{self.blocks[insert.block]}" '
                             f'transform="matrix({matrix})"{pen}/>')
        parts += [self._draw(text) for _, text in insert.attributes]
        drawn = "".join(parts)
        return self._clipped(drawn, insert.clip) if insert.clip else drawn

    def _clipped(self, drawn: str, clip) -> str:
        """`clip` is two opposite corners."""
        (x0, y0), (x1, y1) = clip
        name = f"c{len(self.definitions)}"
        self.definitions.append(
            f'<clipPath id="{name}"><rect x="{_n(x0)}" y="{_n(y0)}" width="{_n(x1 - x0)}" '
            f'height="{_n(y1 - y0)}"/></clipPath>')
        return f'<g clip-path="url(#{name})">{drawn}</g>'


def _spline_point(spline, t: float):
    """De Boor's recursion."""
    p, knots = spline.degree, spline.knots
    k = next((k for k in range(p, len(spline.controls)) if t < knots[k + 1]),
             len(spline.controls) - 1)
    points = [spline.controls[k - p + j] for j in range(p + 1)]
    for level in range(1, p + 1):
        for j in range(p, level - 1, -1):
            low, high = knots[k - p + j], knots[k + 1 + j - level]
            share = (t - low) / (high - low)
            points[j] = tuple((1 - share) * a + share * b
                              for a, b in zip(points[j - 1], points[j]))
    return points[p]
