"""Messages of a router's control plane as objects: decode, look, change, encode.

    >>> import tlvmsg
    >>> from tlvmsg import voice
    >>> request = voice.analogbri_led_control_req_message(led_control={"slot": 2, "color": 3})
    >>> data = request.encode()
    >>> voice.analogbri_led_control_req_message.decode(data).led_control.slot
    2
"""

import sys as _sys

from tlvmsg._native import Frames, Record, Type, diff, read_hex, type_of, version as __version__
from tlvmsg.capture import Captured, read_capture
from tlvmsg.dispatch import Dispatcher
from tlvmsg.faults import Fault, TextFault
from tlvmsg.schemas import Family, Schema, library
from tlvmsg.streams import read_frames
from tlvmsg.values import Bytes, Difference, Extent, Guess, HexMessage, Items, Missing, Part

decode, guess, divide, annotate, sample, type = (
    library.decode, library.guess, library.divide, library.annotate, library.sample, library.type)

__all__ = ["Bytes", "Captured", "Difference", "Dispatcher", "Extent", "Family", "Fault", "Frames", "Guess", "HexMessage",
           "Items", "Missing", "Part", "Record", "Schema", "TextFault", "Type", "__version__", "annotate", "decode", "diff",
           "divide", "guess", "library", "read_capture", "read_frames", "read_hex", "sample", "type_of"]

for _name in library.families():
    globals()[_name] = _sys.modules[f"{__name__}.{_name}"]
