# Converting in horizontal strips on a thread pool gives the bytes of one call.
import concurrent.futures
import warnings

import numpy as np
import pytest

import pxkcc
from pxkcc.strips import strip_bounds
from conftest import export_list, make_inputs, values_at


def planes_of(result):
    return list(result) if isinstance(result, tuple) else [result]


def same_bytes(a, b):
    return all(x.shape == y.shape and x.tobytes() == y.tobytes() for x, y in zip(planes_of(a), planes_of(b)))


@pytest.mark.parametrize("name, w, h, values", [
    ("pxkiRGBToYCbCr420_8u_C3P3R", 130, 98, ()),
    ("pxkiRGBToYCbCr420_8u_C3P2R", 66, 40, ()),
    ("pxkiYCbCr420ToRGB_8u_P3C3R", 64, 50, ()),
    ("pxkiYCbCr422ToYCbCr420_8u_C2P3R", 72, 44, ()),
    ("pxkiYCbCr420To1620_8u_P3R", 64, 48, ()),
    ("pxkiYCbCr422To420_Interlace_8u_P3R", 40, 48, ()),
    ("pxkiYCbCr411To420_8u_P3R", 64, 40, ()),
    ("pxkiRGBToHLS_8u_C3R", 37, 45, ()),
    ("pxkiGammaFwd_32f_C3R", 29, 33, (0.0, 1.0)),
    ("pxkiColorTwist32f_16u_C3R", 31, 30, (np.linspace(-1, 1, 12),)),
    ("pxkiRGBToYCoCg_8u_C3P3R", 50, 27, ()),
])
def test_strips_give_the_bytes_of_one_call(name, w, h, values, rng):
    export = pxkcc.export(name)
    images = make_inputs(export, w, h, rng)
    whole = getattr(pxkcc, name)(*images, *values)
    for workers, strip_rows in ((2, None), (3, 8), (4, 12)):
        parts = pxkcc.convert_in_strips(getattr(pxkcc, name), *images, *values, workers=workers,
                                        strip_rows=strip_rows)
        assert same_bytes(parts, whole), "%s with %d workers" % (name, workers)


def test_strips_on_a_given_executor_and_destination(rng):
    rgb = rng.integers(0, 256, size=(64, 48, 3), dtype=np.uint8)
    dst = np.zeros((64, 48, 3), np.uint8)
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        out = pxkcc.convert_in_strips("pxkiRGBToYUV_8u_C3R", rgb, executor=pool, strip_rows=8, dst=dst)
    assert out is dst
    assert np.array_equal(dst, pxkcc.pxkiRGBToYUV_8u_C3R(rgb))


def test_a_warning_of_the_strips_is_issued_once(rng):
    rgb = rng.integers(0, 256, size=(41, 33, 3), dtype=np.uint8)  # odd width and height
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        whole = pxkcc.pxkiRGBToYCbCr420_8u_C3P3R(rgb)
        parts = pxkcc.convert_in_strips(pxkcc.pxkiRGBToYCbCr420_8u_C3P3R, rgb, workers=2, strip_rows=8)
    assert [w.category for w in caught] == [pxkcc.OddSizeWarning, pxkcc.OddSizeWarning]
    assert same_bytes(parts, whole)


def test_an_error_of_a_strip_raises():
    with pytest.raises(pxkcc.SizeError):
        pxkcc.convert_in_strips(pxkcc.pxkiRGBToYCbCr420_8u_C3P3R, np.zeros((1, 8, 3), np.uint8))


@pytest.mark.parametrize("name, why", [
    ("pxkiReduceBits_8u_C1R", "row to row"),
    ("pxkiCFAToRGB_8u_C1C3R", "rows around"),
    ("pxkiDemosaicAHD_8u_C1C3R", "rows around"),
    ("pxkiToneMapMean_32f8u_C1R", "whole image"),
    ("pxkiYCbCr420ToYCbCr422_Filter_8u_P3R", "rows around"),
    ("pxkiReduceBitsGetBufferSize", "row to row"),
])
def test_exports_whose_rows_depend_on_each_other_are_refused(name, why):
    ok, reason = pxkcc.row_independence(name)
    assert not ok and why in reason
    with pytest.raises(ValueError, match="cannot convert in strips"):
        pxkcc.convert_in_strips(name, np.zeros((16, 16), np.uint8))


def test_strip_rows_follow_the_sampling():
    assert pxkcc.row_independence("pxkiRGBToYCbCr_8u_C3R") == (True, 1)
    assert pxkcc.row_independence("pxkiRGBToYCbCr420_8u_C3P3R") == (True, 2)
    assert pxkcc.row_independence("pxkiYCbCr420To1620_8u_P3R") == (True, 4)
    assert pxkcc.row_independence("pxkiYCbCr422To420_Interlace_8u_P3R") == (True, 4)
    assert pxkcc.row_independence("pxkiYCbCr411To420_8u_P3R") == (True, 4)
    for height, rows, strips in ((1080, 2, 2), (2160, 4, 7), (99, 2, 4), (17, 4, 8), (5, 2, 2)):
        bounds = strip_bounds(height, rows, strips)
        assert sum(n for _, n in bounds) == height
        assert all(y % rows == 0 for y, _ in bounds)
        assert all(b[0] + b[1] == c[0] for b, c in zip(bounds, bounds[1:]))
        assert all(n >= min(height, 8) for _, n in bounds)
    assert len(strip_bounds(1080, 2, 2)) == 2


@pytest.mark.parametrize("name", [n for n in export_list() if n != "pxkccGetLibVersion"])
def test_every_export_accepted_for_strips_gives_the_bytes_of_one_call(name, rng):
    ok, _ = pxkcc.row_independence(name)
    if not ok:
        return
    export = pxkcc.export(name)
    w, h = 44, 40
    images = make_inputs(export, w, h, rng)
    size = (w, h) if export.inputs[0].bit_packed else None
    for where in (0.5, 0.0, 1.0):
        values = values_at(export, where)
        try:
            with warnings.catch_warnings():
                warnings.simplefilter("ignore")
                whole = getattr(pxkcc, name)(*images, *values, size=size)
                parts = pxkcc.convert_in_strips(name, *images, *values, workers=3, strip_rows=8, size=size)
        except pxkcc.Error:
            continue
        assert same_bytes(parts, whole), name
        return
    pytest.fail("%s: no call succeeded" % name)


def test_vertical_interpolation_is_refused():
    for name in ("pxkiYCbCr1620To420_8u_P3R", "pxkiYCbCr420To411_8u_P3R", "pxkiYCbCr420To422_Interlace_8u_P3R"):
        ok, reason = pxkcc.row_independence(name)
        assert not ok and "rows around" in reason
