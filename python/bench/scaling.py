#!/usr/bin/python3
"""Scaling of the Python front end over threads and processes, at 3840x2160.

    PYTHONPATH=build/python /usr/bin/python3 python/bench/scaling.py [--repeat N] [--frames N] [--no-cluster]

Measures, each against one thread:
  * one call of a conversion on one frame (one thread),
  * the same call in strips by pxkcc.convert_in_strips on 2 threads,
  * the dask example (frames to packed 4:2:2 with map_blocks) over a stack of frames
    on dask's threaded scheduler with 1 and 2 threads, and on a dask.distributed
    cluster of 2 worker processes on 127.0.0.1.
Prints Mpixel/s (the best of --repeat runs) and each speed-up over one thread. The
figures depend on the machine's load and memory bandwidth: read them as indications.
"""

import argparse
import os
import sys
import time

import numpy as np

import pxkcc

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "examples"))
import dask_frames  # noqa: E402

WIDTH, HEIGHT = 3840, 2160
STRIP_EXPORTS = ("pxkiRGBToYCbCr420_8u_C3P3R", "pxkiRGBToYCbCr_8u_C3R", "pxkiRGBToHLS_8u_C3R")


def best_seconds(run, repeat):
    best = float("inf")
    for _ in range(repeat):
        start = time.perf_counter()
        run()
        best = min(best, time.perf_counter() - start)
    return best


def line(label, pixels, seconds, base=None):
    rate = pixels / seconds / 1e6
    ratio = "" if base is None else "  x%.2f" % (base / seconds)
    print("  %-46s %9.1f Mpixel/s%s" % (label, rate, ratio))


def main(argv=None):
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--repeat", type=int, default=5)
    parser.add_argument("--frames", type=int, default=8, help="frames of the dask stack (default 8)")
    parser.add_argument("--no-cluster", action="store_true", help="leave out the dask.distributed cluster")
    args = parser.parse_args(argv)
    rgb = np.random.default_rng(7).integers(0, 256, size=(HEIGHT, WIDTH, 3), dtype=np.uint8)
    pixels = WIDTH * HEIGHT
    print("pxkcc %s on %d processors, %dx%d" % (pxkcc.version()["name"], os.cpu_count(), WIDTH, HEIGHT))

    for name in STRIP_EXPORTS:
        function = getattr(pxkcc, name)
        dst = function(rgb)
        print(name)
        one = best_seconds(lambda: function(rgb, dst=dst), args.repeat)
        line("one call, 1 thread", pixels, one)
        two = best_seconds(lambda: pxkcc.convert_in_strips(function, rgb, dst=dst, workers=2), args.repeat)
        line("convert_in_strips, 2 threads", pixels, two, one)

    import dask.array as da
    frames = dask_frames.synthetic_frames(args.frames, WIDTH, HEIGHT)
    stack = dask_frames.convert_frames(da.from_array(frames, chunks=(1, -1, -1, -1)))
    total = pixels * args.frames
    print("dask example: %d frames to packed 4:2:2 (pxkiRGBToYCbCr422_8u_C3C2R)" % args.frames)
    # The frames are stored into one array allocated beforehand, so that the figures
    # are the conversion's and not those of gathering the blocks into a new array.
    out = np.zeros(stack.shape, np.uint8)

    def threaded(n):
        return lambda: da.store(stack, out, lock=False, scheduler="threads", num_workers=n)

    one = best_seconds(threaded(1), args.repeat)
    line("map_blocks, threaded scheduler, 1 thread", total, one)
    two = best_seconds(threaded(2), args.repeat)
    line("map_blocks, threaded scheduler, 2 threads", total, two, one)
    if not args.no_cluster:
        from dask.distributed import Client, LocalCluster, wait
        with LocalCluster(n_workers=2, threads_per_worker=1, processes=True, host="127.0.0.1",
                          dashboard_address=None, silence_logs=40) as cluster, Client(cluster) as client:
            # The frames are made on the workers and the results stay there, so that the
            # figure is the conversion's and not the transfer between processes.
            made = client.persist(da.random.RandomState(7).randint(
                0, 256, size=frames.shape, chunks=(1, -1, -1, -1), dtype=np.uint8))
            wait(made)
            runs = iter(range(args.repeat))
            # A new name a run, so that the cluster converts again instead of handing
            # back the blocks it holds.
            two = best_seconds(
                lambda: wait(client.persist(dask_frames.convert_frames(made, name="yuy2-run%d" % next(runs)))),
                args.repeat)
        line("map_blocks, 2 worker processes", total, two, one)
    return 0


if __name__ == "__main__":
    sys.exit(main())
