"""The project's C++ sources, for the checks beside this file."""

import sys
from pathlib import Path

FOLDERS = ("OrnBoard", "OrnCore", "OrnGlobal", "OrnMfc", "bench", "fuzz", "host", "orn", "tests")
PRODUCT = ("OrnBoard", "OrnCore", "OrnGlobal", "OrnMfc")


def sources(root: Path, folders=FOLDERS) -> list[Path]:
    """Headers and sources under these folders of `root`, in a fixed order."""
    return sorted(path for folder in folders for path in (root / folder).rglob("*")
                  if path.suffix in (".h", ".cpp"))


def finish(complaints: list[str]) -> None:
    """Prints the complaints and ends the check with its exit code."""
    for complaint in complaints:
        print(complaint)
    sys.exit(1 if complaints else 0)
