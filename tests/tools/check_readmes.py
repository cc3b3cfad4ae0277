"""check_readmes.py ROOT: every folder of code says what it is for, in a README.md."""

import sys
from pathlib import Path

from source_tree import FOLDERS, finish, sources


def main(root: Path) -> None:
    # The folders of tests mirror the others and need no page of their own.
    folders = {path.parent for path in sources(root, [f for f in FOLDERS if f != "tests"])}
    folders |= {root / "tests", root / "samples"}
    finish([f"{folder.relative_to(root)} has no README.md" for folder in sorted(folders)
            if not (folder / "README.md").exists()])


if __name__ == "__main__":
    main(Path(sys.argv[1]))
