"""Tags, handles and the two dialects: 2013 in UTF-8 and R12 in code page 936."""

import codecs


def escape(error: UnicodeEncodeError):
    """Writes what the code page lacks as \\U+XXXX, as CAD programs do."""
    lost = error.object[error.start : error.end]
    return "".join(f"\\U+{ord(c):04X}" for c in lost), error.end


codecs.register_error("dxf", escape)


class Tags:
    """The growing text of a file, and the handles given out so far."""

    def __init__(self, modern: bool):
        self.modern = modern  # 2013; otherwise R12, which has neither handles nor subclasses
        self.lines = []
        self._handles = {}

    def handle(self, key) -> str:
        """The handle of whatever `key` stands for, the same one each time."""
        return self._handles.setdefault(key, f"{len(self._handles) + 1:X}")

    @property
    def handle_seed(self) -> str:
        return f"{len(self._handles) + 1:X}"

    def add(self, code: int, value) -> None:
        text = repr(value + 0.0) if isinstance(value, float) else str(value)
        self.lines += [f"{code:3d}", text]

    def add_all(self, *pairs) -> None:
        for code, value in pairs:
            self.add(code, value)

    def modern_only(self, *pairs) -> None:
        if self.modern:
            self.add_all(*pairs)

    def point(self, code: int, point, z: float | None = 0.0) -> None:
        self.add(code, float(point[0]))
        self.add(code + 10, float(point[1]))
        if z is not None:
            self.add(code + 20, float(point[2]) if len(point) > 2 else z)

    def section(self, name: str, write) -> None:
        self.add_all((0, "SECTION"), (2, name))
        write()
        self.add(0, "ENDSEC")

    def encoded(self) -> bytes:
        encoding = "utf-8" if self.modern else "gbk"
        return "".join(line + "\r\n" for line in self.lines).encode(encoding, "dxf")
