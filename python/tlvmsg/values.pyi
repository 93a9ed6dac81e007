from typing import Any, Generic, TypeVar

from tlvmsg.faults import Fault as Fault, TextFault as TextFault

Item = TypeVar("Item")

class Bytes(bytes):
    @property
    def text(self) -> str: ...

class Items(list[Item], Generic[Item]): ...
class Missing(int): ...

def load(name: str, fingerprint: int, data: bytes) -> Any: ...
