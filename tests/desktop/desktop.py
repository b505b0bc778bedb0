"""What the drives of the real window share."""

import contextlib
import os
import pathlib
import subprocess
import sys
import tempfile
import time

BUILT = pathlib.Path(__file__).parents[2] / "build/release/ZarnFileSplitter"
PARTS = 5
PATIENCE = 30  # seconds

TITLE, PROGRESS, HELP = "^Zarn File Splitter v", r" \.\.\.$", "^Command Line Help$"

# Middles of the controls, from the window's upper left corner.
FILE_MENU = (18, 9)
SOURCE, DESTINATION, START, SPLIT_DONE = (389, 113), (389, 296), (335, 362), (173, 63)


def fail(text):
    sys.exit(f"{sys.argv[0]}: {text}")


def until(what, ask, told=str):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        if found := ask():
            return found
        time.sleep(0.02)
    return fail(f"no {what} within {PATIENCE} seconds\n{told()}")


@contextlib.contextmanager
def running(command):
    """A process that is ended at the end, and its first line."""
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True) as process:
        try:
            yield process.stdout.readline().strip()
        finally:
            process.terminate()


@contextlib.contextmanager
def started(program, *arguments):
    """A start of the program, which must end by itself, well and without a word."""
    with tempfile.TemporaryFile("w+") as errors:
        with subprocess.Popen([program, *arguments], stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=errors) as process:
            try:
                yield process
                if status := process.wait(PATIENCE):
                    fail(f"the program ended with {status}")
            finally:
                process.kill()
        errors.seek(0)
        if told := errors.read():
            fail(told)


@contextlib.contextmanager
def surroundings():
    """A folder that is drive Z:, settings and a display of this test's own."""
    with tempfile.TemporaryDirectory(prefix="zarn-", ignore_cleanup_errors=True) as folder:
        work = pathlib.Path(folder).resolve()
        settings = work / "config/ZarnFileSplitter"
        settings.mkdir(parents=True)
        (settings / "drives").write_text(f"Z: fixed {work}\n")
        (work / "the parts").mkdir()
        (work / "big file.bin").write_bytes(os.urandom(7654321))
        kept = {name: os.environ[name] for name in ("PATH", "HOME") if name in os.environ}
        os.environ.clear()
        os.environ |= kept | {"LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "xcb",
                              "XDG_RUNTIME_DIR": folder, "XDG_CONFIG_HOME": f"{work}/config",
                              "XDG_CACHE_HOME": f"{work}/cache"}
        # Without -noreset the server starts afresh when its last client leaves, and refuses whoever
        # comes in that moment.
        with running(["Xvfb", "-noreset", "-displayfd", "1", "-screen", "0", "1280x1024x24",
                      "-nolisten", "tcp"]) as display:
            os.environ["DISPLAY"] = f":{display}"
            yield work


def run_alone(act, program=BUILT):
    with surroundings() as work:
        act(os.path.abspath(program), work)


def expect_parts(work):
    parts = [work / f"the parts/big file.bin_Part{number}" for number in range(1, PARTS + 1)]
    if b"".join(part.read_bytes() for part in parts) != (work / "big file.bin").read_bytes():
        fail("the parts are not the file")


def expect_joined(work):
    if (work / "the parts/big file.bin").read_bytes() != (work / "big file.bin").read_bytes():
        fail("not the file that was split")


def xdotool(*words):
    return subprocess.run(["xdotool", *map(str, words)], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True, check=False).stdout


def screen():
    file = tempfile.mkstemp(".png")[1]
    subprocess.run(["import", "-window", "root", file], check=True)
    return f"The screen: {file}"


def window_of(title):
    return xdotool("search", "--onlyvisible", "--name", title).partition("\n")[0]


def bring_up(title):
    window = until(f"window '{title}'", lambda: window_of(title), screen)
    xdotool("sleep", 0.5, "windowfocus", window, "mousemove", "--window", window, 5, 5)
    time.sleep(0.3)
    return window


def await_closed(title):
    until(f"end of the window '{title}'", lambda: not window_of(title), screen)


def click(window, *places):
    for place in places:
        xdotool("mousemove", "--window", window, *place, "sleep", 0.1, "click", 1, "sleep", 0.2)


def press(*keys):
    xdotool("key", "--delay", 60, *keys, "sleep", 0.3)


def write(text):
    xdotool("key", "ctrl+a", "type", "--delay", 12, "--", text)


def answer(title, key):
    bring_up(title)
    press(key)
    await_closed(title)


def fill_fields(main):
    click(main, SOURCE)
    write(r"Z:\big file.bin")
    click(main, DESTINATION)
    write(r"Z:\the parts")
    press("alt+i")
    press("Tab")
    write(str(PARTS))
    press("Tab")


def name_script(work):
    """Takes the script by the file dialog, as whoever received the parts would."""
    bring_up("^Select File to Join$")
    write(f"{work}/the parts/big file.bin_Part0.bat")
    press("Return")
    await_closed("^Select File to Join$")
    bring_up(TITLE)


def leave(main):
    bring_up(TITLE)
    click(main, FILE_MENU)
    press("x")
