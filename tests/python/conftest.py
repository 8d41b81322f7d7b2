# The package under test is the one of the build tree (PYTHONPATH=<build>/python, as
# ctest sets it); the export list is the source tree's.
import os
import warnings

import numpy as np
import pytest

SOURCE_ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
EXPORT_LIST = os.path.join(SOURCE_ROOT, "src", "frame", "exports.list")


def export_list():
    with open(EXPORT_LIST) as f:
        return [line.strip() for line in f if line.strip()]


@pytest.fixture
def rng():
    return np.random.default_rng(20261125)


@pytest.fixture(autouse=True)
def warnings_are_recorded():
    # Every test sees every warning, so that a test can count them.
    with warnings.catch_warnings():
        warnings.simplefilter("always")
        yield
