"""Messages of a router's control plane as objects: decode, look, change, encode.

    >>> import tlvmsg
    >>> from tlvmsg import voice
    >>> request = voice.analogbri_led_control_req_message(led_control={"slot": 2, "color": 3})
    >>> data = request.encode()
    >>> voice.analogbri_led_control_req_message.decode(data).led_control.slot
    2
"""

import sys as _sys

if _sys.version_info < (3, 11):
    raise ImportError("tlvmsg needs Python 3.11 or newer, where the buffer protocol belongs to the stable ABI")

from tlvmsg._native import Record, Type, diff, read_hex, session_key, type_of, version as __version__
from tlvmsg.schemas import Family, Schema, families as _families, library
from tlvmsg.values import Bytes, Fault, Items, Missing, TextFault

TYPE_CHECKING = False
if TYPE_CHECKING:
    from tlvmsg.capture import Captured, read_capture
    from tlvmsg.dispatch import Dispatcher
    from tlvmsg.results import Difference, Extent, Guess, HexMessage, Part
    from tlvmsg.streams import Frames, read_frames

decode, guess, divide, annotate, sample, type = (
    library.decode, library.guess, library.divide, library.annotate, library.sample, library.type)

__all__ = ["Bytes", "Captured", "Difference", "Dispatcher", "Extent", "Family", "Fault", "Frames", "Guess", "HexMessage",
           "Items", "Missing", "Part", "Record", "Schema", "TextFault", "Type", "__version__", "annotate", "decode", "diff",
           "divide", "guess", "library", "read_capture", "read_frames", "read_hex", "sample", "session_key", "type_of"]

_later = {"Captured": "capture", "read_capture": "capture", "Dispatcher": "dispatch", "Frames": "streams", "read_frames": "streams",
          **dict.fromkeys(["Difference", "Extent", "Guess", "HexMessage", "Part"], "results")}


def __getattr__(name):
    """Imports what not every program needs, when it is asked for."""
    if name not in _later:
        raise AttributeError(f"module {__name__!r} has no attribute {name!r}")
    module = __import__(f"{__name__}.{_later[name]}", fromlist=[name])
    return globals().setdefault(name, getattr(module, name))


globals().update(_families)
