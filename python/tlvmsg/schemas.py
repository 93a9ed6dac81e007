"""Schemas, and the families of types in them."""

import os
import sys

from tlvmsg import _native
from tlvmsg.values import Fault

_package = os.path.dirname(os.path.abspath(__file__))
_loaded: list = []  # weak references to schemas

TYPE_CHECKING = False
if TYPE_CHECKING:
    from types import ModuleType
else:
    ModuleType = type(sys)  # without importing what has the name


class Family(ModuleType):
    """The types of a family, each made when it is first used."""

    def __init__(self, name, schema):
        super().__init__(name, f"The {name.rpartition('.')[2]} family: messages, structures, unions and enumerations.")
        self.__dict__.update(_schema=schema, __path__=[])

    def __getattr__(self, name):
        if not name.startswith("_"):
            try:
                of = self._schema.type(name)
            except Fault:
                of = None
            if of is not None and of.family == self.__name__.rpartition(".")[2]:
                setattr(self, name, of.python)
                return of.python
        raise AttributeError(f"family {self.__name__!r} has no type {name!r}", name=name, obj=self)

    def __dir__(self):
        family = self.__name__.rpartition(".")[2]
        return sorted(name for name, of in self._schema.names() if of == family)


class Schema(_native.Schema):
    """Types of schema files, or of a text: Schema("acme/") or Schema("acme/fan.tlv", text="..."); its families are
    attributes. Imports of the library's own files are found; others from the files' directories, then `imports`."""

    def __new__(cls, *paths, text=None, imports=()):
        if not paths:
            raise TypeError("Schema takes files or directories; tlvmsg itself has the library's own types")
        if text is not None and len(paths) > 1:
            raise TypeError("a text is of one path")
        from weakref import ref

        self = cls._make(tuple(map(os.fspath, paths)), text, map(os.fspath, imports))
        _loaded.append(ref(self, _loaded.remove))
        return self

    @classmethod
    def _make(cls, paths, text, imports):
        files = tuple(map(os.fsencode, paths)), text, tuple(map(os.fsencode, imports))
        self = _native.load(cls, *files, os.path.join(_package, "schema"))
        self.paths = paths
        return self

    def __getattr__(self, name):
        if name in self.families():
            family = self.__dict__[name] = Family(name, self)
            return family
        raise AttributeError(f"the schema has no family {name!r}", name=name, obj=self)

    def decode(self, name, data, **limits):
        """The value of the type of that name that the data begin with."""
        return self.type(name).decode(data, **limits)

    def sample(self, name, *settings, **options):
        """A value to test with, as Type.sample makes it."""
        return self.type(name).sample(*settings, **options)

    def annotate(self, data, type=None):
        """Every byte explained once, by a type, its name or its class, or by the tags in the data."""
        of = self.type(type) if isinstance(type, str) else getattr(type, "_type", type)
        pieces = super().annotate(data) if of is None else super().annotate(data, of)
        return b"".join(pieces).decode(errors="replace")


library = Schema._make((), None, ())
families = {name: Family(f"tlvmsg.{name}", library) for name in library.families()}
sys.modules.update({f"tlvmsg.{name}": family for name, family in families.items()})


def load(name, fingerprint, data):
    """For pickle."""
    for schema in [library, *filter(None, (each() for each in list(_loaded)))]:
        try:
            of = schema.type(name)
        except Fault:
            continue
        if of.fingerprint == fingerprint:
            return of.from_dict(data) if isinstance(data, dict) else of.decode(data, limit=sys.maxsize)
    line = f"error[unknown-name]: {name}: no schema here has it with fingerprint 0x{fingerprint:016X}"
    raise Fault(line, "unknown-name", name, found=fingerprint)
