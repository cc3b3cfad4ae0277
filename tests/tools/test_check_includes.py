"""Shows that check_includes.py sees a wrong arrow, and lets the right ones pass."""

import tempfile
import unittest
from pathlib import Path

from check_includes import Checker

TREE = {
    "OrnCore/core.h": "",
    "OrnGlobal/text/words.h": "",
    "host/include/dbcurve.h": '#pragma once\n#include "db/curve.h"\n',
    "host/db/curve.h": '#include "ge/line.h"\n',
    "host/ge/line.h": "",
}

ROWS = [  # behaviour, file, its line, whether it is refused
    ("standard header", "OrnCore/a.cpp", "#include <vector>", False),
    ("platform header", "OrnCore/a.cpp", "#include <dbcurve.h>", False),
    ("product header below", "OrnGlobal/text/a.cpp", '#include "OrnCore/core.h"', False),
    ("own folder", "OrnGlobal/text/a.cpp", '#include "text/words.h"', False),
    ("product header above", "OrnCore/a.cpp", '#include "text/words.h"', True),
    ("folder of the host", "OrnCore/a.cpp", '#include "db/curve.h"', True),
    ("host by its path", "OrnCore/a.cpp", '#include "host/ge/line.h"', True),
    ("host by climbing", "OrnCore/a.cpp", '#include "../host/ge/line.h"', True),
    ("question for the platform", "OrnCore/a.cpp", "#ifdef _WIN32", True),
    ("folder below in the host", "host/db/a.cpp", '#include "ge/line.h"', False),
    ("folder above in the host", "host/ge/a.cpp", '#include "db/curve.h"', True),
    ("folder above by its platform name", "host/ge/a.cpp", "#include <dbcurve.h>", True),
    ("product from the host", "host/db/a.cpp", '#include "OrnCore/core.h"', True),
    ("code in a platform header", "host/include/dbents.h", "class Extra;", True),
    ("folder without a place", "host/other/a.cpp", "", True),
]


class CheckIncludes(unittest.TestCase):
    def test_rows(self):
        for name, file, line, refused in ROWS:
            with self.subTest(name), tempfile.TemporaryDirectory() as folder:
                root = Path(folder)
                for path, text in {**TREE, file: line + "\n"}.items():
                    (root / path).parent.mkdir(parents=True, exist_ok=True)
                    (root / path).write_text(text, "utf-8")
                expected = [f"{file}:1"] if refused else []
                self.assertEqual([":".join(c.split(":")[:2]) for c in Checker(root).run()],
                                 expected)


if __name__ == "__main__":
    unittest.main()
