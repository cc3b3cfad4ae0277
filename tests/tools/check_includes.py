"""check_includes.py ROOT: the arrows between folders, as the #include lines draw them.

The product sees the platform by its own header names only, and is the same on every platform; a
folder of the host includes only those below it; a platform header only forwards.
"""

import re
import sys
from pathlib import Path

from source_tree import PRODUCT, finish, sources

# What a module of the product, or a folder of the host, may include besides itself.
MODULES_BELOW = {
    "OrnCore": (),
    "OrnMfc": ("OrnCore",),
    "OrnGlobal": ("OrnCore", "OrnMfc"),
    "OrnBoard": ("OrnCore", "OrnMfc", "OrnGlobal"),
}
BELOW = {
    "rx": set(),
    "ge": {"rx"},
    "win": set(),
    "mfc": {"win"},
    "db": {"ge", "rx", "win"},
    "ed": {"db", "ge", "rx", "mfc", "win"},
    "dxf": {"ed", "db", "ge", "rx", "mfc", "win"},
    "view": {"ed", "db", "ge", "rx", "mfc", "win"},
    "excel": {"win"},
    "office": {"excel"},
    "headless": {"dxf", "view", "excel", "ed", "db", "ge", "rx", "mfc", "win"},
}
LIBRARIES = ("json/",)  # what product sources may use besides the platform
STANDARD = re.compile(r"[a-z0-9_]+|(assert|float|limits|math|stdarg|stddef|stdint|stdio|stdlib|string|time|wchar)\.h")
INCLUDE = re.compile(r'\s*#\s*include\s*[<"]([^>"]+)[>"]')
PLATFORM_TEST = re.compile(r"\s*#\s*(if|ifdef|ifndef|elif)\b.*(_WIN|WIN32|__linux|__unix|__GNUC__|_MSC_VER)")
FORWARDING = re.compile(r'\s*(//.*|#pragma once|#include .*)?')


class Checker:
    def __init__(self, root: Path):
        self.root = root
        self.complaints = []

    def run(self) -> list[str]:
        for path in sources(self.root, (*PRODUCT, "host")):
            inside = path.relative_to(self.root).parts
            for number, line in enumerate(path.read_text("utf-8").splitlines(), start=1):
                complaint = self._complaint(path, inside, line)
                if complaint:
                    where = path.relative_to(self.root)
                    self.complaints.append(f"{where}:{number}: {complaint}")
        return self.complaints

    def _complaint(self, path: Path, inside: tuple, line: str) -> str | None:
        include = INCLUDE.match(line)
        if inside[0] in PRODUCT:
            if PLATFORM_TEST.match(line):
                return "product code asks which platform it is on"
            return include and self._product(path, inside[0], include[1])
        if inside[1] not in BELOW and inside[1] != "include":
            return f"host/{inside[1]} has no place among the folders of the host"
        if inside[1] == "include":
            return None if FORWARDING.fullmatch(line) else "a platform header only forwards"
        return include and self._host(inside[1], include[1])

    def _product(self, path: Path, module: str, name: str) -> str | None:
        if STANDARD.fullmatch(name) or name.startswith(LIBRARIES):
            return None
        if "/" not in name and (self.root / "host/include" / name).exists():
            return None
        modules = (module, *MODULES_BELOW[module])
        homes = [path.parent, *(self.root / known for known in modules)]
        if ".." not in name and any((home / name).exists() for home in homes):
            return None
        if name.split("/")[0] in modules and (self.root / name).exists():
            return None
        return f"{name} is neither a platform header nor one the module may use"

    def _host(self, folder: str, name: str) -> str | None:
        forwarder = self.root / "host/include" / name
        if "/" not in name and forwarder.exists():
            return next(filter(None, (self._host(folder, target[1]) for target in
                                      map(INCLUDE.match, forwarder.read_text("utf-8").splitlines())
                                      if target)), None)
        target = name.split("/")[0]
        if target in ("..", *PRODUCT):
            return f"the host does not know what is outside it: {name}"
        if target in BELOW and target != folder and target not in BELOW[folder]:
            return f"{target} is not below {folder}: {name}"
        return None


if __name__ == "__main__":
    finish(Checker(Path(sys.argv[1])).run())
