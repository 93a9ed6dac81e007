"""Frames of captures, as `tlv decode` takes them."""

import os
from collections import namedtuple

from tlvmsg.values import Fault
from tlvmsg.schemas import library


class Captured(namedtuple("Captured", "number type message error facts")):
    """A message of a capture. `message` is an object or None; `error`, of what is no message, a dictionary with a code, a
    message and more; `facts` is all that `tlv decode` says: time, source, destination, ports."""

    __slots__ = ()


def read_capture(path, *, type=None, type_of=(), filter=None, schema=library, tlv="tlv", options=()):
    """Yields a Captured for each message of a capture, by starting `tlv`, which has to be installed.

    `type`, `type_of` (lines such as "udp/4000=zel_led_control") and `filter` (as tcpdump has it) are those of
    `tlv decode`, and `options` are further ones.
    """
    import json  # which takes longer than the rest of the package
    import subprocess
    import tempfile

    command = [tlv, "decode", "--in", "pcap", *options]
    if type is not None:
        command += ["--type", type if isinstance(type, str) else type._type.name]
    command += [word for line in ([type_of] if isinstance(type_of, str) else type_of) for word in ("--type-of", line)]
    command += [word for source in schema.paths for word in ("--schema", source)]
    command += ["--filter", filter] if filter is not None else []
    command += ["--", os.fspath(path)]
    with tempfile.TemporaryFile() as said, subprocess.Popen(command, stdout=subprocess.PIPE, stderr=said) as process:
        try:
            for line in process.stdout:
                facts = json.loads(line)
                message = facts.pop("message", None)
                if message is not None:
                    message = schema.type(facts["type"]).from_dict(message)
                yield Captured(facts.get("frame"), facts.get("type"), message, facts.get("error"), facts)
        except BaseException:  # also of who stops reading
            process.kill()
            raise
        if process.wait() not in (0, 1):  # 1: some frames are no messages
            said.seek(0)
            raise Fault(said.read().decode(errors="replace").strip(), "cannot-read", os.fspath(path))
