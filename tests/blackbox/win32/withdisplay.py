#!/usr/bin/env python3
"""withdisplay.py PREFIX FOLDER COMMAND..: runs a program of Windows with a display of its own.

Starts a virtual display, makes the Wine prefix where it is missing, and runs the command with both.
The command asks for a screenshot by making FOLDER/NAME.want, which goes when FOLDER/NAME.png (for
people) and FOLDER/NAME.ppm (for the command) are there; it finds FOLDER in the environment variable
COWL_SCREENSHOTS. All that was started here ends with the command, or after LIMIT seconds. The exit
code is that of the command.
"""

import os
import pathlib
import select
import subprocess
import sys
import time

LIMIT = 400  # seconds, for all that the command does


def start_display():
    """The server and the name of a display that nobody else has."""
    reader, writer = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1024x768x24", "-nolisten", "tcp",
         "-noreset"],
        pass_fds=[writer], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL)
    os.close(writer)
    number = read_line(reader)
    os.close(reader)
    if not number:
        server.kill()
        sys.exit("withdisplay: the display does not start")
    return server, ":" + number


def read_line(reader):
    """The line that comes within a minute, in whatever pieces; else an empty text."""
    text = b""
    while not text.endswith(b"\n") and select.select([reader], [], [], 60)[0]:
        piece = os.read(reader, 20)
        if not piece:
            return ""
        text += piece
    return text.decode().strip()


def take_screenshot(want, environment):
    picture = want.with_suffix(".png")
    rough = want.with_suffix(".rough")
    subprocess.run(["import", "-window", "root", str(picture)], env=environment, timeout=60,
                   check=True)
    subprocess.run(["convert", str(picture), "-depth", "8", "ppm:" + str(rough)], env=environment,
                   timeout=60, check=True)
    rough.rename(want.with_suffix(".ppm"))  # complete from the first moment on
    want.unlink()


def run(command, folder, environment):
    process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL)
    end = time.monotonic() + LIMIT
    try:
        while process.poll() is None:
            if time.monotonic() > end:
                print("withdisplay: the command takes too long", file=sys.stderr)
                return 1
            for want in folder.glob("*.want"):
                take_screenshot(want, environment)
            time.sleep(0.02)
        return process.returncode
    finally:
        if process.poll() is None:
            process.kill()


def main(prefix, folder, *command):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.iterdir():
        old.unlink()
    server, display = start_display()
    environment = dict(os.environ, DISPLAY=display, WINEPREFIX=prefix,
                       COWL_SCREENSHOTS=f"Z:{folder}")
    try:
        subprocess.run(["wineboot", "--init"], env=environment, timeout=180,
                       stdin=subprocess.DEVNULL)
        return run(command, folder, environment)
    finally:
        subprocess.run(["wineserver", "-k"], env=environment, timeout=60)
        server.terminate()
        server.wait(60)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
