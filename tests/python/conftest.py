# The package under test is the one of the build tree (PYTHONPATH=<build>/python, as
# ctest sets it); the export list is the source tree's.
import os

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


def make_inputs(export, width, height, rng):
    """Random images for the inputs of an export, by its call shape."""
    export._prepare()
    images = []
    for image in export.inputs:
        planes = []
        for plane in image.planes:
            shape = plane.expected_shape(width, height)
            if np.dtype(image.dtype).kind == "f":
                planes.append(rng.uniform(0.0, 1.0, size=shape).astype(image.dtype))
            else:
                info = np.iinfo(image.dtype)
                planes.append(rng.integers(info.min, info.max, size=shape, endpoint=True, dtype=image.dtype))
        images.append(planes[0] if len(planes) == 1 else tuple(planes))
    return images


def values_at(export, where):
    """The values of an export at `where` (0 low end, 1 high end) of their ranges."""
    values = []
    for a in export.value_args:
        v = a["lo"] + where * (a["hi"] - a["lo"])
        if a["type"][0] != "f":
            v = int(round(v))
        values.append(np.full(a["count"], v) if a["kind"] == "values" else v)
    return values
