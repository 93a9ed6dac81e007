"""What functions give that find something out."""

from collections import namedtuple

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
