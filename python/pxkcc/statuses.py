"""The library's statuses as Python exceptions and warnings.

An error status (negative) raises a subclass of :class:`Error`, a warning status
(positive) issues a subclass of :class:`PxkWarning` through :mod:`warnings`. Each
class is named after its status (``pxkErrSize`` -> ``SizeError``, ``pxkWarnOddSize``
-> ``OddSizeWarning``) and carries the status's ``name`` and ``value``.
"""

import warnings

from . import _pxkcc

__all__ = ["Error", "PxkWarning", "status_name", "error_class", "warning_class", "report"]


class Error(Exception):
    """An error status of the library: nothing was written.

    ``status`` is the value, ``name`` the status's name (e.g. ``"pxkErrSize"``),
    ``export`` the function that returned it."""

    def __init__(self, message, status, name, export=None):
        super().__init__(message)
        self.status = status
        self.name = name
        self.export = export


class PxkWarning(UserWarning):
    """A warning status of the library: the call succeeded with a remark."""

    def __init__(self, message, status, name, export=None):
        super().__init__(message)
        self.status = status
        self.name = name
        self.export = export


_by_value = {}  # value -> (name, meaning)
_classes = {}   # value -> class
for _value, _name, _meaning in _pxkcc.statuses():
    _by_value[_value] = (_name, _meaning)
    if _value < 0:
        _cls = type(_name.replace("pxkErr", "") + "Error", (Error,), {"__doc__": _meaning})
    elif _value > 0:
        _cls = type(_name.replace("pxkWarn", "") + "Warning", (PxkWarning,), {"__doc__": _meaning})
    else:
        continue
    _cls.__module__ = "pxkcc"
    _classes[_value] = _cls
    globals()[_cls.__name__] = _cls
    __all__.append(_cls.__name__)


def status_name(status):
    """The name of a status value, or ``"status N"`` for one the library does not list."""
    return _by_value.get(status, ("status %d" % status, ""))[0]


def _message(export, status):
    name, meaning = _by_value.get(status, ("status %d" % status, "a status this module does not know"))
    return "%s returned %s (%d): %s" % (export, name, status, meaning)


def error_class(status):
    return _classes.get(status, Error)


def warning_class(status):
    return _classes.get(status, PxkWarning)


def exception_for(export, status):
    """The exception (error) or warning object for a non-zero status."""
    cls = error_class(status) if status < 0 else warning_class(status)
    return cls(_message(export, status), status, status_name(status), export)


def report(export, status, stacklevel=3):
    """Raises for an error status, warns for a warning status, passes on pxkOk."""
    if status < 0:
        raise exception_for(export, status)
    if status > 0:
        warnings.warn(exception_for(export, status), stacklevel=stacklevel)
