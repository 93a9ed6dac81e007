"""What values are made of where Python's own types do not say enough, why they are refused, and what the module in C does
not have to do. It is one file, since each takes its time to import; whatever takes long, nothing imports before it is used."""


# ---- Why something was refused ----


class Fault(ValueError):
    """Bytes, or a value, that the schema does not allow.

    `line` says it in a line; `code` is its stable name, `path` the member's, `offset` the byte's; `found` and `allowed`
    say what is there and what should be. What is unknown is None.
    """

    __module__ = "tlvmsg"

    def __init__(self, line, code="", path="", offset=None, found=None, allowed=None):
        super().__init__(line)
        self.line, self.code, self.path, self.offset, self.found, self.allowed = line, code, path, offset, found, allowed


class TextFault(Fault):
    """A text that was refused: JSON, hex, a setting or a schema. `lineno` and `colno` count from 1."""

    __module__ = "tlvmsg"

    def __init__(self, line, code="", path="", offset=None, lineno=0, colno=0):
        super().__init__(line, code, path, offset)
        self.lineno, self.colno = lineno, colno


# ---- Values ----


class Bytes(bytes):
    """The bytes of an array. They equal a str of the same text, and `text` is one."""

    __slots__ = ()

    @property
    def text(self) -> str:
        """As UTF-8, up to the first zero byte; other bytes come as "\\xff"."""
        return self.split(b"\0", 1)[0].decode(errors="backslashreplace")

    def __eq__(self, other):
        return bytes.__eq__(self, other.encode(errors="surrogatepass") if isinstance(other, str) else other)

    def __ne__(self, other):
        return not self == other

    __hash__ = bytes.__hash__

    def __reduce__(self):
        return Bytes, (bytes(self),)


class Items(list):
    """The items of an array: a list that takes only what fits, and as many as fit."""

    __slots__ = ("_array",)

    def __setitem__(self, at, value):
        if isinstance(at, slice):
            replaced = range(*at.indices(len(self)))
            value = self._array.check_items(value, len(self) - len(replaced), replaced.start)
        else:
            [value] = self._array.check_items([value], 0, range(len(self))[at])
        super().__setitem__(at, value)

    def append(self, value):
        self[len(self):] = [value]

    def insert(self, at, value):
        self[at:at] = [value]

    def extend(self, values):
        self[len(self):] = values

    def __iadd__(self, values):
        self.extend(values)
        return self

    def __imul__(self, count):
        self[:] = list(self) * count
        return self

    def __reduce__(self):
        return list, (list(self),)


class Missing(int):
    """A dynamic array that counts so many items and has none, as decoding leaves one that is absent; never encoded."""

    __slots__ = ()

    def __repr__(self):
        return f"Missing({int(self)})"


# ---- Methods that need not be fast ----


class RecordMethods:
    """Those of messages."""

    def __repr__(self):
        """What makes it."""
        members = [f"{each}={getattr(self, each)!r}" for each in self.__match_args__ if hasattr(self, each)]
        return f"{type(self).__name__}({', '.join(members)})"

    def __dir__(self):
        """Methods and members."""
        return [*dir(type(self)), *self.__match_args__]

    def __reduce__(self):
        """What loads it again: name, fingerprint and bytes, or members, as a union's bytes do not say what is chosen."""
        of = type(self)._type
        return load, (of.name, of.fingerprint, of.to_dict(self) if of.kind == "union" else of.encode(self))

    def size(self):
        """How many bytes encode() gives."""
        return type(self)._type.size(self)

    def to_json(self, indent=0):
        """Its JSON, in one line or with as many blanks a level."""
        return type(self)._type.to_json(self, indent)


class TypeMethods:
    """Those of types."""

    def size(self, value):
        """How many bytes encode gives."""
        return len(self.encode(value))

    def sample(self, *settings, kind="random", seed=0):
        """A value to test with. A setting is 'led_control.color=3'; a kind is 'random', 'min', 'max' or 'boundary'."""
        kinds = ["random", "min", "max", "boundary"]
        if kind not in kinds:
            raise ValueError(f"no kind of sample '{kind}'; there are random, min, max and boundary")
        for each in settings:
            if not isinstance(each, str) or "\0" in each:
                raise TypeError(f"a setting is a str, such as 'slot=2', not {each!r}")
        return self._sample(tuple([each.encode(errors="replace") for each in settings]), kinds.index(kind), seed)


# ---- What tlvmsg._native calls ----


def add_methods(record, type_):
    """Once, when it has made these types."""
    for own, methods in ((record, RecordMethods), (type_, TypeMethods)):
        for name, method in vars(methods).items():
            if callable(method):
                setattr(own, name, method)


def complete(class_, type_, members):
    """The attributes of a class of messages."""
    class_._type, class_.__match_args__, class_.__doc__ = type_, tuple(members), Documentation(type_)
    for name in ("decode", "verify", "from_dict", "from_json", "sample"):
        setattr(class_, name, getattr(type_, name))


def value_fault(code, path, found, allowed):
    """A value that does not fit."""
    try:
        shown = repr(found)
    except Exception:  # of objects, and of numbers that are too long to be written
        shown = f"a value of type {type(found).__name__}"
    return Fault(f"error[{code}]: {path}: found {shown:.200}, expected {allowed}", code, path, None, found, allowed)


def text_fault(code, path, message, offset, line, column):
    """What JSON, hex and settings are refused with; settings have no line."""
    where = f" in line {line}, column {column}" if column else ""
    return TextFault(f"error[{code}]: {path and path + ': '}{message}{where}", code, path, offset, line, column)


def schema_fault(faults):
    """The first fault of schema files, with a note for each of the others."""
    lines = [f"{file}:{line}:{column}: " * (line > 0) + f"{message}{help and '; ' + help} ({code})"
             for file, line, column, message, help, code in faults]
    file, line, column, _, _, code = faults[0]
    fault = TextFault(lines[0], code, file, None, line, column)
    for note in lines[1:]:
        fault.add_note(note)
    return fault


def result(name, *values):
    """An object of that class of tlvmsg.results."""
    from tlvmsg import results

    return vars(results)[name](*values)


def enumeration(type_, values):
    """An IntEnum of these pairs of a name and a number, and what stands for each of them."""
    import enum  # which takes longer than all the rest

    class Enumeration(enum.IntEnum):
        def __repr__(self):
            return f"{type(self).__name__}.{self.name}"

        def __reduce_ex__(self, protocol):  # as schemas come and go, its number is what stays
            return int, (int(self),)

    # Names that enum keeps for itself are numbers here.
    usable = [(name, value) for name, value in values if name != "mro" and not name[0] == name[-1] == "_"]
    made = Enumeration(type_.name, usable, module=f"tlvmsg.{type_.family}")
    made.__doc__ = Documentation(type_)
    made._type = type_
    return made, tuple(made(value) if (name, value) in usable else value for name, value in values)


class Documentation:
    """The docstring of a class, made when somebody looks at it."""

    def __init__(self, type_):
        self._type = type_

    def __get__(self, instance, owner=None):
        from tlvmsg import documentation

        return documentation.text(self._type)


def load(name, fingerprint, data):
    """For pickle: the message of a type that is known here under this name and fingerprint."""
    from tlvmsg import schemas

    return schemas.load(name, fingerprint, data)
