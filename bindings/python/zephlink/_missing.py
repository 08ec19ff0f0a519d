"""The error message for a missing library."""

from __future__ import annotations

import re


def explained(error: ImportError) -> ImportError:
    """Returns the error of an extension module that failed to load, with the library that it needs."""
    found = re.match(r"(libzephlinksdk\.so\.(\d+)): ", str(error))
    if not found:
        if "cannot import name '_native'" not in str(error):
            return error
        return ImportError("This is zephlink's source tree, without the extension module: run Python elsewhere, or "
                           f"put the directory of the installed package first in PYTHONPATH. ({error})")
    library, version = found.groups()
    return ImportError(
        f"zephlink needs the shared library {library}, which was not found. Install it (Debian: "
        f"libzephlinksdk{version}), or name its directory in LD_LIBRARY_PATH. ({error})"
    )
