import os
import tempfile
from pathlib import Path

os.environ.setdefault("HYPOTHESIS_STORAGE_DIRECTORY", os.path.join(tempfile.gettempdir(), "hypothesis"))
import hypothesis
import pytest
import tlvmsg

SOURCE = Path(__file__).parents[2]
hypothesis.settings.register_profile("tlvmsg", database=None, deadline=None)
hypothesis.settings.load_profile("tlvmsg")


@pytest.fixture(scope="session")
def acme():
    return tlvmsg.Schema(SOURCE / "examples/family/acme").acme


@pytest.fixture
def environment():
    """For programs that a test starts: a sanitizer, if there is one, is of Python alone."""
    return {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
