"""Messages to those who handle them, by the keys in their session headers."""

from tlvmsg._native import session_key
from tlvmsg.values import Fault


class Dispatcher:
    """A table of handlers by key.

        >>> dispatch = Dispatcher()
        >>> @dispatch.on(acme.acme_fan_report_message)
        ... def report(message): ...
        >>> dispatch(data)          # decodes, calls, and gives what the handler gives
    """

    def __init__(self, **limits):
        self.limits, self.handlers = limits, {}

    def on(self, class_, key=None):
        """Registers what it decorates for messages of that class: by the schema's key, or by one of your own."""
        key = class_._type.key if key is None else key
        if key is None or key in self.handlers:
            raise ValueError(f"{class_.__name__} {'has no key' if key is None else f'with key {key}, which is taken'}")

        def register(handler):
            self.handlers[key] = class_, handler
            return handler

        return register

    def __call__(self, data, key=None):
        """`key` is for messages that others know by something else than their session header. Raises a Fault for what
        no handler is there for."""
        key = session_key(data) if key is None else key
        if key not in self.handlers:
            what = "no session header, and no key given" if key is None else f"nobody handles messages of key {key}"
            raise Fault(f"error[unknown-message]: {what}", "unknown-message", found=key, allowed=sorted(self.handlers))
        class_, handler = self.handlers[key]
        return handler(class_.decode(data, **self.limits))
