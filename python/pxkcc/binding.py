"""One export as a Python function over numpy arrays.

An export's call shape (from the extension: the images it reads and writes, and its
C argument list) decides everything here:

* Arguments: the images it reads (``src``, or the in-place image) come first, one
  numpy array for a packed side and a tuple or list of arrays (one a plane, in the
  order the name spells) for a planar side; then the values the C function takes
  after the size, in their order (scalars, or an array-like of the right number of
  elements for a matrix). Keywords: ``dst`` (the destination, allocated when not
  given), ``alpha`` (the value of the fourth channel where the export takes one;
  opaque by default: the destination type's largest value, 1.0 for floats) and
  ``size`` (``(width, height)``, needed only when no image gives it).
* A plane of ``h`` rows and ``w`` pixels with ``c`` channels is an array of shape
  ``(h, w)`` (``c == 1``) or ``(h, w, c)``; a chroma plane has ``ceil(h / dy)`` rows
  and ``ceil(w / dx)`` columns for its sampling. Packed 12-bit and 1-bit rows are
  uint8 arrays of ``2 * w`` and ``w`` bytes a row.
* The samples of a row must be contiguous; rows may lie anywhere: the row stride of
  each array is passed as its step (negative and zero strides too, where the export
  takes them). A source that does not fit (scattered pixels, a negative stride for an
  export that refuses one, planes whose strides differ where the export takes one step
  for all) is copied first; a destination that does not fit is refused.
* The result is the destination (an array, or a tuple of planes), the in-place image,
  and any value the export writes through a pointer, in that order (a tuple when more
  than one).
* An error status raises a :class:`pxkcc.Error` subclass, a warning status issues a
  :class:`pxkcc.PxkWarning` subclass. The interpreter lock is released during the call.
"""

import math
import struct

import numpy as np

from . import _pxkcc
from . import statuses

_SAMPLE_DTYPES = {
    "8u": np.uint8, "16u": np.uint16, "16s": np.int16, "32u": np.uint32, "32s": np.int32,
    "32f": np.float32, "64f": np.float64, "12u": np.uint8, "1u": np.uint8,
}
# Rows of these are bytes, whatever their samples.
_BIT_PACKED = {"12u", "1u"}
_VALUE_DTYPES = {
    "u8": np.uint8, "i8": np.int8, "u16": np.uint16, "i16": np.int16, "u32": np.uint32,
    "i32": np.int32, "i64": np.int64, "f32": np.float32, "f64": np.float64,
}
_WORD = (1 << 64) - 1
_INT32 = (-(1 << 31), (1 << 31) - 1)


def _address(array):
    return array.__array_interface__["data"][0]


def _int_word(value):
    return (False, int(value) & _WORD)


def _float_word(value, kind):
    if kind == "f32":
        return (True, struct.unpack("<I", struct.pack("<f", float(value)))[0])
    return (True, struct.unpack("<Q", struct.pack("<d", float(value)))[0])


class _Plane:
    """One plane of an image: what an array for it must look like."""

    def __init__(self, image, index, channels, wdiv, hdiv):
        self.image = image
        self.index = index
        self.channels = channels
        self.wdiv = wdiv
        self.hdiv = hdiv

    def rows(self, height):
        return -(-height // self.hdiv) if height > 0 else 0

    def columns(self, width):
        return -(-width // self.wdiv) if width > 0 else 0

    def tight_bytes(self, width):
        return self.columns(width) * self.channels * self.image.sample_bytes

    def expected_shape(self, width, height):
        if self.image.bit_packed:
            return (self.rows(height), self.tight_bytes(width))
        if self.channels == 1:
            return (self.rows(height), self.columns(width))
        return (self.rows(height), self.columns(width), self.channels)

    def describe(self, width, height):
        return "shape %s dtype %s" % (self.expected_shape(width, height), np.dtype(self.image.dtype).name)


class _Image:
    def __init__(self, index, info, steps):
        self.index = index
        self.role = info["role"]
        self.token = info["type"]
        self.dtype = _SAMPLE_DTYPES[self.token]
        self.bit_packed = self.token in _BIT_PACKED
        self.sample_bytes = info["sample_bytes"] if self.bit_packed else np.dtype(self.dtype).itemsize
        self.planes = [_Plane(self, p, *t) for p, t in enumerate(info["planes"])]
        self.steps = steps  # "none", "shared" or "per_plane"

    @property
    def label(self):
        return {"src": "source", "dst": "destination", "srcdst": "in-place image"}[self.role]


class Bound:
    """The arrays and values of one call, checked, before any call is made."""

    def __init__(self, export, width, height, planes, steps, values, alpha, copy_back=()):
        self.export = export
        self.copy_back = copy_back  # (caller's array, padded array) to copy after a call
        self.width = width
        self.height = height
        self.planes = planes    # per image: list of plane arrays
        self.steps = steps      # per image: list of byte strides a plane
        self.values = values    # per value argument: the prepared value
        self.alpha = alpha

    def words(self, row0=0, rows=None):
        """The C arguments for the rows [row0, row0 + rows) of the region, and what
        must stay alive during the call. row0 must be a multiple of every plane's
        row divisor."""
        export = self.export
        rows = self.height if rows is None else rows
        width = self.width
        keep = []
        words = []
        outs = []
        values = iter(self.values)
        scratch_step = 0

        def pointer(image, plane):
            info = export.images[image].planes[plane]
            return _address(self.planes[image][plane]) + (row0 // info.hdiv) * self.steps[image][plane]

        def step_value(image, plane):
            step = self.steps[image][plane]
            if export.steps_in_elements:
                step //= export.images[image].sample_bytes
            return step

        for a in export.args:
            kind = a["kind"]
            if kind == "pointer":
                words.append(_int_word(pointer(a["image"], a["plane"])))
            elif kind == "plane_pointers":
                image = a["image"]
                table = np.array([pointer(image, p) for p in range(len(self.planes[image]))], dtype=np.uint64)
                keep.append(table)
                words.append(_int_word(_address(table)))
            elif kind == "step":
                words.append(_int_word(step_value(a["image"], max(a["plane"], 0))))
            elif kind in ("step_array", "step_array64"):
                image = a["image"]
                dtype = np.int32 if kind == "step_array" else np.int64
                table = np.array([step_value(image, p) for p in range(len(self.planes[image]))], dtype=dtype)
                keep.append(table)
                words.append(_int_word(_address(table)))
            elif kind == "size":
                words.append((False, (width & 0xFFFFFFFF) | ((rows & 0xFFFFFFFF) << 32)))
            elif kind == "size64":
                words.append((False, width & _WORD, rows & _WORD))
            elif kind == "width_height":
                words.append(_int_word(width))
                words.append(_int_word(rows))
            elif kind == "roi":
                words.append((False, 0, (width & 0xFFFFFFFF) | ((rows & 0xFFFFFFFF) << 32)))
            elif kind == "value":
                value = self.alpha if a["alpha"] else next(values)
                if a["type"] in ("f32", "f64"):
                    words.append(_float_word(value, a["type"]))
                else:
                    words.append(_int_word(value))
            elif kind == "values":
                table = next(values)
                words.append(_int_word(_address(table)))
            elif kind == "out":
                out = np.zeros(1, dtype=_VALUE_DTYPES[a["type"]])
                outs.append(out)
                words.append(_int_word(_address(out)))
            elif kind == "scratch":
                scratch_step = a["per_pixel"] * width + a["fixed"]
                buffer = np.zeros(max(scratch_step * a["rows"], 1), dtype=np.uint8)
                keep.append(buffer)
                words.append(_int_word(_address(buffer)))
            elif kind == "scratch_step":
                words.append(_int_word(scratch_step))
            else:
                raise RuntimeError("%s: unknown argument kind %r" % (export.name, kind))
        return words, keep, outs

    def invoke(self, row0=0, rows=None):
        """Calls the export on rows [row0, row0 + rows); returns the status and the
        values written through pointers. Raises nothing for a status."""
        words, keep, outs = self.words(row0, rows)
        status = _pxkcc.call(self.export.address, words)
        del keep
        if status >= 0:
            for given, padded in self.copy_back:
                given[...] = padded[:given.shape[0]]
        return status, [o[0].item() for o in outs]

    def result(self, outs):
        results = []
        for image in self.export.images:
            if image.role == "src":
                continue
            planes = self.planes[image.index]
            results.append(planes[0] if len(planes) == 1 else tuple(planes))
        results.extend(outs)
        if not results:
            return None
        return results[0] if len(results) == 1 else tuple(results)


class Export:
    """An export of the library, callable on numpy arrays (see the module's text)."""

    def __init__(self, name):
        self.name = name
        self._ready = False

    def _prepare(self):
        if self._ready:
            return
        shape = _pxkcc.call_shape(self.name)
        self.address = _pxkcc.address(self.name)
        if not self.address:
            raise RuntimeError("%s is in the export list but not in the loaded libpxkcc" % self.name)
        self.args = shape["args"]
        self.steps_in_elements = shape["steps_in_elements"]
        self.positive_steps_only = shape["positive_steps_only"]
        self.arguments = shape["arguments"]
        step_form = ["none"] * len(shape["images"])
        for a in self.args:
            if a["kind"] == "step":
                step_form[a["image"]] = "shared" if a["plane"] < 0 else "per_plane"
            elif a["kind"] in ("step_array", "step_array64"):
                step_form[a["image"]] = "per_plane"
        self.images = [_Image(i, info, step_form[i]) for i, info in enumerate(shape["images"])]
        self.inputs = [im for im in self.images if im.role != "dst"]
        self.outputs = [im for im in self.images if im.role == "dst"]
        self.value_args = [a for a in self.args if a["kind"] in ("value", "values") and not a["alpha"]]
        self.takes_alpha = any(a["alpha"] for a in self.args)
        self._ready = True

    # --- describing -------------------------------------------------------------

    def signature(self):
        self._prepare()
        parts = [im.label.replace(" ", "_").replace("-", "_") for im in self.inputs]
        for n, a in enumerate(self.value_args):
            if a["kind"] == "values":
                parts.append("values%d: %d x %s" % (n + 1, a["count"], a["type"]))
            else:
                parts.append("value%d: %s" % (n + 1, a["type"]))
        keywords = []
        if self.outputs:
            keywords.append("dst=None")
        if self.takes_alpha:
            keywords.append("alpha=<opaque>")
        keywords.append("size=None")
        return "%s(%s)" % (self.name, ", ".join(parts + ["*"] + keywords))

    def describe(self):
        """A text for help(): the call, the arrays per image, the C argument list."""
        self._prepare()
        lines = [self.signature(), "", "Images (w x h pixels):" if self.images else "Images: none"]
        for im in self.images:
            for p in im.planes:
                rows = "h" if p.hdiv == 1 else "ceil(h/%d)" % p.hdiv
                cols = "w" if p.wdiv == 1 else "ceil(w/%d)" % p.wdiv
                if im.bit_packed:
                    shape = "(%s, %d*%s) bytes" % (rows, im.sample_bytes * p.channels, cols)
                elif p.channels == 1:
                    shape = "(%s, %s)" % (rows, cols)
                else:
                    shape = "(%s, %s, %d)" % (rows, cols, p.channels)
                lines.append("  %s plane %d: %s %s" % (im.label, p.index, np.dtype(im.dtype).name, shape))
        returned = ["the %s" % ("destination" if im.role == "dst" else "in-place image") +
                    (" (a tuple of %d planes)" % len(im.planes) if len(im.planes) > 1 else "")
                    for im in self.images if im.role != "src"]
        returned += ["the %s the call writes" % a["type"] for a in self.args if a["kind"] == "out"]
        lines.append("Returns: " + (", then ".join(returned) if returned else "None"))
        lines.append("C arguments (values with the ranges the tests draw them from): " + self.arguments)
        if self.positive_steps_only:
            lines.append("Row strides must be positive (other sources are copied first).")
        return "\n".join(lines)

    # --- binding ----------------------------------------------------------------

    def _fail(self, text):
        raise ValueError("%s: %s" % (self.name, text))

    def _size(self, given, dst, size):
        if size is not None:
            try:
                width, height = (int(v) for v in size)
            except (TypeError, ValueError):
                self._fail("size must be (width, height), not %r" % (size,))
            return width, height
        for image, arrays in list(zip(self.inputs, given)) + [(im, dst) for im in self.outputs]:
            if arrays is None or image.bit_packed:
                continue
            first = self._plane_list(image, arrays)[0]
            a = np.asarray(first) if not isinstance(first, np.ndarray) else first
            if a.ndim < 2:
                self._fail("the %s must be an array of rows and columns, not of shape %s" % (image.label, a.shape))
            return int(a.shape[1]), int(a.shape[0])
        self._fail("no image gives the size: pass size=(width, height)")

    def _plane_list(self, image, arrays):
        n = len(image.planes)
        if n == 1:
            if isinstance(arrays, (tuple, list)) and len(arrays) == 1 and isinstance(arrays[0], np.ndarray):
                return [arrays[0]]
            return [arrays]
        if not isinstance(arrays, (tuple, list)) or len(arrays) != n:
            self._fail("the %s has %d planes: pass a tuple or list of %d arrays" % (image.label, n, n))
        return list(arrays)

    def _check_plane(self, image, plane, a, width, height, writable):
        expected = plane.expected_shape(width, height)
        what = "%s plane %d" % (image.label, plane.index) if len(image.planes) > 1 else image.label
        if not isinstance(a, np.ndarray):
            if writable:
                self._fail("the %s must be a numpy array (%s)" % (what, plane.describe(width, height)))
            a = np.asarray(a)
        if a.dtype != np.dtype(image.dtype):
            self._fail("the %s has dtype %s; expected %s" % (what, a.dtype, plane.describe(width, height)))
        if a.ndim == 3 and len(expected) == 2 and a.shape[2] == 1:
            a = a[:, :, 0]
        if tuple(a.shape) != expected:
            self._fail("the %s has shape %s; expected %s" % (what, tuple(a.shape), plane.describe(width, height)))
        if writable and not a.flags.writeable:
            self._fail("the %s is read-only" % what)
        item = a.itemsize
        inner = all(a.strides[k] == item * int(np.prod(a.shape[k + 1:], dtype=np.int64))
                    for k in range(1, a.ndim)) or a.shape[1] * (a.shape[2] if a.ndim == 3 else 1) <= 1
        if not inner:
            if writable:
                self._fail("the samples of each row of the %s must be contiguous (its strides are %s)"
                           % (what, a.strides))
            a = np.ascontiguousarray(a)
        return a

    def _stride_problem(self, image, plane, a, width):
        """What keeps the row stride of `a` from being passed as its step, or None."""
        if a.shape[0] <= 1:
            return None
        stride = a.strides[0]
        if not (_INT32[0] <= stride <= _INT32[1]):
            return "row strides that fit 32 bits"
        if image.steps == "none" and stride != plane.tight_bytes(width):
            return "tightly packed rows (this export takes no steps)"
        if self.positive_steps_only and stride <= 0:
            return "positive row strides"
        if self.steps_in_elements and stride % image.sample_bytes:
            return "row strides of whole samples"
        return None

    def bind(self, args, dst=None, alpha=None, size=None):
        """Checks the arrays and values of a call; returns a :class:`Bound`."""
        self._prepare()
        if len(args) < len(self.inputs):
            raise TypeError("%s takes %d image argument(s) first: %s" % (self.name, len(self.inputs), self.signature()))
        given = list(args[:len(self.inputs)])
        rest = args[len(self.inputs):]
        if len(rest) != len(self.value_args):
            raise TypeError("%s takes %d value(s) after the images, not %d: %s"
                            % (self.name, len(self.value_args), len(rest), self.signature()))
        if dst is not None and not self.outputs:
            raise TypeError("%s has no destination image (dst)" % self.name)
        if alpha is not None and not self.takes_alpha:
            raise TypeError("%s takes no alpha value" % self.name)
        width, height = self._size(given, dst, size)
        if width < 0 or height < 0:
            self._fail("the size must not be negative, not %d x %d" % (width, height))

        planes = [None] * len(self.images)
        for image, arrays in zip(self.inputs, given):
            if arrays is None:
                self._fail("the %s is missing" % image.label)
            writable = image.role == "srcdst"
            planes[image.index] = [self._check_plane(image, p, a, width, height, writable)
                                   for p, a in zip(image.planes, self._plane_list(image, arrays))]
        for image in self.outputs:
            if dst is None:
                planes[image.index] = [np.zeros(p.expected_shape(width, height), dtype=image.dtype)
                                       for p in image.planes]
            else:
                planes[image.index] = [self._check_plane(image, p, a, width, height, True)
                                       for p, a in zip(image.planes, self._plane_list(image, dst))]

        steps = []
        for image in self.images:
            arrays = planes[image.index]
            problems = [self._stride_problem(image, p, a, width) for p, a in zip(image.planes, arrays)]
            problem = next((p for p in problems if p), None)
            strides = [a.strides[0] if a.shape[0] > 1 else p.tight_bytes(width) for p, a in zip(image.planes, arrays)]
            if problem is None and image.steps == "shared" and len(set(strides)) > 1:
                problem = "one row stride for all its planes"
            if problem:
                if image.role != "src":
                    self._fail("the %s needs %s (row strides %s)" % (image.label, problem, [a.strides[0] for a in arrays]))
                arrays = [np.ascontiguousarray(a) for a in arrays]
                planes[image.index] = arrays
                strides = [p.tight_bytes(width) for p in image.planes]
            steps.append(strides)
        copy_back = self._room_past_region(planes, steps, width, height)

        values = []
        for n, (a, v) in enumerate(zip(self.value_args, rest)):
            dtype = np.dtype(_VALUE_DTYPES[a["type"]])
            if a["kind"] == "values":
                table = np.ascontiguousarray(np.asarray(v, dtype=dtype).ravel())
                if table.size != a["count"]:
                    self._fail("value %d must have %d elements (%s), not %d" % (n + 1, a["count"], dtype.name, table.size))
                values.append(table)
            else:
                values.append(self._scalar(n, v, dtype))
        if self.takes_alpha:
            out_type = [a["type"] for a in self.args if a["alpha"]][0]
            dtype = np.dtype(_VALUE_DTYPES[out_type])
            if alpha is None:
                alpha = 1.0 if dtype.kind == "f" else np.iinfo(dtype).max
            alpha = self._scalar("alpha", alpha, dtype)
        return Bound(self, width, height, planes, steps, values, alpha, copy_back)

    def _room_past_region(self, planes, steps, width, height):
        """Where a call at this height reads or writes rows outside a plane's own rows
        (after its last, or above its first), the image's planes are worked on in copies
        with those rows added (zeros), so that nothing outside the caller's arrays is
        touched; returns the copies to copy back. The strip members thus see zero rows
        above a strip: pass the whole image, or the rows above with it."""
        extra = {}
        for image, plane, after, before in _pxkcc.rows_past_region(self.name, height):
            old_after, old_before = extra.get((image, plane), (0, 0))
            extra[(image, plane)] = (old_after + after, old_before + before)
        copy_back = []
        for image in self.images:
            if not any(i == image.index for i, _ in extra):
                continue
            for p, a in zip(image.planes, list(planes[image.index])):
                after, before = extra.get((image.index, p.index), (0, 0))
                padded = np.zeros((before + a.shape[0] + after,) + a.shape[1:], a.dtype)
                padded[before:before + a.shape[0]] = a
                view = padded[before:]
                planes[image.index][p.index] = view
                steps[image.index][p.index] = p.tight_bytes(width)
                if image.role != "src":
                    copy_back.append((a, view))
        return copy_back

    def _scalar(self, n, v, dtype):
        label = "value %d" % (n + 1) if isinstance(n, int) else n
        if dtype.kind == "f":
            try:
                return float(v)
            except (TypeError, ValueError):
                self._fail("%s must be a number (%s), not %r" % (label, dtype.name, v))
        try:
            i = int(v)
        except (TypeError, ValueError):
            self._fail("%s must be an integer (%s), not %r" % (label, dtype.name, v))
        if i != v:
            self._fail("%s must be an integer (%s), not %r" % (label, dtype.name, v))
        info = np.iinfo(dtype)
        if not info.min <= i <= info.max:
            self._fail("%s must be in [%d, %d] (%s), not %d" % (label, info.min, info.max, dtype.name, i))
        return i

    def __call__(self, *args, dst=None, alpha=None, size=None):
        bound = self.bind(args, dst=dst, alpha=alpha, size=size)
        status, outs = bound.invoke()
        statuses.report(self.name, status, stacklevel=4)
        return bound.result(outs)


def make_function(export):
    """A plain function for an export, named after it, documented from its shape."""

    def function(*args, dst=None, alpha=None, size=None):
        return export(*args, dst=dst, alpha=alpha, size=size)

    function.__name__ = export.name
    function.__qualname__ = export.name
    function.__module__ = "pxkcc"
    function.export = export

    try:
        function.__doc__ = export.describe()
    except (KeyError, RuntimeError) as e:
        function.__doc__ = "%s: not callable here: %s" % (export.name, e)
    return function
