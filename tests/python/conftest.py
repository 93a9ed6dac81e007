import os
from pathlib import Path

import pytest
import tlvmsg

SOURCE = Path(__file__).parents[2]


@pytest.fixture(scope="session")
def acme():
    return tlvmsg.Schema(SOURCE / "examples/family/acme").acme


@pytest.fixture
def environment():
    """For programs that a test starts: a sanitizer, if there is one, is of Python alone."""
    return {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
