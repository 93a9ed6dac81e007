from typing import NamedTuple

from tlvmsg._native import Type
from tlvmsg.values import Fault

class Extent(NamedTuple):
    consumed: int
    examined: int
    allocated: int
    blocks: int
    deviations: int
    first_deviation: Fault | None

class Guess(NamedTuple):
    fit: str
    types: tuple[Type, ...]
    offset: int
    consumed: int
    understood: int
    deviations: int
    fault: Fault | None

class Part(NamedTuple):
    offset: int
    size: int
    types: tuple[Type, ...]

class Difference(NamedTuple):
    path: str
    a: str | None
    b: str | None

class HexMessage(NamedTuple):
    data: bytes
    type: str
    line: int
