"""Frames of sockets, files and bytes."""

from tlvmsg import _native


class Frames:
    """Frames(framing): messages cut out of a stream. Iterating gives the bodies that are complete, and goes
    on when more has been fed. A framing is "length:2@0" and the like, as for `tlv --framing`."""

    __module__ = "tlvmsg"
    __slots__ = ("_frames", "_waiting", "_ended")

    def __init__(self, framing):
        self._frames, self._waiting, self._ended = _native.frames_new(framing), bytearray(), False

    def feed(self, data):
        """Takes in what has come."""
        self._waiting += memoryview(data)

    def __iter__(self):
        return self

    def __next__(self):
        body = _native.frames_next(self._frames, self._waiting, self._ended)
        if body is None:
            raise StopIteration
        return body

    def frame(self, body):
        """A message, or its bytes, behind a header."""
        body = memoryview(_native.type_of(body).encode(body) if isinstance(body, _native.Record) else body)
        return b"".join((_native.frames_header(self._frames, body.nbytes), body))

    def skip(self):
        """Passes over a frame that was refused."""
        _native.frames_resync(self._frames)

    def resync(self, class_):
        """Goes on at the first frame behind the refused one whose body is such a message."""
        _native.frames_resync(self._frames, class_)

    def end(self):
        """Says that nothing else comes: what is incomplete is then refused."""
        self._ended = True


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
        if data is None:
            raise BlockingIOError("the source does not block, and has nothing yet")
    frames.end()
    yield from frames
