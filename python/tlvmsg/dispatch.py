"""Messages to those who handle them, by the keys in their session headers."""

from tlvmsg.faults import Fault


class Dispatcher:
    """A table of handlers by key.

        >>> dispatch = Dispatcher()
        >>> @dispatch.on(acme.acme_fan_report_message)
        ... def report(message): ...
        >>> dispatch(data)          # decodes, calls, and gives what the handler gives
    """

    def __init__(self, **limits):
        self.limits, self.handlers, self.offset = limits, {}, None

    def on(self, class_, key=None):
        """Registers what it decorates for messages of that class: by the schema's key, or by one of your own."""
        of = class_._type
        key = of.key if key is None else key
        if key is None or of.key_offset is None:
            raise ValueError(f"{of.name} has no {'key' if key is None else 'field for a key'}")
        if self.offset not in (None, of.key_offset) or key in self.handlers:
            raise ValueError(f"{of.name}: key {key} is taken, or its place is another than that of the others")

        def register(handler):
            self.offset = of.key_offset
            self.handlers[key] = class_, handler
            return handler

        return register

    def __call__(self, data):
        """Raises a Fault for what no handler is there for."""
        view = memoryview(data).cast("B")
        key = None
        if self.offset is not None and len(view) >= self.offset + 4:
            key = int.from_bytes(view[self.offset:self.offset + 4], "big")
        if key not in self.handlers:
            what = "too short for a key" if key is None else f"nobody handles messages of key {key}"
            raise Fault(f"error[unknown-message]: {what}", "unknown-message", found=key, allowed=sorted(self.handlers))
        class_, handler = self.handlers[key]
        return handler(class_.decode(view, **self.limits))
