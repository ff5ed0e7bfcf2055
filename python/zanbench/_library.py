"""The C functions of the component library, as src/component/ZanBenchComponent.h declares them."""

import ctypes
import ctypes.util
import json
import os
from pathlib import Path

Result = ctypes.c_int32
Handle = ctypes.c_uint64

EMPTY, NULL, INTEGER, LONG, SINGLE, DOUBLE, CURRENCY, DATE, TEXT, OBJECT, ERROR, BOOLEAN = range(12)
BYTE = 17

GET, PUT, PUT_REFERENCE = range(3)
DESKTOP, OFFSCREEN = range(2)

INTERFACE_VERSION = 1


class Id(ctypes.Structure):
    _fields_ = [("bytes", ctypes.c_uint8 * 16)]


class Payload(ctypes.Union):
    _fields_ = [
        ("boolean", ctypes.c_int16),
        ("byte", ctypes.c_uint8),
        ("integer", ctypes.c_int16),
        ("long_integer", ctypes.c_int32),
        ("single", ctypes.c_float),
        ("real", ctypes.c_double),
        ("currency", ctypes.c_int64),
        ("error", ctypes.c_int32),
        ("text", ctypes.c_void_p),
        ("object", Handle),
    ]


class Variant(ctypes.Structure):
    _fields_ = [
        ("kind", ctypes.c_uint16),
        ("reserved", ctypes.c_uint16),
        ("length", ctypes.c_int32),
        ("payload", Payload),
    ]


Event = ctypes.CFUNCTYPE(None, ctypes.c_void_p, Handle, ctypes.c_char_p, ctypes.POINTER(Variant), ctypes.c_int32)

_IdPointer = ctypes.POINTER(Id)
_HandlePointer = ctypes.POINTER(Handle)
_VariantPointer = ctypes.POINTER(Variant)

# Name: result, arguments.
_FUNCTIONS = {
    "DllGetClassObject": (Result, [_IdPointer, _IdPointer, _HandlePointer]),
    "DllCanUnloadNow": (ctypes.c_int32, []),
    "zanStart": (Result, [ctypes.c_int32]),
    "zanEnd": (Result, []),
    "zanProcessEvents": (Result, [ctypes.c_int32]),
    "zanStopEvents": (Result, []),
    "zanCreateInstance": (Result, [Handle, _IdPointer, _HandlePointer]),
    "zanQueryInterface": (Result, [Handle, _IdPointer, _HandlePointer]),
    "zanRetain": (Result, [Handle]),
    "zanRelease": (Result, [Handle]),
    "zanInvoke": (Result, [Handle, ctypes.c_char_p, ctypes.c_int32, _VariantPointer, ctypes.c_int32, _VariantPointer]),
    "zanSubscribe": (Result, [Handle, Event, ctypes.c_void_p, _HandlePointer]),
    "zanClear": (Result, [_VariantPointer]),
    "zanClassId": (Result, [ctypes.c_char_p, _IdPointer]),
    "zanInterfaceVersion": (ctypes.c_int32, []),
    "zanErrorNumber": (Result, []),
    "zanErrorDescription": (ctypes.c_char_p, []),
}


def interface_id(text):
    return Id((ctypes.c_uint8 * 16)(*bytes.fromhex(text)))


FACTORY = interface_id("6945e0f2765f47e7847e9ff39976a39d")
DISPATCH = interface_id("f0bdd18a93814642855527c5d1c70f04")
FRAME = interface_id("9caea994a1254052b6f0915b95124611")


def _registered():
    """The library that the user's registry names for panels, if there is one."""
    folder = os.environ.get("XDG_CONFIG_HOME") or Path.home() / ".config"
    try:
        classes = json.loads(Path(folder, "zanbench", "components.json").read_text(encoding="utf-8"))["classes"]
        rows = [row for row in classes.values() if isinstance(row, dict) and row.get("name") == "BenchWindow"]
        return str(rows[0]["library"])
    except (OSError, ValueError, LookupError, TypeError, AttributeError):
        return None


def load():
    """The library that ZANBENCH_LIBRARY names, else the one that is registered, else the one that the system finds."""
    name = os.environ.get("ZANBENCH_LIBRARY") or _registered() or "libZanBenchComponent.so.0"
    try:
        library = ctypes.CDLL(name)
    except OSError as error:
        raise ImportError(f"zanbench: {error}. ZANBENCH_LIBRARY can name the file.") from error
    for function, (result, arguments) in _FUNCTIONS.items():
        try:
            entry = getattr(library, function)
        except AttributeError as error:
            raise ImportError(f"zanbench: {name} is no component library: {error}") from error
        entry.restype = result
        entry.argtypes = arguments
    if library.zanInterfaceVersion() != INTERFACE_VERSION:
        raise ImportError(f"zanbench: {name} has another interface than this package")
    return library
