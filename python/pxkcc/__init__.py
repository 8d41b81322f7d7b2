"""pxkcc: the colour-conversion library on numpy arrays.

Every export of the library is a function of this package under its own name, e.g.
``pxkcc.pxkiRGBToYCbCr_8u_C3R(rgb)``, and under a lower-case alias beside it
(``pxkcc.rgb_to_ycbcr_8u_c3r``); ``help()`` on one shows its arrays and
arguments, and :mod:`pxkcc.binding` tells the conventions. Error statuses raise
:class:`pxkcc.Error` subclasses, warning statuses issue :class:`pxkcc.PxkWarning`
subclasses. :func:`pxkcc.convert_in_strips` converts an image in horizontal strips on
a thread pool.
"""

import re

from . import _pxkcc
from .binding import Export, make_function
from .statuses import Error, PxkWarning, status_name
from . import statuses as _statuses

__all__ = ["Error", "PxkWarning", "status_name", "exports", "export", "version", "convert_in_strips",
           "row_independence"]

# The status classes (SizeError, OddSizeWarning, ...).
for _name in _statuses.__all__:
    globals()[_name] = getattr(_statuses, _name)
    if _name not in __all__:
        __all__.append(_name)

_exports = {}
for _name in _pxkcc.export_names():
    if _name == "pxkccGetLibVersion":
        # The one export without a status: it returns the build's version record.
        continue
    _exports[_name] = Export(_name)
    globals()[_name] = make_function(_exports[_name])
    __all__.append(_name)


def friendly_name(name):
    """The lower-case alias of an export: the prefix dropped, "To" between two spaces
    spelled "_to_" (pxkiRGBToYCbCr420_8u_C3P3R -> rgb_to_ycbcr420_8u_c3p3r)."""
    body = name[4:] if name.startswith("pxki") else name
    return re.sub(r"To(?=[A-Z0-9])", "_to_", body).lower()


# The aliases stand beside the exports' own names; a name that two exports would share
# is left to neither.
_aliases = {}
for _name in _exports:
    _aliases.setdefault(friendly_name(_name), []).append(_name)
for _alias, _names in _aliases.items():
    if len(_names) == 1 and _alias not in globals():
        globals()[_alias] = globals()[_names[0]]


def version():
    """The library's version record, as a dict (major, minor, majorBuild, build,
    targetCode, name, version, buildDate)."""
    return _pxkcc.version_record()


pxkccGetLibVersion = version
__all__.append("pxkccGetLibVersion")


def exports():
    """The names of the exports of the list this package was built from, in its
    order (the version query included)."""
    return list(_pxkcc.export_names())


def export(name):
    """The :class:`Export` behind the function ``name`` (its shape, binding and calls)."""
    try:
        return _exports[name]
    except KeyError:
        raise KeyError("pxkcc has no conversion export %r" % name) from None


from .strips import convert_in_strips, row_independence  # noqa: E402
