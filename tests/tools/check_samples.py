"""check_samples.py ROOT: the samples kept are what their program writes."""

import subprocess
import sys
import tempfile
from pathlib import Path

from source_tree import finish


def main(root: Path) -> None:
    with tempfile.TemporaryDirectory() as name:
        fresh = Path(name)
        subprocess.run([sys.executable, "-B", root / "samples/make_floor_plan.py", fresh],
                       check=True)
        kept = (root / "samples/floor-plan.dxf", root / "samples/floor-plan-r12.dxf")
        finish([f"{path.relative_to(root)} differs from what make_floor_plan.py writes"
                for path in kept if path.read_bytes() != (fresh / path.name).read_bytes()])


if __name__ == "__main__":
    main(Path(sys.argv[1]))
