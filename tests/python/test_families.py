# One export or more of each family against values worked out here from the family's
# formula, or the literal values the header documents.
import numpy as np
import pytest

import pxkcc


def test_version_record():
    v = pxkcc.version()
    assert (v["major"], v["minor"], v["majorBuild"], v["build"]) == (2021, 8, 0, 0xBA45569B)
    assert v["version"] == "2021.8 (r0xba45569b)"
    assert v["buildDate"] == "Feb 17 2023"
    assert v["targetCode"] in ("s2", "a2")


def test_yuv420_luma_in_the_tail_columns(rng):
    # Width 7 has no vector columns: Y = (19595 R + 38470 G + 7471 B) >> 16.
    rgb = rng.integers(0, 256, size=(4, 7, 3), dtype=np.uint8)
    with pytest.warns(pxkcc.OddSizeWarning):
        y, u, v = pxkcc.pxkiRGBToYUV420_8u_C3P3R(rgb)
    r, g, b = (rgb[..., k].astype(np.int64) for k in range(3))
    expected = (19595 * r + 38470 * g + 7471 * b) >> 16
    assert np.array_equal(y[:, :6], expected[:, :6])


def test_ycbcr_of_pure_red():
    # Studio range: Y = 16 + 65.481, Cb = 128 - 37.797, Cr = 128 + 112 for red.
    rgb = np.zeros((1, 1, 3), np.uint8)
    rgb[..., 0] = 255
    out = pxkcc.pxkiRGBToYCbCr_8u_C3R(rgb)
    assert out[0, 0].tolist() == [82, 90, 240]


def test_packed_422_to_planes_splits_the_samples(rng):
    # Y0 Cb Y1 Cr: luma in every even byte, Cb and Cr alternating in the odd ones.
    packed = rng.integers(0, 256, size=(3, 10, 2), dtype=np.uint8)
    y, cb, cr = pxkcc.pxkiYCbCr422_8u_C2P3R(packed)
    assert np.array_equal(y, packed[..., 0])
    assert np.array_equal(cb, packed[:, 0::2, 1])
    assert np.array_equal(cr, packed[:, 1::2, 1])


def test_hls_of_gray_pixels():
    # A gray pixel gives H 0 and S 0, and L = (max + min) / 2 = its value.
    levels = np.array([0, 7, 64, 128, 200, 255, 31, 99, 150, 33, 1], np.uint8)
    rgb = np.repeat(levels[None, :, None], 3, axis=2)
    hls = pxkcc.pxkiRGBToHLS_8u_C3R(rgb)
    assert np.array_equal(hls[0, :, 0], np.zeros(11, np.uint8))
    assert np.array_equal(hls[0, :, 1], levels)
    assert np.array_equal(hls[0, :, 2], np.zeros(11, np.uint8))


def test_gamma_table_values():
    fwd = pxkcc.pxkiGammaFwd_8u_C3R(np.array([[[1, 2, 0]]], np.uint8))
    assert fwd[0, 0].tolist() == [4, 9, 0]
    inv = pxkcc.pxkiGammaInv_8u_C3R(np.array([[[4, 0, 255]]], np.uint8))
    assert inv[0, 0].tolist() == [1, 0, 255]
    fwd16 = pxkcc.pxkiGammaFwd_16u_C3R(np.array([[[1179, 1180, 0]]], np.uint16))
    assert fwd16[0, 0].tolist() == [5306, 5326, 0]


def test_color_twist_with_the_identity_matrix(rng):
    rgb = rng.integers(0, 256, size=(5, 9, 3), dtype=np.uint8)
    identity = np.hstack([np.eye(3), np.zeros((3, 1))]).astype(np.float32)  # 3 x 4
    assert np.array_equal(pxkcc.pxkiColorTwist32f_8u_C3R(rgb, identity), rgb)


def test_gray_expansion_copies_the_sample(rng):
    gray = rng.integers(0, 256, size=(3, 13), dtype=np.uint8)
    rgba = pxkcc.pxkiGrayToRGB_8u_C1C4R(gray, alpha=77)
    for k in range(3):
        assert np.array_equal(rgba[..., k], gray)
    assert np.all(rgba[..., 3] == 77)


def test_reduce_bits_to_two_levels_without_dither():
    # Nearest of the levels 0 and 255 (noise 0, pxkDitherNone).
    src = np.array([[0, 10, 100, 120, 140, 160, 250, 255]], np.uint8)
    out = pxkcc.pxkiReduceBits_8u_C1R(src, 0, 0, 2)
    assert out.tolist() == [[0, 0, 0, 0, 255, 255, 255, 255]]


def test_demosaic_of_a_flat_mosaic_is_flat():
    mosaic = np.full((8, 10), 90, np.uint8)
    rgb = pxkcc.pxkiCFAToRGB_8u_C1C3R(mosaic, 0, 0)
    assert rgb.shape == (8, 10, 3)
    assert np.all(rgb == 90)


def test_ycocg_plain_formula(rng):
    rgb = rng.integers(0, 256, size=(4, 11, 3), dtype=np.uint8)
    y, co, cg = pxkcc.pxkiRGBToYCoCg_8u_C3P3R(rgb)
    r, g, b = (rgb[..., k].astype(np.int64) for k in range(3))
    assert np.array_equal(y, (r + 2 * g + b + 2) >> 2)
    assert np.array_equal(co, np.minimum(((r - b + 1) >> 1) + 128, 255))
    assert np.array_equal(cg, np.minimum(((2 * g - r - b + 2) >> 2) + 128, 255))


def test_pack_12_bit_layout():
    # a, b -> a bits 11-4 | a bits 3-0, b bits 11-8 | b bits 7-0; an odd last sample
    # takes two bytes.
    src = np.array([[0xABC, 0x123, 0xF0E]], np.uint16)
    packed = pxkcc.pxkiPack_16u12u_C1R(src)
    assert packed[0, :5].tolist() == [0xAB, 0xC1, 0x23, 0xF0, 0xE0]
    back = pxkcc.pxkiUnpack_12u16u_C1R(packed, dst=np.zeros((1, 3), np.uint16))
    assert back.tolist() == src.tolist()


def test_tone_map_linear_scale():
    # scale = 255 / max; each output truncated.
    src = np.array([[0.0, 1.0, 2.0, 4.0]], np.float32)
    out = pxkcc.pxkiToneMapLinear_32f8u_C1R(src)
    assert out.tolist() == [[0, 63, 127, 255]]
