"""Messages as layers of scapy.

    IP(dst="10.0.0.2") / UDP(sport=4000, dport=4000) / TLVMsg(voice.zel_led_control(color=3))
    bind_layers(UDP, layer(voice.zel_led_control), dport=4000)      # from now on such packets have the layer
    packet[layer(voice.zel_led_control)].message.color
"""

import copy
import functools

from scapy.fields import Field
from scapy.packet import Packet


class MessageField(Field):
    """A message as long as its bytes say."""

    __slots__ = ["class_"]

    def __init__(self, name, class_):
        self.class_ = class_
        super().__init__(name, None)

    def any2i(self, pkt, x):
        return self.class_.from_dict(x) if isinstance(x, dict) else x

    def do_copy(self, x):
        return copy.deepcopy(x)

    def i2len(self, pkt, x):
        return len(self.addfield(pkt, b"", x))

    def i2repr(self, pkt, x):
        return repr(x)

    def addfield(self, pkt, s, val):
        return s + (self.class_() if val is None else val).encode()

    def getfield(self, pkt, s):
        return s[self.class_.verify(s).consumed:], self.class_.decode(s)


@functools.cache
def layer(class_):
    """The layer of a class of messages. What does not decode is left to scapy's Raw layer."""
    name = class_._type.name
    return type(name, (Packet,), {"name": name, "fields_desc": [MessageField("message", class_)], "__module__": __name__})


def TLVMsg(message):
    """A layer with this message; of a class, with an empty one."""
    return layer(message)(message=message()) if isinstance(message, type) else layer(type(message))(message=message)
