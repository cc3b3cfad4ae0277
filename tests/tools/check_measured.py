"""check_measured.py ROOT ORN: orn measures the samples as their program knows them to be.

The program that draws the plan knows each outline before any file exists; orn sees only the files,
of two versions and code pages. Both must come to the same figures.
"""

import json
import math
import subprocess
import sys
from pathlib import Path

from source_tree import finish

TOLERANCE = 1e-9  # relative


def length(vertices: list, closed: bool) -> float:
    total = 0.0
    ends = vertices[1:] + (vertices[:1] if closed else [])
    for (x0, y0, bulge), (x1, y1, _) in zip(vertices, ends):
        chord = math.hypot(x1 - x0, y1 - y0)
        sweep = 4 * math.atan(abs(bulge))
        total += chord / 2 / math.sin(sweep / 2) * sweep if bulge else chord
    return total


def expected(drawing, outlines, shapes, layers: set | None) -> dict:
    """What `orn area --json` should print, apart from handles and sums."""
    polylines, circles = [], []
    for shape in drawing.shapes:
        if layers and shape.layer not in layers:
            continue
        if isinstance(shape, shapes.Polyline):
            # The last bulge of an open polyline shapes nothing.
            path = shape.vertices if shape.closed else [
                *shape.vertices[:-1], (*shape.vertices[-1][:2], 0.0)]
            polylines.append((shape.layer, shape.closed, len(path),
                              abs(outlines.area(path)) / 1e6, length(path, shape.closed)))
        elif isinstance(shape, shapes.Circle):
            circles.append((shape.layer, True, 0, math.pi * shape.radius**2 / 1e6,
                            2 * math.pi * shape.radius))
    return {"polylines": polylines, "circles": circles}


def compare(label: str, kind: str, wanted: list, printed: list) -> list[str]:
    if len(wanted) != len(printed):
        return [f"{label}: {len(printed)} {kind} instead of {len(wanted)}"]
    complaints = []
    for index, (row, record) in enumerate(zip(wanted, printed)):
        got = tuple(record[key] for key in ("layer", "closed", "vertices", "area_m2", "length"))
        same = got[:3] == row[:3] and all(
            value is not None and math.isclose(value, right, rel_tol=TOLERANCE, abs_tol=1e-12)
            for value, right in zip(got[3:], row[3:]))
        if not same:
            complaints.append(f"{label}: {kind}[{index}] is {got} instead of {row}")
    return complaints


def main(root: Path, orn: str) -> None:
    sys.path.insert(0, str(root / "samples"))
    from floor_plan import outlines, shapes
    from floor_plan.plan import floor_plan

    drawing = floor_plan()
    complaints = []
    for name in ("floor-plan.dxf", "floor-plan-r12.dxf"):
        for layers in (None, {"BOARD", "板轮廓"}):
            options = ["--layers", ",".join(sorted(layers)).lower()] if layers else []
            result = subprocess.run([orn, "area", root / "samples" / name, "--json", *options],
                                    check=True, stdout=subprocess.PIPE)
            printed = json.loads(result.stdout)
            wanted = expected(drawing, outlines, shapes, layers)
            for kind in ("polylines", "circles"):
                complaints += compare(f"{name} {options}", kind, wanted[kind], printed[kind])
    finish(complaints)


if __name__ == "__main__":
    main(Path(sys.argv[1]), sys.argv[2])
