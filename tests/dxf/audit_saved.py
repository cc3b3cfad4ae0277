#!/usr/bin/env python3
"""Audits a drawing as it was and as it was saved with ezdxf: no save may add a kind of error.

Usage: audit_saved.py BEFORE AFTER...   (ends with 77 when ezdxf is not installed)
"""
import sys

try:
    import ezdxf
    from ezdxf import recover
except ImportError:
    print("ezdxf is not installed; nothing is audited")
    sys.exit(77)


def errors(path):
    """The kinds of errors that occur."""
    try:
        _, auditor = recover.readfile(path)
    except ezdxf.DXFStructureError:  # It recovers no binary files.
        auditor = ezdxf.readfile(path).audit()
    return {error.code for error in auditor.errors + auditor.fixes}


before = errors(sys.argv[1])
for path in sys.argv[2:]:
    added = errors(path) - before
    if added:
        sys.exit(f"{path}: saving added errors {added}")
