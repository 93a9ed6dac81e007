"""What values are made of where Python's own types do not say enough, and what functions give."""

from collections import namedtuple

from tlvmsg.faults import Fault, TextFault

__all__ = ["Bytes", "Difference", "Extent", "Fault", "Guess", "HexMessage", "Items", "Missing", "Part", "TextFault"]


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
            value = self._array.check_items(value, len(self) - len(range(*at.indices(len(self)))))
        else:
            value = self._array.check_item(value)
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


Extent = namedtuple("Extent", "consumed examined allocated blocks deviations first_deviation")
Extent.__doc__ = "What verification found out; the first deviation is a Fault or None."

Guess = namedtuple("Guess", "fit types offset consumed understood deviations fault")
Guess.__doc__ = "Types that bytes may equally well be of; `fit` is yes, no, or part where bytes are left over."

Part = namedtuple("Part", "offset size types")
Part.__doc__ = "A message among others; ambiguous when there are several types."

HexMessage = namedtuple("HexMessage", "data type line")
HexMessage.__doc__ = "Bytes that were written down, the type that annotated text names, or \"\", and their first line."


class Difference(namedtuple("Difference", "path a b")):
    """A member that differs; each side is JSON, or None where there is nothing."""

    __slots__ = ()

    def __str__(self):
        return f"{self.path}: {'nothing' if self.a is None else self.a} -> {'nothing' if self.b is None else self.b}"


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
