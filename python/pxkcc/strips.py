"""Converting one image in horizontal strips on a thread pool.

The library keeps no state and each call runs in its caller's thread, and the package
releases the interpreter lock during a call, so strips of one image convert in
parallel on Python threads. A strip is a run of whole rows; it starts on a row that
every plane's sampling allows (an even row for 4:2:0, a multiple of 4 for 1620, of 4
for the interlaced 4:2:0/4:2:2 members whose fields pair rows, and of 4 where 4:1:1
meets 4:2:0), and the last strip takes the rows left over.

Only exports whose rows are converted independently of one another may be split.
These are refused (:func:`row_independence` says why):

* the bit-depth reduction members (error diffusion carries each row's error into the
  next; ordered dither and noise depend on the position in the whole call),
* demosaicing (every pixel reads its neighbours' rows, and the call is given the whole
  image as a rectangle),
* tone maps (their level is measured over the whole image),
* filtered chroma members (their vertical filter reads the rows around each row), and
  the members that make chroma rows from means of neighbouring rows (1620 to 4:2:0,
  the 4:2:0 to 4:1:1 member with means, interlaced 4:2:0 to 4:2:2),
* members that take a work buffer, a rectangle or return a value through a pointer
  (strip-interface and size-query members), and any export without an image.

Strips give the same bytes as one call for every export that is accepted, as long
as the arrays' row addresses do not change between the two (the strips are views of
the same arrays, so they do not).
"""

import concurrent.futures
import math
import os
import threading
import warnings

from . import statuses

_REFUSED_WORDS = (
    ("ReduceBits", "bit-depth reduction carries error or position from row to row"),
    ("CFA", "demosaicing reads the rows around each row"),
    ("Demosaic", "demosaicing reads the rows around each row"),
    ("ToneMap", "a tone map measures its level over the whole image"),
    ("_Filter", "the chroma filter reads the rows around each row"),
    # Vertical chroma upsampling by means of neighbouring chroma rows.
    ("1620To420", "its chroma means read the rows around each row"),
    ("YCbCr420To411", "its chroma means read the rows around each row"),
    ("420To422_Interlace", "its field interpolation reads the rows around each row"),
    ("420ToCbYCr422_Interlace", "its field interpolation reads the rows around each row"),
)
_REFUSED_ARGS = {
    "scratch": "it takes a work buffer laid out for the whole call",
    "roi": "it takes the whole image as a rectangle",
    "out": "it returns a value for the whole call",
}
# Rows below which a strip is not worth a call of its own.
_LEAST_STRIP_ROWS = 8


def _export(function):
    from . import export as find
    from .binding import Export
    if isinstance(function, Export):
        return function
    if isinstance(function, str):
        return find(function)
    found = getattr(function, "export", None)
    if found is None:
        raise TypeError("convert_in_strips takes a pxkcc function or an export's name, not %r" % (function,))
    return found


def row_independence(function):
    """``(True, rows)`` if the export's rows convert independently, strips starting on
    multiples of ``rows``; ``(False, reason)`` if it may not be split."""
    export = _export(function)
    export._prepare()
    name = export.name
    for word, reason in _REFUSED_WORDS:
        if word in name:
            return False, "%s: %s" % (name, reason)
    for a in export.args:
        if a["kind"] in _REFUSED_ARGS:
            return False, "%s: %s" % (name, _REFUSED_ARGS[a["kind"]])
    if not export.images:
        return False, "%s: it converts no image" % name
    rows = 1
    for image in export.images:
        for plane in image.planes:
            rows = rows * plane.hdiv // math.gcd(rows, plane.hdiv)
    if "Interlace" in name or ("411" in name and "420" in name):
        rows = rows * 4 // math.gcd(rows, 4)
    return True, rows


def strip_bounds(height, rows, strips, strip_rows=None):
    """The strips [(first row, row count), ...] of an image of `height` rows cut on
    multiples of `rows` into about `strips` strips (or strips of `strip_rows`)."""
    if strip_rows is None:
        strip_rows = -(-height // max(strips, 1))
    least = max(_LEAST_STRIP_ROWS, 2 * rows)
    strip_rows = max(least, -(-strip_rows // rows) * rows)
    bounds = []
    y = 0
    while y < height:
        n = strip_rows if height - (y + strip_rows) >= least else height - y
        bounds.append((y, n))
        y += n
    return bounds or [(0, height)]


# One pool a worker count, started on first use and kept: starting and joining threads
# on every call costs more than the strips of a large image gain.
_pools = {}
_pools_lock = threading.Lock()


def _pool(workers):
    with _pools_lock:
        pool = _pools.get(workers)
        if pool is None:
            pool = concurrent.futures.ThreadPoolExecutor(max_workers=workers, thread_name_prefix="pxkcc-strips")
            _pools[workers] = pool
        return pool


def convert_in_strips(function, *args, workers=None, strip_rows=None, executor=None, dst=None, alpha=None,
                      size=None):
    """Calls `function` (a pxkcc function, or an export's name) as one call would, with
    the same arguments, but in horizontal strips on a thread pool, and returns what
    one call returns.

    `workers` threads (the processor count by default) run the strips, in a
    ``concurrent.futures.ThreadPoolExecutor`` the package keeps for that count, or on
    `executor` if given.
    `strip_rows` sets the height of a strip (rounded up to the sampling's rows);
    by default the image is cut into one strip a worker. An error status of any strip
    raises as from one call (the first strip's first); each warning status is issued
    once. ValueError for an export whose rows are not independent."""
    export = _export(function)
    ok, rows = row_independence(export)
    if not ok:
        raise ValueError("cannot convert in strips: " + rows)
    bound = export.bind(args, dst=dst, alpha=alpha, size=size)
    workers = workers or os.cpu_count() or 1
    bounds = strip_bounds(bound.height, rows, workers, strip_rows)
    if len(bounds) == 1:
        results = [bound.invoke()]
    elif executor is not None:
        results = list(executor.map(lambda b: bound.invoke(*b), bounds))
    else:
        results = list(_pool(workers).map(lambda b: bound.invoke(*b), bounds))
    codes = [status for status, _ in results]
    for status in codes:
        if status < 0:
            raise statuses.exception_for(export.name, status)
    for status in sorted(set(c for c in codes if c > 0)):
        warnings.warn(statuses.exception_for(export.name, status), stacklevel=2)
    return bound.result([])
