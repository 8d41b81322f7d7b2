# Every export of the list has a function in the package, and each can be called on a
# small image through the generic path (arrays made from its call shape).
import threading
import time

import numpy as np
import pytest

import pxkcc
from conftest import export_list, make_inputs, values_at

WIDTH, HEIGHT = 32, 16  # at least every family's least size, multiples of 4


def test_module_lists_the_export_list():
    assert pxkcc.exports() == export_list()


@pytest.mark.parametrize("name", export_list())
def test_every_export_has_a_function(name):
    function = getattr(pxkcc, name, None)
    assert callable(function), "%s has no function in pxkcc" % name
    if name != "pxkccGetLibVersion":
        assert function.__name__ == name
        assert pxkcc.export(name).describe().startswith(name)


@pytest.mark.parametrize("name", [n for n in export_list() if n != "pxkccGetLibVersion"])
def test_every_export_is_callable_on_a_small_image(name, rng):
    export = pxkcc.export(name)
    export._prepare()
    images = make_inputs(export, WIDTH, HEIGHT, rng)
    size = (WIDTH, HEIGHT) if not export.inputs or export.inputs[0].bit_packed else None
    failures = []
    # The values at the low end of their ranges, the middle and the high end: at least
    # one of these is a valid call.
    for where in (0.0, 0.5, 1.0):
        try:
            result = getattr(pxkcc, name)(*images, *values_at(export, where), size=size)
        except pxkcc.Error as e:
            failures.append(str(e))
            continue
        produced = len(export.images) - len([i for i in export.images if i.role == "src"])
        produced += len([a for a in export.args if a["kind"] == "out"])
        results = [result] if produced == 1 else list(result)
        for image, out in zip(export.outputs, results):
            planes = [out] if len(image.planes) == 1 else list(out)
            assert [p.shape for p in planes] == [p.expected_shape(WIDTH, HEIGHT) for p in image.planes]
        return
    pytest.fail("%s: no call succeeded: %s" % (name, "; ".join(failures)))


def test_two_threads_on_halves_give_the_bytes_of_one_call(rng):
    rgb = rng.integers(0, 256, size=(96, 130, 3), dtype=np.uint8)
    whole = pxkcc.pxkiRGBToYCbCr420_8u_C3P3R(rgb)
    y = np.zeros((96, 130), np.uint8)
    cb = np.zeros((48, 65), np.uint8)
    cr = np.zeros((48, 65), np.uint8)

    def half(r0, r1):
        pxkcc.pxkiRGBToYCbCr420_8u_C3P3R(rgb[r0:r1], dst=(y[r0:r1], cb[r0 // 2:r1 // 2], cr[r0 // 2:r1 // 2]))

    threads = [threading.Thread(target=half, args=(0, 48)), threading.Thread(target=half, args=(48, 96))]
    for t in threads:
        t.start()
    for t in threads:
        t.join()
    assert np.array_equal(y, whole[0])
    assert np.array_equal(cb, whole[1])
    assert np.array_equal(cr, whole[2])


def test_other_threads_run_during_a_call():
    # One long call (a float-heavy conversion of a large image) in this thread, while
    # another thread records the times at which it runs Python code: it can only do
    # so during the call if the call has released the interpreter lock.
    rgb = np.zeros((3072, 4096, 3), np.uint8)
    dst = np.zeros_like(rgb)
    ticks = []
    stop = threading.Event()

    def tick():
        while not stop.is_set():
            ticks.append(time.perf_counter())

    ticker = threading.Thread(target=tick)
    ticker.start()
    time.sleep(0.01)
    start = time.perf_counter()
    pxkcc.pxkiRGBToHLS_8u_C3R(rgb, dst=dst)
    end = time.perf_counter()
    stop.set()
    ticker.join()
    margin = (end - start) / 4
    inside = [t for t in ticks if start + margin < t < end - margin]
    assert inside, "no other thread ran during a call of %.3f s" % (end - start)


def test_every_export_has_a_lower_case_alias():
    assert pxkcc.friendly_name("pxkiRGBToYCbCr420_8u_C3P3R") == "rgb_to_ycbcr420_8u_c3p3r"
    assert pxkcc.friendly_name("pxkiToneMapLinear_32f8u_C1R") == "tonemaplinear_32f8u_c1r"
    names = [n for n in export_list() if n != "pxkccGetLibVersion"]
    aliases = {pxkcc.friendly_name(n) for n in names}
    assert len(aliases) == len(names)
    for name in names:
        assert getattr(pxkcc, pxkcc.friendly_name(name)) is getattr(pxkcc, name)
