#!/usr/bin/python3
"""Converting a stack of video frames, or a directory of images, with dask.

Each frame is one block of a dask array, and ``dask.array.map_blocks`` calls a
pxkcc function on every block: here RGB frames to packed 4:2:2 YCbCr (Y0 Cb Y1 Cr,
``pxkiRGBToYCbCr422_8u_C3C2R``). The same graph runs on dask's threaded scheduler
(pxkcc releases the interpreter lock during each call, so the threads convert frames
in parallel) or on a ``dask.distributed`` cluster of worker processes, on one machine
or many: every worker needs the pxkcc package and this file on its Python path.

    PYTHONPATH=build/python /usr/bin/python3 python/examples/dask_frames.py
    PYTHONPATH=build/python /usr/bin/python3 python/examples/dask_frames.py --cluster --workers 2
    PYTHONPATH=build/python /usr/bin/python3 python/examples/dask_frames.py --directory frames/

Without --directory it converts synthetic frames; with it, every binary PPM (P6) file
of the directory, in name order (all of one size). Either way it checks the result
byte for byte against one call a frame, and prints the time taken.
"""

import argparse
import glob
import os
import sys
import time

import dask
import dask.array as da
import numpy as np

import pxkcc

CONVERSION = pxkcc.pxkiRGBToYCbCr422_8u_C3C2R


def convert_block(block):
    """One block of frames (n, height, width, 3) to packed 4:2:2 (n, height, width, 2)."""
    out = np.empty(block.shape[:3] + (2,), np.uint8)
    for i in range(block.shape[0]):
        CONVERSION(block[i], dst=out[i])
    return out


def convert_frames(frames, name=None):
    """A dask array of RGB frames (n, height, width, 3), uint8, to packed 4:2:2: one
    block a frame, each converted by one call. `name` names the result's blocks
    (dask derives one from the inputs by default)."""
    frames = frames.rechunk((1, -1, -1, -1))
    return frames.map_blocks(convert_block, dtype=np.uint8, chunks=frames.chunks[:3] + ((2,),), name=name)


# --- a directory of PPM images ------------------------------------------------------

def _ppm_header(f):
    fields = []
    while len(fields) < 4:
        line = f.readline()
        if not line:
            raise ValueError("%s: truncated PPM header" % f.name)
        fields += line.split(b"#")[0].split()
    if fields[0] != b"P6" or int(fields[3]) != 255:
        raise ValueError("%s: not an 8-bit binary PPM (P6)" % f.name)
    return int(fields[1]), int(fields[2])


def read_ppm(path):
    """An 8-bit binary PPM file as an (height, width, 3) uint8 array."""
    with open(path, "rb") as f:
        width, height = _ppm_header(f)
        data = np.frombuffer(f.read(width * height * 3), np.uint8)
    if data.size != width * height * 3:
        raise ValueError("%s: truncated PPM data" % path)
    return data.reshape(height, width, 3)


def write_ppm(path, rgb):
    with open(path, "wb") as f:
        f.write(b"P6\n%d %d\n255\n" % (rgb.shape[1], rgb.shape[0]))
        f.write(np.ascontiguousarray(rgb, np.uint8).tobytes())


def frames_from_directory(directory):
    """The PPM files of a directory, in name order, as a lazy dask array of frames."""
    paths = sorted(glob.glob(os.path.join(directory, "*.ppm")))
    if not paths:
        raise ValueError("%s: no .ppm files" % directory)
    with open(paths[0], "rb") as f:
        width, height = _ppm_header(f)
    frames = [da.from_delayed(dask.delayed(read_ppm)(p), shape=(height, width, 3), dtype=np.uint8) for p in paths]
    return da.stack(frames)


# --- the check ----------------------------------------------------------------------

def one_call_each(frames):
    """The reference: one call a frame, in this thread."""
    return np.stack([CONVERSION(np.asarray(f)) for f in frames])


def synthetic_frames(count, width, height, seed=1):
    rng = np.random.default_rng(seed)
    return rng.integers(0, 256, size=(count, height, width, 3), dtype=np.uint8)


def main(argv=None):
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--directory", help="convert the PPM files of this directory")
    parser.add_argument("--frames", type=int, default=8, help="synthetic frames (default 8)")
    parser.add_argument("--size", default="1920x1080", help="synthetic frame size WxH (default 1920x1080)")
    parser.add_argument("--workers", type=int, default=2, help="threads or worker processes (default 2)")
    parser.add_argument("--cluster", action="store_true",
                        help="run on a dask.distributed cluster of worker processes on 127.0.0.1")
    args = parser.parse_args(argv)

    if args.directory:
        frames = frames_from_directory(args.directory)
        reference_input = frames.compute(scheduler="sync")
    else:
        try:
            width, height = (int(v) for v in args.size.lower().split("x"))
        except ValueError:
            parser.error("--size takes WxH, e.g. 1920x1080, not %r" % args.size)
        reference_input = synthetic_frames(args.frames, width, height)
        frames = da.from_array(reference_input, chunks=(1, -1, -1, -1))

    result = convert_frames(frames)
    start = time.perf_counter()
    if args.cluster:
        from dask.distributed import Client, LocalCluster
        with LocalCluster(n_workers=args.workers, threads_per_worker=1, processes=True, host="127.0.0.1",
                          dashboard_address=None) as cluster, Client(cluster) as client:
            start = time.perf_counter()
            converted = client.compute(result).result()
            seconds = time.perf_counter() - start
    else:
        converted = result.compute(scheduler="threads", num_workers=args.workers)
        seconds = time.perf_counter() - start

    same = np.array_equal(converted, one_call_each(reference_input))
    n, h, w = converted.shape[:3]
    print("%d frames of %dx%d on %d %s: %.3f s, %.1f Mpixel/s; %s" % (
        n, w, h, args.workers, "worker processes" if args.cluster else "threads", seconds,
        n * w * h / seconds / 1e6, "same bytes as one call a frame" if same else "DIFFERENT from one call a frame"))
    return 0 if same else 1


if __name__ == "__main__":
    sys.exit(main())
