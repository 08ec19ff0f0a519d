"""What scripts share about pages in Markdown."""

import re


def anchor(heading):
    """The fragment by which a heading is linked, as renderers of Markdown make it."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
