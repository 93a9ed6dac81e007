"""Frames of sockets, files and bytes."""

from tlvmsg._native import Frames


def read_frames(source, framing):
    """Yields the body of each frame of a socket, a file or bytes, as it becomes complete. An end within one is a Fault.

        for body in tlvmsg.read_frames(connection, "length:2@0"):
            dispatch(body)
    """
    frames = framing if isinstance(framing, Frames) else Frames(framing)
    read = getattr(source, "recv", None) or getattr(source, "read1", None) or getattr(source, "read", None)
    if read is None:
        frames.feed(source)
        yield from frames
    else:
        while data := read(65536):
            frames.feed(data)
            yield from frames
    frames.end()
    yield from frames
