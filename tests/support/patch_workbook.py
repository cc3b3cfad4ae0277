"""patch_workbook.py FILE NEW PART TEXT INSTEAD: a copy of a workbook with one part changed.

The part must hold the text; without a text the part is new.
"""

import sys
import zipfile


def main(path, new, part, text, instead):
    with zipfile.ZipFile(path) as source, zipfile.ZipFile(new, "w") as target:
        for name in source.namelist():
            content = source.read(name).decode("latin-1")
            if name == part and text:
                if text not in content:
                    sys.exit(f"{part} does not hold {text}")
                content = content.replace(text, instead, 1)
            target.writestr(name, content.encode("latin-1"))
        if not text:
            target.writestr(part, instead)


main(*sys.argv[1:])
