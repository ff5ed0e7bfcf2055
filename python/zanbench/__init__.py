"""ZanBench from Python: open a scheme, show or shoot its panels, read and write channels, wait for events.

    import zanbench

    with zanbench.open("weir.scheme") as site:
        site.connect()
        print(site.read("Overview|STAGE"))
        site.panel("Overview").shoot("panel.png")

Everything belongs to the thread that begins. Without a display nothing is shown and no box waits for a person. See
docs/python.md.
"""

import atexit
import ctypes
import datetime
import decimal
import os
import time
import weakref

from . import _library as c

__all__ = ["Error", "Object", "Panel", "Site", "Timeout", "create", "open", "process", "start", "stop", "wait"]

NOT_CONNECTED, CONNECTING, CONNECTED, DISCONNECTING, BROKEN = range(5)

_EPOCH = datetime.datetime(1899, 12, 30)

_lib = None
_pending = None  # what a handler has raised, until the call that led to it returns
_living = weakref.WeakSet()


class Error(Exception):
    """A run-time error: `number` is the platform's, the text says what, where and what to do."""

    def __init__(self, number, description):
        super().__init__(f"{description} (error {number})")
        self.number = number
        self.description = description


class Timeout(Exception):
    """What was waited for has not come in time."""


# Calls ---------------------------------------------------------------------------------------------------------


def _check(result):
    global _pending
    if _pending is not None:
        raised, _pending = _pending, None
        raise raised
    if result != 0:
        raise Error(result, _lib.zanErrorDescription().decode("utf-8", "replace"))


def _has_display():
    return bool(os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY"))


def start(offscreen=None):
    """Begins; the first object does it by itself. `offscreen` True needs no display; None finds out."""
    global _lib
    if _lib is not None:
        return
    library = c.load()
    if offscreen is None:
        offscreen = not _has_display()
    _lib = library
    try:
        _check(_lib.zanStart(c.OFFSCREEN if offscreen else c.DESKTOP))
    except Error:
        _lib = None
        raise


def stop():
    """Lets go of every object and ends the application object. Runs at the end of the program by itself."""
    global _lib
    if _lib is None:
        return
    for thing in list(_living):
        thing.release()
    _check(_lib.zanEnd())
    _lib = None


@atexit.register
def _stop_at_exit():
    try:
        stop()
    except Error:
        pass  # the program is over; there is nobody to tell


def process(seconds=0.0):
    """Lets panels and loggers live for a while."""
    start()
    _check(_lib.zanProcessEvents(max(0, round(seconds * 1000))))


def wait(condition, seconds=10.0):
    """Lets panels and loggers live until the condition holds, and gives its value. Raises Timeout."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        left = end - time.monotonic()
        if left <= 0:
            raise Timeout(f"nothing came of it in {seconds} s")
        process(min(left, 0.02))


# Values --------------------------------------------------------------------------------------------------------


def _to_c(value, keep):
    """A value of Python's for an argument; `keep` holds what it points to."""
    result = c.Variant()
    payload = result.payload
    if value is None:
        result.kind = c.EMPTY
    elif isinstance(value, bool):
        result.kind, payload.boolean = c.BOOLEAN, -1 if value else 0
    elif isinstance(value, int):
        if -(2**31) <= value < 2**31:
            result.kind, payload.long_integer = c.LONG, value
        else:
            result.kind, payload.real = c.DOUBLE, float(value)
    elif isinstance(value, float):
        result.kind, payload.real = c.DOUBLE, value
    elif isinstance(value, decimal.Decimal):
        result.kind, payload.currency = c.CURRENCY, _scaled(value)
    elif isinstance(value, (str, os.PathLike)):
        data = os.fspath(value).encode("utf-8")
        buffer = ctypes.create_string_buffer(data)
        keep.append(buffer)
        result.kind, result.length, payload.text = c.TEXT, len(data), ctypes.addressof(buffer)
    elif isinstance(value, datetime.datetime):
        result.kind, payload.real = c.DATE, _serial(value)
    elif isinstance(value, Object):
        keep.append(value)
        result.kind, payload.object = c.OBJECT, value._living_handle()
    else:
        raise TypeError(f"{type(value).__name__} cannot be passed")
    return result


def _scaled(value):
    scaled = int((value * 10000).to_integral_value(decimal.ROUND_HALF_EVEN))
    if not -(2**63) <= scaled < 2**63:
        raise OverflowError("a Currency has no room for this number")
    return scaled


def _serial(value):
    """Days since the end of 1899; before that day the fraction still counts forward in time."""
    difference = value.replace(tzinfo=None) - _EPOCH
    fraction = difference.seconds / 86400 + difference.microseconds / 86400e6
    return difference.days + fraction if difference.days >= 0 else difference.days - fraction


def _moment(serial):
    days = int(serial)
    try:
        return _EPOCH + datetime.timedelta(days=days, milliseconds=round(abs(serial - days) * 86400e3))
    except OverflowError:
        return None


_READERS = {
    c.EMPTY: lambda value: None,
    c.NULL: lambda value: None,
    c.INTEGER: lambda value: value.payload.integer,
    c.LONG: lambda value: value.payload.long_integer,
    c.SINGLE: lambda value: value.payload.single,
    c.DOUBLE: lambda value: value.payload.real,
    c.CURRENCY: lambda value: decimal.Decimal(value.payload.currency) / 10000,
    c.DATE: lambda value: _moment(value.payload.real),
    c.TEXT: lambda value: ctypes.string_at(value.payload.text, value.length).decode("utf-8"),
    c.ERROR: lambda value: value.payload.error,
    c.BOOLEAN: lambda value: value.payload.boolean != 0,
    c.BYTE: lambda value: value.payload.byte,
}


def _from_c(value):
    """A value of Python's for a result, with a reference of its own for an object."""
    if value.kind == c.OBJECT:
        if value.payload.object == 0:
            return None
        _check(_lib.zanRetain(value.payload.object))
        return Object(value.payload.object)
    return _READERS[value.kind](value)


# Objects -------------------------------------------------------------------------------------------------------


class Object:
    """An object by the names of its members; case does not count. `obj["Name"]` is a property, `obj.call("Name", ...)`
    a method or a property with arguments."""

    def __init__(self, handle):
        self._handle = handle
        self._subscriptions = []
        _living.add(self)

    def _living_handle(self):
        if not self._handle or _lib is None:
            raise Error(91, "The object has been released.")
        return self._handle

    def _invoke(self, member, access, arguments):
        handle = self._living_handle()
        keep = []
        values = (c.Variant * max(1, len(arguments)))(*(_to_c(argument, keep) for argument in arguments))
        result = c.Variant()
        name = member.encode("utf-8")
        if b"\0" in name:
            raise Error(438, "No member has a name with a zero byte.")
        _check(_lib.zanInvoke(handle, name, access, values, len(arguments), ctypes.byref(result)))
        try:
            return _from_c(result)
        finally:
            _lib.zanClear(ctypes.byref(result))

    def call(self, member, *arguments):
        return self._invoke(member, c.GET, arguments)

    def __getitem__(self, member):
        return self._invoke(member, c.GET, ())

    def __setitem__(self, member, value):
        access = c.PUT_REFERENCE if isinstance(value, Object) else c.PUT
        self._invoke(member, access, (value,))

    def on_event(self, handler):
        """Calls handler(name, *arguments) for each event until the object is released. What it raises leaves the call
        that lets events happen: process(), wait(), a write. Returns a function that ends it."""

        def receive(_context, _source, name, arguments, count):
            global _pending
            try:
                handler(name.decode("utf-8"), *(_from_c(arguments[i]) for i in range(count)))
            except BaseException as raised:  # it must not end in the library's loop
                if _pending is None:
                    _pending = raised
                _lib.zanStopEvents()

        event = c.Event(receive)
        subscription = c.Handle()
        _check(_lib.zanSubscribe(self._living_handle(), event, None, ctypes.byref(subscription)))
        entry = (subscription.value, event)
        self._subscriptions.append(entry)

        def end():
            if entry in self._subscriptions:
                self._subscriptions.remove(entry)
                _check(_lib.zanRelease(entry[0]))

        return end

    def wait_event(self, name, seconds=10.0):
        """Waits for the next event of this name and gives its arguments. Raises Timeout."""
        arrived = []

        def receive(event, *arguments):
            if event == name and not arrived:
                arrived.append(arguments)
                _lib.zanStopEvents()

        end = self.on_event(receive)
        try:
            wait(lambda: arrived, seconds)
        finally:
            end()
        return arrived[0]

    def release(self):
        """Lets go of the object; any further use of it is an error."""
        handle, self._handle = self._handle, 0
        if not handle or _lib is None:
            return
        subscriptions, self._subscriptions = self._subscriptions, []
        for subscription, _event in subscriptions:
            _lib.zanRelease(subscription)
        _lib.zanRelease(handle)

    def __enter__(self):
        return self

    def __exit__(self, *_raised):
        self.release()

    def __del__(self):
        self.release()


def create(class_name, as_type=Object):
    """A new object of a class: BenchWindow, SiteMap, StatusLight, ValueBar, Site, PropertyBag."""
    start()
    class_id = c.Id()
    _check(_lib.zanClassId(class_name.encode("utf-8"), ctypes.byref(class_id)))
    factory, made = c.Handle(), c.Handle()
    _check(_lib.DllGetClassObject(ctypes.byref(class_id), ctypes.byref(c.FACTORY), ctypes.byref(factory)))
    try:
        _check(_lib.zanCreateInstance(factory, ctypes.byref(c.DISPATCH), ctypes.byref(made)))
    finally:
        _lib.zanRelease(factory)
    return as_type(made.value)


class Control(Object):
    """A control in a window of its own."""

    @property
    def frame(self):
        """The window: Title, Left, Top, Width, Height, Visible, ..."""
        frame = c.Handle()
        _check(_lib.zanQueryInterface(self._living_handle(), ctypes.byref(c.FRAME), ctypes.byref(frame)))
        return Object(frame.value)

    def show(self, title=None, size=None):
        """Shows the window; process() lets it live."""
        frame = self.frame
        if title is not None:
            frame["Title"] = title
        if size is not None:
            frame["Width"], frame["Height"] = size
        frame["Visible"] = True

    def hide(self):
        self.frame["Visible"] = False

    def shoot(self, file, size=None):
        """Draws it into a PNG file, as large as its contents unless a size is given."""
        frame = self.frame
        if size is None:
            frame.call("Fit")
        else:
            frame["Width"], frame["Height"] = size
        process()
        frame.call("SavePicture", os.path.abspath(file))


class Panel(Control):
    """A window of a scheme. Its properties are those of BenchWindow."""

    def controls(self):
        """Every control of the panel."""
        controls = self["Controls"]
        return [controls.call("Control", i + 1) for i in range(controls["Count"])]


class Site(Object):
    """A scheme with its logger."""

    def connect(self, seconds=10.0):
        """Connects the logger and waits until every channel has been read once."""
        with self["Logger"] as logger:
            outcome = []

            def receive(event, *arguments):
                if event in ("NewBenchData", "ConnectionError"):
                    outcome.append((event, *arguments))
                    _lib.zanStopEvents()

            logger.on_event(receive)
            self.call("Connect")
            event, *reason = wait(lambda: outcome, seconds)[0]
        if event == "ConnectionError":
            raise Error(5, reason[0] if reason else "The logger cannot be reached.")

    def disconnect(self, seconds=10.0):
        """Sends what was still to be written, and disconnects."""
        self.call("Disconnect")
        wait(lambda: self.state in (NOT_CONNECTED, BROKEN), seconds)

    @property
    def state(self):
        return self["State"]

    @property
    def is_simulated(self):
        """Whether the values are made up. Whoever shows them says so."""
        return self["IsSimulated"]

    def windows(self):
        """The keys of the scheme's windows."""
        return [self.call("WindowKey", i + 1) for i in range(self["WindowCount"])]

    def read(self, bind):
        """The value of a channel, named "WINDOW|CHANNEL"; None while nothing has been read."""
        return self.call("Read", bind)

    def write(self, bind, value):
        """Has a value written to the logger; wait() for what comes of it."""
        self.call("Write", bind, value)

    def panel(self, key, site_map=False):
        """A window of the scheme as a live panel."""
        panel = create("BenchWindow", Panel)
        with self["Logger"] as logger:
            panel["Logger"] = logger
        panel["ShowSiteMap"] = site_map
        panel.call("LoadWindow", key)
        return panel


def open(scheme, logger=None):
    """Opens a scheme file with its own logger, or with that of a URI (docs/loggers.md)."""
    site = create("Site", Site)
    try:
        arguments = (scheme,) if logger is None else (scheme, logger)
        site.call("Open", *arguments)
    except BaseException:
        site.release()
        raise
    return site
