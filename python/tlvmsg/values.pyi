from typing import Any, Generic, TypeVar

Item = TypeVar("Item")

class Fault(ValueError):
    line: str
    code: str
    path: str
    offset: int | None
    found: Any
    allowed: Any
    def __init__(self, line: str, code: str = ..., path: str = ..., offset: int | None = ..., found: Any = ..., allowed: Any = ...) -> None: ...

class TextFault(Fault):
    lineno: int
    colno: int
    def __init__(self, line: str, code: str = ..., path: str = ..., offset: int | None = ..., lineno: int = ..., colno: int = ...) -> None: ...

class Bytes(bytes):
    @property
    def text(self) -> str: ...

class Items(list[Item], Generic[Item]): ...
class Missing(int): ...

def load(name: str, fingerprint: int, data: bytes | dict[str, Any]) -> Any: ...
