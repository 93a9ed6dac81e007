"""Why something was refused."""

from __future__ import annotations


class Fault(ValueError):
    """Bytes, or a value, that the schema does not allow.

    `line` says it in a line; `code` is its stable name, `path` the member's, `offset` the byte's; `found` and `allowed`
    say what is there and what should be. What is unknown is None.
    """

    def __init__(self, line, code="", path="", offset=None, found=None, allowed=None):
        super().__init__(line)
        self.line, self.code, self.path, self.offset, self.found, self.allowed = line, code, path, offset, found, allowed


class TextFault(Fault):
    """A text that was refused: JSON, hex, a setting or a schema. `lineno` and `colno` count from 1."""

    def __init__(self, line, code="", path="", offset=None, lineno=0, colno=0):
        super().__init__(line, code, path, offset)
        self.lineno, self.colno = lineno, colno
