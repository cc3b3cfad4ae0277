"""What a drawing is made of: shapes, blocks, layers and styles.

Lengths are millimetres, angles degrees, points (x, y). A vertex is (x, y, bulge); its bulge,
tan(sweep / 4), shapes the segment that leaves it. Points of a shape with an extrusion lie in its
object coordinate system.
"""

from dataclasses import dataclass, field

UP = (0.0, 0.0, 1.0)
DOWN = (0.0, 0.0, -1.0)


@dataclass(eq=False, kw_only=True)
class Shape:
    layer: str = "0"
    color: int | None = None  # None follows the layer
    linetype: str | None = None
    extrusion: tuple = UP
    xdata: list = field(default_factory=list)  # [(application, [(code, value), ...]), ...]


@dataclass(eq=False)
class Line(Shape):
    start: tuple
    end: tuple


@dataclass(eq=False)
class Polyline(Shape):
    vertices: list
    closed: bool = True
    width: float = 0.0
    old_style: bool = False  # POLYLINE with VERTEX records in place of LWPOLYLINE


@dataclass(eq=False)
class Circle(Shape):
    center: tuple
    radius: float


@dataclass(eq=False)
class Arc(Shape):
    """Runs counter-clockwise from `start` to `end`."""

    center: tuple
    radius: float
    start: float
    end: float


@dataclass(eq=False)
class Ellipse(Shape):
    center: tuple
    major: tuple  # from the centre to the end of the major axis
    ratio: float  # minor to major
    start: float = 0.0  # parameters in radians
    end: float = 6.283185307179586


@dataclass(eq=False)
class Spline(Shape):
    degree: int
    knots: list
    controls: list


@dataclass(eq=False)
class Point(Shape):
    at: tuple


@dataclass(eq=False)
class Solid(Shape):
    corners: list  # three or four, the last two crossed as the format has them


@dataclass(eq=False)
class Text(Shape):
    at: tuple
    height: float
    value: str
    style: str = "Standard"
    centered: bool = False  # on `at`, in both directions
    rotation: float = 0.0
    width: float = 1.0


@dataclass(eq=False)
class MText(Shape):
    at: tuple  # top left corner
    height: float
    value: str
    width: float
    style: str = "Standard"


@dataclass(eq=False)
class AttributeDefinition(Shape):
    at: tuple
    height: float
    tag: str
    prompt: str
    default: str
    style: str = "Standard"


@dataclass(eq=False)
class Hatch(Shape):
    """Loops of vertices. The pattern is SOLID or lines of (angle, spacing)."""

    loops: list
    pattern: str = "SOLID"
    lines: list = field(default_factory=list)


@dataclass(eq=False)
class Insert(Shape):
    block: str
    at: tuple
    scale: tuple = (1.0, 1.0)
    rotation: float = 0.0
    columns: int = 1
    rows: int = 1
    spacing: tuple = (0.0, 0.0)  # column, row
    attributes: list = field(default_factory=list)  # [(tag, Text), ...]
    clip: list = field(default_factory=list)  # corners of the clip boundary in the world


@dataclass(eq=False)
class Dimension(Shape):
    """Horizontal or vertical distance; `block` holds its picture."""

    first: tuple
    second: tuple
    line_at: tuple
    text_at: tuple
    rotation: float
    measurement: float
    style: str
    block: str


@dataclass
class Block:
    name: str
    shapes: list = field(default_factory=list)
    base: tuple = (0.0, 0.0)


@dataclass
class Layer:
    name: str
    color: int = 7
    linetype: str = "CONTINUOUS"
    lineweight: int = -3  # 1/100 mm, or -3 for the default
    off: bool = False
    frozen: bool = False
    locked: bool = False
    plot: bool = True


@dataclass
class Linetype:
    name: str
    description: str
    dashes: list  # positive for a dash, negative for a gap, 0 for a dot


@dataclass
class TextStyle:
    name: str
    font: str
    bigfont: str = ""
    width: float = 1.0


@dataclass
class DimStyle:
    name: str
    text_height: float
    arrow_size: float
    extension_offset: float
    text_gap: float
    text_style: str


@dataclass
class Drawing:
    layers: list
    linetypes: list
    text_styles: list
    dim_styles: list
    applications: list
    blocks: dict = field(default_factory=dict)
    shapes: list = field(default_factory=list)  # model space
    paper: list = field(default_factory=list)  # the one paper layout
    groups: dict = field(default_factory=dict)  # name to shapes
    to_back: list = field(default_factory=list)  # shapes drawn before all others

    def add_block(self, block: Block) -> Block:
        self.blocks[block.name] = block
        return block
