#!/usr/bin/env python3
"""Writes the sample floor plan: floor-plan.dxf (2013, UTF-8) and floor-plan-r12.dxf (R12, code
page 936) into the given folder, this one by default."""

import argparse
from pathlib import Path

from floor_plan import dxf_file
from floor_plan.plan import floor_plan
from floor_plan.sheet import FRAME


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", nargs="?", type=Path, default=Path(__file__).parent)
    arguments = parser.parse_args()

    drawing = floor_plan()
    extents = (FRAME.corners[0], FRAME.corners[2])
    for name, modern in (("floor-plan.dxf", True), ("floor-plan-r12.dxf", False)):
        (arguments.folder / name).write_bytes(dxf_file.encode(drawing, extents, modern))


if __name__ == "__main__":
    main()
