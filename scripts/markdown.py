"""Markdown functions that several scripts use."""

import re


def anchor(heading):
    """Returns the fragment of a heading for links, as Markdown renderers generate it."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
