"""check_format.py ROOT: every C++ source is as clang-format leaves it. Exit 77 without the tool."""

import shutil
import subprocess
import sys
from pathlib import Path

from source_tree import finish, sources

SKIPPED = 77
TOOL = "clang-format-14"  # other versions break lines elsewhere


def main(root: Path) -> None:
    if shutil.which(TOOL) is None:
        print(f"{TOOL} is not installed")
        sys.exit(SKIPPED)
    files = [str(path) for path in sources(root)]
    result = subprocess.run([TOOL, "--dry-run", "--Werror", *files], cwd=root, text=True,
                            stderr=subprocess.PIPE, check=False)
    finish([line for line in result.stderr.splitlines() if "error:" in line])


if __name__ == "__main__":
    main(Path(sys.argv[1]))
