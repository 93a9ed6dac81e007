"""For pytest: failed comparisons told by member or by annotated line, and samples."""

import difflib

import pytest


def _annotated(data):
    """The lines of the one message that the data are, by its tags where several types fit; none of other data."""
    from tlvmsg import annotate, divide

    parts = divide(data)
    if len(parts) != 1:
        return []
    return annotate(data, parts[0].types[0] if len(parts[0].types) == 1 else None).splitlines()[1:]


def pytest_assertrepr_compare(config, op, left, right):
    from tlvmsg import Fault, Record, diff

    if op != "==":
        return None
    if isinstance(left, Record) and type(left) is type(right):
        try:
            return [f"two {left._type.name} differ in", *(f"  {each}" for each in diff(left, right))]
        except (Fault, TypeError):  # one that could not be encoded
            return None
    if isinstance(left, bytes) and isinstance(right, bytes):
        lines, others = _annotated(left), _annotated(right)
        if lines and others:
            changes = difflib.ndiff(lines, others)
            return ["the bytes of two messages differ in", *(f"  {line}" for line in changes if line[0] in "-+")]
    return None


@pytest.fixture
def tlvmsg_sample():
    """A function that makes samples: tlvmsg_sample(voice.zel_led_control, "color=3", seed=1); a class or a name."""
    from tlvmsg import sample

    def make(type_, *settings, **options):
        return sample(type_, *settings, **options) if isinstance(type_, str) else type_.sample(*settings, **options)

    return make
