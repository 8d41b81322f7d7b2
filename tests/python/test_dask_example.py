# The dask example of python/examples: frames converted with map_blocks on the threaded
# scheduler and on a dask.distributed cluster of worker processes on loopback, checked
# byte for byte against one call a frame.
import os
import sys

import numpy as np
import pytest

import pxkcc
from conftest import SOURCE_ROOT

da = pytest.importorskip("dask.array")
EXAMPLES = os.path.join(SOURCE_ROOT, "python", "examples")
sys.path.insert(0, EXAMPLES)
import dask_frames  # noqa: E402


def expected_yuy2(rgb):
    # One call a frame, in this thread.
    return np.stack([pxkcc.pxkiRGBToYCbCr422_8u_C3C2R(f) for f in rgb])


def test_stack_of_frames_on_the_threaded_scheduler():
    rgb = dask_frames.synthetic_frames(6, 64, 48, seed=3)
    frames = da.from_array(rgb, chunks=(2, 48, 64, 3))
    result = dask_frames.convert_frames(frames)
    assert result.numblocks[0] == 6
    converted = result.compute(scheduler="threads", num_workers=2)
    assert converted.shape == (6, 48, 64, 2) and converted.dtype == np.uint8
    assert converted.tobytes() == expected_yuy2(rgb).tobytes()
    # Gray 128 gives luma 16 + 219 * 128 / 255 = 125.9 (each of a pair's two luma
    # forms rounds it its own way) and neutral chroma.
    gray = np.full((1, 8, 8, 3), 128, np.uint8)
    out = dask_frames.convert_frames(da.from_array(gray)).compute(scheduler="threads")
    assert set(np.unique(out[..., 0]).tolist()) <= {125, 126} and np.all(out[..., 1] == 128)


def test_directory_of_images(tmp_path):
    rgb = dask_frames.synthetic_frames(4, 40, 30, seed=4)
    for i, frame in enumerate(rgb):
        dask_frames.write_ppm(str(tmp_path / ("frame%03d.ppm" % i)), frame)
    frames = dask_frames.frames_from_directory(str(tmp_path))
    assert frames.shape == (4, 30, 40, 3)
    converted = dask_frames.convert_frames(frames).compute(scheduler="threads", num_workers=2)
    assert converted.tobytes() == expected_yuy2(rgb).tobytes()
    assert dask_frames.main(["--directory", str(tmp_path), "--workers", "2"]) == 0


def test_bad_directory_is_a_clear_error(tmp_path):
    with pytest.raises(ValueError, match="no .ppm files"):
        dask_frames.frames_from_directory(str(tmp_path))
    (tmp_path / "a.ppm").write_bytes(b"P5\n2 2\n255\n....")
    with pytest.raises(ValueError, match="not an 8-bit binary PPM"):
        dask_frames.frames_from_directory(str(tmp_path))


def test_stack_of_frames_on_a_local_cluster_of_processes(monkeypatch):
    distributed = pytest.importorskip("dask.distributed")
    # The worker processes import pxkcc and the example by the path they inherit.
    path = os.environ.get("PYTHONPATH", "")
    monkeypatch.setenv("PYTHONPATH", os.pathsep.join(p for p in (path, EXAMPLES) if p))
    rgb = dask_frames.synthetic_frames(6, 96, 64, seed=5)
    result = dask_frames.convert_frames(da.from_array(rgb, chunks=(1, 64, 96, 3)))
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, host="127.0.0.1",
                                  dashboard_address=None, silence_logs=40) as cluster:
        with distributed.Client(cluster) as client:
            converted = client.compute(result).result()
            workers = client.run(os.getpid)
    assert len(set(workers.values())) == 2 and os.getpid() not in workers.values()
    assert converted.tobytes() == expected_yuy2(rgb).tobytes()
