"""Compressing a file of mixed data on the way to its parts."""

import functools
import itertools
import os
import random
import stat

from rows.measuring import SPLITTER, drive_path, peak_megabytes, seconds

MIXED_BYTES = 100_000_000
LEVELS = (1, 5, 9)
MOST_RUNS = 3  # they are long, and hang on nothing but the processor
TOOLS = {"zip": lambda level: ["zip", "-q", "-j", f"-{level}"],
         "7z": lambda level: ["7z", "a", "-tzip", "-mmt=1", f"-mx={level}", "-bso0", "-bsp0"]}

# The level of a command line holds only while this setting is on.
SETTINGS = r'''[HKEY_CURRENT_USER\Software\Zarn Technology\Zarn File Splitter\Last Used]
"Compress Destination"=dword:00000001
'''


def regular_files(folder):
    for parent, folders, names in os.walk(folder):
        folders.sort()
        for name in sorted(names):
            path = os.path.join(parent, name)
            if stat.S_ISREG(os.lstat(path).st_mode) and os.access(path, os.R_OK):
                yield path


def write_mixed_data(path):
    """Three tenths each of this machine's programs, libraries and texts, a tenth of random bytes;
    the same on each run."""
    share, most_of_one_file = MIXED_BYTES // 10, 1 << 20
    with open(path, "wb") as target:
        for folder in ("/usr/bin", "/usr/lib", "/usr/share"):
            left = 3 * share
            for name in itertools.cycle(regular_files(folder)):
                with open(name, "rb") as source:
                    left -= target.write(source.read(min(left, most_of_one_file)))
                if left == 0:
                    break
        target.write(random.Random(1).randbytes(share))


class Compressor:
    """Runs of the splitter with compression, in one place."""

    def __init__(self, place):
        self.place = place
        config = place.fresh("CONFIG")
        os.mkdir(os.path.join(config, "ZarnFileSplitter"))
        with open(os.path.join(config, "ZarnFileSplitter", "settings.reg"), "w") as file:
            file.write(SETTINGS)
        self.env = dict(os.environ, XDG_CONFIG_HOME=config, TMPDIR=place.fresh("TEMP"))

    @functools.cached_property
    def data(self):
        path = os.path.join(self.place.folder, "MIXED.BIN")
        write_mixed_data(path)
        return path

    def command(self, level):
        """The parts are one, so that cutting costs the least and the part is the ZIP."""
        return [SPLITTER, f"/F={drive_path(self.data)}",
                f"/D={drive_path(self.place.fresh('OURS'))}", "/PS=1GB", "/C", f"/CL={level}"]

    def run(self, level):
        """Seconds taken, and bytes of the ZIP."""
        elapsed = seconds(self.command(level), env=self.env)
        return elapsed, os.path.getsize(
            os.path.join(self.place.folder, "OURS", "MIXED.zip_Part1"))

    def run_other(self, tool, level):
        archive = os.path.join(self.place.fresh("THEIRS"), "mixed.zip")
        elapsed = seconds([*TOOLS[tool](level), archive, self.data])
        return elapsed, os.path.getsize(archive)

    def peak(self, level):
        return peak_megabytes(self.command(level), env=self.env)


def measure_level(table, compressor, level, count):
    speed = {tool: f"compress at level {level}, {compressor.place.name}, against {tool}"
             for tool in TOOLS}
    size = {tool: f"compressed size at level {level}, against {tool}" for tool in TOOLS}
    tools = [tool for tool in TOOLS if table.wants(speed[tool]) or table.wants(size[tool])]
    if not tools:
        return
    timed = any(table.wants(work) for work in speed.values())
    pairs = {tool: [] for tool in tools}
    for _ in range(min(count, MOST_RUNS) if timed else 1):
        ours = compressor.run(level)
        for tool in tools:
            pairs[tool].append((ours, compressor.run_other(tool, level)))
    for tool in tools:
        if table.wants(speed[tool]):
            table.row(speed[tool], [(ours[0], theirs[0]) for ours, theirs in pairs[tool]],
                      "1.0 or less")
        if table.wants(size[tool]):
            ours, theirs = pairs[tool][-1]
            table.sizes(size[tool], ours[1], theirs[1], "1.02 or less")


def measure_compression(table, place, count):
    compressor = Compressor(place)
    for level in LEVELS:
        measure_level(table, compressor, level, count)
    work = "peak memory, compress 100 MB"
    if table.wants(work):
        table.text(work, f"{compressor.peak(5):.1f} MB", "16 MB or less")
