"""The exceptions of calls."""

from __future__ import annotations

from typing import Any, Tuple, Type

from zephlink._types import ErrorCode


class Error(Exception):
    """A call failed.

    - `code`: an ErrorCode. Codes below 3584 come from the daemon, which may send unlisted codes.
    - `type`: the text of the code.
    - `text`: usually more specific than `type`.
    """

    def __init__(self, code: int, text: str = "") -> None:
        self.code = ErrorCode(code)
        self.type = self.code.text
        self.text = text or self.type
        super().__init__(f"{self.text} ({self.type}, {int(self.code)})" if self.text != self.type
                         else f"{self.text} ({int(self.code)})")

    def __reduce__(self) -> Tuple[Type[Any], Tuple[int, str]]:
        return type(self), (int(self.code), self.text)


class ClosedError(Error):
    """The client or the subscription was closed before or during the call."""

    def __init__(self, code: int = ErrorCode.SDK, text: str = "The client is closed") -> None:
        super().__init__(code, text)
