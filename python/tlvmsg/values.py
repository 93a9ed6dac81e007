"""What values are made of where Python's own types do not say enough. Whatever takes long to import, no module that
`import tlvmsg` needs does."""

from tlvmsg.faults import Fault, schema_fault, text_fault

__all__ = ["Bytes", "Fault", "Items", "Missing", "schema_fault", "text_fault"]


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


def shown(record):
    """The repr of a record: what makes it."""
    name = type(record).__name__
    return f"{name}({', '.join(f'{each}={getattr(record, each)!r}' for each in record.__match_args__ if hasattr(record, each))})"


def enumeration(type_, values):
    """For tlvmsg._native: an IntEnum of these pairs of a name and a number, and what stands for each of them."""
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
