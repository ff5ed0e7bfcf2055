"""Opens a form in the form designer on a display of its own, checks that it knows our controls, has it save the form and
looks whether the form is still the same, and takes a picture:

    run_designer.py --designer PROGRAM --plugins FOLDER --form FILE.ui [--out PICTURE.png]

Exit code 77 means that a program is missing.
"""

import argparse
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import zlib
from pathlib import Path
from xml.etree import ElementTree

SKIPPED = 77
PATIENCE = 120  # seconds


def start_display(folder):
    """An X server of our own, on a number that it chooses."""
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1400x900x24", "-nolisten", "tcp", "-fbdir", folder],
                              pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as pipe:
        number = pipe.readline().strip()
    return server, f":{number}"


def windows(environment, pattern):
    found = subprocess.run(["xdotool", "search", "--name", pattern], env=environment, capture_output=True, text=True)
    return found.stdout.split()


def properties(form):
    """What a form says of our controls: for each its properties, with their values and whether they have a setter."""
    found = {}
    for widget in ElementTree.parse(form).iter("widget"):
        if not widget.get("class").startswith("zan::"):
            continue
        found[widget.get("name")] = {
            one.get("name"): (one.get("stdset"), "".join(text.strip() for text in one.itertext()))
            for one in widget.findall("property")}
    return found


def differences(wanted, got):
    lines = []
    for name in sorted(wanted.keys() | got.keys()):
        before, after = wanted.get(name, {}), got.get(name, {})
        lines += [f"{name}.{key}: {before.get(key)} was saved as {after.get(key)}"
                  for key in sorted(before.keys() | after.keys()) if before.get(key) != after.get(key)]
    return "; ".join(lines)


def save(environment, form, is_over):
    """Has the form saved; asks again for as long as the designer is not ready for keys."""
    os.utime(form, ns=(0, 0))
    while not is_over():
        for window in windows(environment, "Designer"):
            subprocess.run(["xdotool", "windowfocus", window, "key", "ctrl+s"], env=environment,
                           stderr=subprocess.DEVNULL)
        asked = time.monotonic()
        while time.monotonic() < asked + 3 and not is_over():
            if form.stat().st_mtime_ns != 0 and form.read_text().rstrip().endswith("</ui>"):
                return True
            time.sleep(0.2)
    return False


def png_of(dump):
    """The picture in a dump of the X server's memory: a header of words, a table of colours, rows of 32-bit pixels."""
    words = struct.unpack(">25I", dump[:100])
    header, width, height, order, row_bytes, colours = words[0], words[4], words[5], words[7], words[12], words[19]
    start = header + colours * 12
    rows = bytearray()
    for y in range(height):
        row = dump[start + y * row_bytes : start + y * row_bytes + width * 4]
        red, green, blue = (1, 2, 3) if order else (2, 1, 0)
        pixels = bytearray(width * 3)
        pixels[0::3], pixels[1::3], pixels[2::3] = row[red::4], row[green::4], row[blue::4]
        rows += b"\0" + pixels

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(bytes(rows))) + chunk(b"IEND", b""))


def run(options, folder):
    server, display = start_display(folder)
    environment = {**os.environ, "DISPLAY": display, "QT_QPA_PLATFORM": "xcb", "QT_PLUGIN_PATH": str(options.plugins),
                   "HOME": folder, "XDG_CONFIG_HOME": folder, "XDG_RUNTIME_DIR": folder, "QT_SCALE_FACTOR": "1"}
    log = Path(folder, "designer.log")
    form = Path(shutil.copy(options.form, Path(folder, options.form.name)))
    try:
        with log.open("w") as output:
            designer = subprocess.Popen([options.designer, str(form)], env=environment, stdout=output,
                                        stderr=output)
        try:
            end = time.monotonic() + PATIENCE
            while not windows(environment, "Designer") and designer.poll() is None:
                if time.monotonic() > end:
                    return "the designer has not come up"
                time.sleep(0.2)
            if designer.poll() is not None:
                return f"the designer ended with {designer.returncode}"
            if not save(environment, form, lambda: designer.poll() is not None or time.monotonic() > end):
                return "the designer has not saved the form"
            if changed := differences(properties(options.form), properties(form)):
                return changed
            if options.out:
                time.sleep(options.settle)
                Path(options.out).write_bytes(png_of(Path(folder, "Xvfb_screen0").read_bytes()))
        finally:
            designer.kill()
            designer.wait()
        said = log.read_text(errors="replace")
        bad = re.search(r".*(custom widget|not load|plugin).*", said, re.IGNORECASE)
        return f"the designer said: {bad.group(0)}" if bad else None
    finally:
        server.terminate()
        server.wait()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--designer", required=True)
    parser.add_argument("--plugins", type=Path, required=True)
    parser.add_argument("--form", type=Path, required=True)
    parser.add_argument("--out")
    parser.add_argument("--settle", type=float, default=3.0, help="seconds before the picture")
    options = parser.parse_args()
    missing = [name for name in (options.designer, "Xvfb", "xdotool") if not shutil.which(name)]
    if missing:
        print(f"skipped: {' and '.join(missing)} not found")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        problem = run(options, folder)
    if problem:
        print(problem, file=sys.stderr)
    return 1 if problem else 0


if __name__ == "__main__":
    sys.exit(main())
