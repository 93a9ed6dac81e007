"""Why something was refused."""


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


def value_fault(code, path, found, allowed):
    """For tlvmsg._native: a value that does not fit."""
    return Fault(f"error[{code}]: {path}: found {found!r:.200}, expected {allowed}", code, path, None, found, allowed)


def text_fault(code, path, message, offset, line, column):
    """For tlvmsg._native: what JSON, hex and settings are refused with; settings have no line."""
    where = f" in line {line}, column {column}" if column else ""
    return TextFault(f"error[{code}]: {path and path + ': '}{message}{where}", code, path, offset, line, column)


def schema_fault(faults):
    """For tlvmsg._native: the first fault of schema files, with a note for each of the others."""
    lines = [f"{file}:{line}:{column}: " * (line > 0) + f"{message}{help and '; ' + help} ({code})"
             for file, line, column, message, help, code in faults]
    file, line, column, _, _, code = faults[0]
    fault = TextFault(lines[0], code, file, None, line, column)
    for note in lines[1:]:
        fault.add_note(note)
    return fault
