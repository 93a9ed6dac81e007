"""What values are made of where Python's own types do not say enough, and what the module in C does not have to do.
Whatever takes long to import, no module that `import tlvmsg` needs does."""

from tlvmsg.faults import Fault, schema_fault, text_fault, value_fault

__all__ = ["Fault", "schema_fault", "text_fault", "value_fault"]


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


class RecordMethods:
    """Methods of messages that need not be fast."""

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
    """The same of types."""

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
