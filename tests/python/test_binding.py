# The package's conventions: shapes and dtypes, strides as steps, statuses as
# exceptions and warnings, outputs allocated or given.
import warnings

import numpy as np
import pytest

import pxkcc


def rgb_image(rng, h, w, channels=3):
    return rng.integers(0, 256, size=(h, w, channels), dtype=np.uint8)


def test_wrong_dtype_names_the_expected_shape_and_dtype(rng):
    with pytest.raises(ValueError, match=r"dtype uint16; expected shape \(4, 6, 3\) dtype uint8"):
        pxkcc.pxkiRGBToYCbCr_8u_C3R(rgb_image(rng, 4, 6).astype(np.uint16))


def test_wrong_shape_names_the_expected_shape(rng):
    with pytest.raises(ValueError, match=r"shape \(4, 6, 4\); expected shape \(4, 6, 3\) dtype uint8"):
        pxkcc.pxkiRGBToYCbCr_8u_C3R(rgb_image(rng, 4, 6, 4))
    dst = (np.zeros((4, 6), np.uint8), np.zeros((2, 2), np.uint8), np.zeros((2, 3), np.uint8))
    with pytest.raises(ValueError, match=r"destination plane 1 has shape \(2, 2\); expected shape \(2, 3\)"):
        pxkcc.pxkiRGBToYCbCr420_8u_C3P3R(rgb_image(rng, 4, 6), dst=dst)


def test_planar_side_needs_its_planes(rng):
    with pytest.raises(ValueError, match="3 planes"):
        pxkcc.pxkiYCbCrToRGB_8u_P3R(np.zeros((4, 4), np.uint8))


def test_wrong_number_of_values(rng):
    with pytest.raises(TypeError, match="takes 1 value"):
        pxkcc.pxkiColorTwist32f_8u_C3R(rgb_image(rng, 2, 2))
    with pytest.raises(ValueError, match="must have 12 elements"):
        pxkcc.pxkiColorTwist32f_8u_C3R(rgb_image(rng, 2, 2), np.eye(3))
    with pytest.raises(ValueError, match=r"must be in \[0, 4294967295\]"):
        pxkcc.pxkiReduceBits_8u_C1R(np.zeros((2, 2), np.uint8), -1, 0, 2)


def test_outputs_are_allocated_or_filled_in_place(rng):
    y, cb, cr = pxkcc.pxkiRGBToYCbCr422_8u_C3P3R(rgb_image(rng, 5, 7))
    assert (y.shape, cb.shape, cr.shape) == ((5, 7), (5, 4), (5, 4))
    assert y.dtype == np.uint8
    rgb = rgb_image(rng, 5, 8)
    y, cb, cr = pxkcc.pxkiRGBToYCbCr422_8u_C3P3R(rgb)
    given = tuple(np.full(p.shape, 3, np.uint8) for p in (y, cb, cr))
    returned = pxkcc.pxkiRGBToYCbCr422_8u_C3P3R(rgb, dst=given)
    assert all(a is b for a, b in zip(returned, given))
    assert all(np.array_equal(a, b) for a, b in zip(returned, (y, cb, cr)))


def test_in_place_member_returns_its_image(rng):
    img = rng.integers(0, 256, size=(3, 5, 3), dtype=np.uint8)
    expected = pxkcc.pxkiGammaFwd_8u_C3R(img)
    out = pxkcc.pxkiGammaFwd_8u_C3IR(img)
    assert out is img
    assert np.array_equal(img, expected)


def test_non_contiguous_rows_are_passed_as_steps(rng):
    big = rgb_image(rng, 20, 30)
    view = big[3:17:2, 5:24]  # every other row, a window of columns
    assert not view.flags.c_contiguous
    dst_big = np.zeros((20, 40, 3), np.uint8)
    dst = dst_big[1:15:2, 2:21]
    out = pxkcc.pxkiRGBToYCbCr_8u_C3R(view, dst=dst)
    assert out is dst
    assert np.array_equal(out, pxkcc.pxkiRGBToYCbCr_8u_C3R(np.ascontiguousarray(view)))
    # Nothing outside the view was written.
    untouched = np.ones(dst_big.shape[:2], bool)
    untouched[1:15:2, 2:21] = False
    assert not dst_big[untouched].any()


def test_negative_row_stride(rng):
    rgb = rgb_image(rng, 9, 17)
    flipped = rgb[::-1]
    assert flipped.strides[0] < 0
    out = pxkcc.pxkiRGBToYCbCr_8u_C3R(flipped)
    assert np.array_equal(out, pxkcc.pxkiRGBToYCbCr_8u_C3R(np.ascontiguousarray(flipped)))
    # A destination that runs upwards, too.
    dst = np.zeros_like(rgb)
    pxkcc.pxkiRGBToYCbCr_8u_C3R(rgb, dst=dst[::-1])
    assert np.array_equal(dst[::-1], pxkcc.pxkiRGBToYCbCr_8u_C3R(rgb))


def test_exports_that_refuse_negative_steps(rng):
    # Gamma takes positive steps only: a flipped source is copied, a flipped
    # destination is refused before any call.
    rgb = rgb_image(rng, 6, 5)
    expected = pxkcc.pxkiGammaFwd_8u_C3R(np.ascontiguousarray(rgb[::-1]))
    assert np.array_equal(pxkcc.pxkiGammaFwd_8u_C3R(rgb[::-1]), expected)
    with pytest.raises(ValueError, match="positive row strides"):
        pxkcc.pxkiGammaFwd_8u_C3R(rgb, dst=np.zeros_like(rgb)[::-1])


def test_scattered_pixels_of_a_destination_are_refused(rng):
    rgb = rgb_image(rng, 4, 4)
    dst = np.zeros((4, 8, 3), np.uint8)[:, ::2]
    with pytest.raises(ValueError, match="must be contiguous"):
        pxkcc.pxkiRGBToYCbCr_8u_C3R(rgb, dst=dst)
    # A source like that is copied.
    src = rgb_image(rng, 4, 8)[:, ::2]
    assert np.array_equal(pxkcc.pxkiRGBToYCbCr_8u_C3R(src),
                          pxkcc.pxkiRGBToYCbCr_8u_C3R(np.ascontiguousarray(src)))


def test_error_status_raises_with_name_and_value(rng):
    with pytest.raises(pxkcc.SizeError) as caught:
        pxkcc.pxkiRGBToYCbCr420_8u_C3P3R(rgb_image(rng, 1, 4))
    assert caught.value.status == -6
    assert caught.value.name == "pxkErrSize"
    assert isinstance(caught.value, pxkcc.Error)
    assert "pxkErrSize" in str(caught.value)
    with pytest.raises(pxkcc.RangeError) as caught:
        pxkcc.pxkiGammaFwd_32f_C3R(np.zeros((2, 2, 3), np.float32), 1.0, 0.5)
    assert caught.value.status == -49
    with pytest.raises(pxkcc.BadArgError):
        pxkcc.pxkiCFAToRGB_8u_C1C3R(np.zeros((8, 8), np.uint8), 7, 0)
    with pytest.raises(pxkcc.NoiseRangeError):
        pxkcc.pxkiReduceBits_8u_C1R(np.zeros((2, 2), np.uint8), 101, 0, 2)


def test_error_leaves_a_given_destination_unwritten(rng):
    dst = (np.full((1, 4), 7, np.uint8), np.full((1, 2), 7, np.uint8), np.full((1, 2), 7, np.uint8))
    with pytest.raises(pxkcc.SizeError):
        pxkcc.pxkiRGBToYCbCr420_8u_C3P3R(rgb_image(rng, 1, 4), dst=dst)
    assert all(np.all(p == 7) for p in dst)


def test_warning_status_is_a_python_warning(rng):
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        y, cb, cr = pxkcc.pxkiRGBToYCbCr420_8u_C3P3R(rgb_image(rng, 3, 3))
    assert len(caught) == 1
    w = caught[0]
    assert issubclass(w.category, pxkcc.OddSizeWarning)
    assert (w.message.status, w.message.name) == (35, "pxkWarnOddSize")
    assert w.filename == __file__  # reported at the caller's line
    with pytest.warns(pxkcc.NegativeImageWarning):
        pxkcc.pxkiToneMapLinear_32f8u_C1R(np.full((2, 3), -1.0, np.float32))
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        with pytest.raises(pxkcc.OddSizeWarning):
            pxkcc.pxkiRGBToYCbCr420_8u_C3P3R(rgb_image(rng, 3, 3))


def test_values_written_through_a_pointer_are_returned():
    a = pxkcc.pxkiReduceBitsGetBufferSize(1, 0, 1, size=(100, 1))
    b = pxkcc.pxkiReduceBitsGetBufferSize(1, 0, 1, size=(1000, 1))
    assert isinstance(a, int) and b > a > 0
    assert pxkcc.pxkiReduceBitsGetBufferSize(1, 0, 0, size=(100, 1)) == 0
    with pytest.raises(pxkcc.ChannelsError):
        pxkcc.pxkiReduceBitsGetBufferSize(2, 0, 1, size=(100, 1))


def test_help_text_tells_the_arrays():
    doc = pxkcc.pxkiYCbCr420ToRGB_8u_P2C3R.__doc__
    assert "ceil(h/2)" in doc and "uint8" in doc
    assert pxkcc.pxkiYCbCr420ToRGB_8u_P2C3R.__name__ == "pxkiYCbCr420ToRGB_8u_P2C3R"


def test_rows_a_call_touches_past_the_region_stay_inside_the_package():
    # At height 2 the 4:2:0 to 4:1:1 member reads a source chroma row and writes two
    # destination chroma rows past the region: the caller's neighbouring rows stay
    # as they were. Row 0 of each chroma plane is S[0][2c].
    w = 8
    src_rows = np.full((4, w), 9, np.uint8)
    src = (src_rows[0:2], np.arange(16, dtype=np.uint8).reshape(4, 4)[0:1], np.full((4, 4), 50, np.uint8)[0:1])
    sentinel = np.full((6, 2), 77, np.uint8)
    dst = (np.zeros((2, w), np.uint8), sentinel[0:2], np.full((6, 2), 77, np.uint8)[0:2])
    pxkcc.pxkiYCbCr420To411_8u_P3R(src, dst=dst)
    assert np.all(sentinel[2:] == 77)
    assert dst[1][0].tolist() == [0, 2]
    assert dst[2][0].tolist() == [50, 50]
    assert np.array_equal(dst[0], src_rows[0:2])
