"""Ratios of the program's times to those of the system's tools, measured side by side.

Each row is the median of the ratios of paired runs: the program, then the other tool, on the
same files, caches warm, pending writes flushed beforehand. Rows that this machine cannot
measure say why. The script never fails for a bad ratio.
"""

import argparse
import contextlib
import os
import shutil
import statistics
import subprocess
import tempfile
import time

BUILD = os.path.abspath("build/release")
SPLITTER = os.path.join(BUILD, "ZarnFileSplitter")
JOINER = os.path.join(BUILD, "ZarnScript")


def drive_path(path):
    return "C:" + path.replace("/", "\\")


class Place:
    """A folder to measure in, with a source file of random bytes."""

    def __init__(self, name, folder, size):
        self.name = name
        self.folder = tempfile.mkdtemp(prefix="zarn-bench-", dir=folder)
        self.source = os.path.join(self.folder, "SOURCE.BIN")
        with open(self.source, "wb") as file:
            for _ in range(size // (1 << 20)):
                file.write(os.urandom(1 << 20))
            file.write(os.urandom(size % (1 << 20)))

    def fresh(self, name):
        folder = os.path.join(self.folder, name)
        shutil.rmtree(folder, ignore_errors=True)
        os.mkdir(folder)
        return folder

    def remove(self):
        shutil.rmtree(self.folder, ignore_errors=True)


@contextlib.contextmanager
def xfs_place(size):
    """An XFS file system in a file, which takes root; gives None without it."""
    if os.geteuid() != 0:
        yield None
        return
    image = tempfile.NamedTemporaryFile(prefix="zarn-xfs-", dir="/var/tmp")
    mount = tempfile.mkdtemp(prefix="zarn-xfs-")
    os.truncate(image.name, size * 5 + (1 << 30))
    made = subprocess.run(["mkfs.xfs", "-q", image.name], check=False).returncode == 0
    mounted = made and subprocess.run(
        ["mount", "-o", "loop", image.name, mount], check=False).returncode == 0
    place = Place("XFS", mount, size) if mounted else None
    try:
        yield place
    finally:
        if mounted:
            subprocess.run(["umount", mount], check=False)
        os.rmdir(mount)
        image.close()


def seconds(command, cwd=None):
    """Run time of a command, which must succeed."""
    os.sync()
    before = time.perf_counter()
    subprocess.run(command, cwd=cwd, check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - before


def spawn_seconds(command):
    """Run time of a short command, without the cost of a pipe or a shell."""
    before = time.perf_counter()
    pid = os.posix_spawn(command[0], command, os.environ)
    _, status = os.waitpid(pid, 0)
    elapsed = time.perf_counter() - before
    if status != 0:
        raise RuntimeError(f"{command} failed")
    return elapsed


class Table:
    def __init__(self, only):
        self.only = only
        print(f"{'work':58} {'ours':>9} {'theirs':>9} {'ratio':>7}  wanted", flush=True)

    def wants(self, work):
        return self.only in work

    def row(self, work, pairs, wanted):
        ours = statistics.median(pair[0] for pair in pairs)
        theirs = statistics.median(pair[1] for pair in pairs)
        ratio = statistics.median(pair[0] / pair[1] for pair in pairs)
        print(f"{work:58} {ours * 1000:7.1f}ms {theirs * 1000:7.1f}ms {ratio:7.3f}"
              f"  {wanted}", flush=True)

    def text(self, work, text, wanted=""):
        print(f"{work:58} {text:>27}  {wanted}", flush=True)


def split_command(place, part, out):
    return [SPLITTER, f"/F={drive_path(place.source)}", f"/D={drive_path(out)}", f"/PS={part}"]


def measure_split(table, place, part, part_bytes, wanted, count):
    work = f"split into {part} parts, {place.name}, against split"
    if not table.wants(work):
        return
    pairs = []
    for _ in range(count):
        ours = seconds(split_command(place, part, place.fresh("OURS")))
        place.fresh("OURS")
        theirs = seconds(["split", "-a", "4", "-b", str(part_bytes), place.source,
                          os.path.join(place.fresh("THEIRS"), "part")])
        place.fresh("THEIRS")
        pairs.append((ours, theirs))
    table.row(work, pairs, wanted)


def measure_join(table, place, part, wanted, count):
    work = f"join of {part} parts, {place.name}, against cat"
    if not table.wants(work):
        return
    out = place.fresh("OURS")
    seconds(split_command(place, part, out))
    script = next(name for name in os.listdir(out) if name.endswith(".bat"))
    parts = sorted(name for name in os.listdir(out) if not name.endswith(".bat"))
    joined, other = os.path.join(out, "SOURCE.BIN"), os.path.join(out, "cat.out")
    pairs = []
    for _ in range(count):
        ours = seconds([JOINER, os.path.join(out, script)])
        os.remove(joined)
        with open(other, "wb") as target:
            os.sync()
            before = time.perf_counter()
            subprocess.run(["cat"] + parts, cwd=out, check=True, stdout=target)
            theirs = time.perf_counter() - before
        os.remove(other)
        pairs.append((ours, theirs))
    table.row(work, pairs, wanted)


def measure_start(table, place, count):
    work = "start, split of 10 KB, end, against split"
    if not table.wants(work):
        return
    small = os.path.join(place.folder, "SMALL.BIN")
    with open(small, "wb") as file:
        file.write(os.urandom(10240))
    ours, theirs = place.fresh("OURS"), place.fresh("THEIRS")
    command = [SPLITTER, f"/F={drive_path(small)}", f"/D={drive_path(ours)}", "/PN=2"]
    other = ["/usr/bin/split", "-b", "5120", small, os.path.join(theirs, "part")]
    spawn_seconds(command)
    pairs = [(spawn_seconds(command), spawn_seconds(other)) for _ in range(count * 40)]
    table.row(work, pairs, "2.0 or less")


def peak_megabytes(command):
    done = subprocess.run(["/usr/bin/time", "-f", "%M", *command], check=True,
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    return int(done.stderr.split()[-1]) / 1024


def measure_memory(table, place):
    for part in ("100MB", "1.44MB"):
        work = f"peak memory, split into {part} parts"
        if table.wants(work):
            out = place.fresh("OURS")
            peak = peak_megabytes(split_command(place, part, out))
            table.text(work, f"{peak:.1f} MB", "16 MB or less")
            script = next(name for name in os.listdir(out) if name.endswith(".bat"))
            peak = peak_megabytes([JOINER, os.path.join(out, script)])
            table.text(f"peak memory, join of {part} parts", f"{peak:.1f} MB", "16 MB or less")


def measure_place(table, place, count, shares_blocks):
    wanted_large = "0.05 or less" if shares_blocks else "0.95 or less"
    measure_split(table, place, "100MB", 104857600, wanted_large, count)
    measure_split(table, place, "1.44MB", 1457275, "1.0 or less", count)
    measure_join(table, place, "100MB", "0.05 or less" if shares_blocks else "1.0 or less", count)
    measure_join(table, place, "1.44MB", "1.0 or less", count)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--size", type=int, default=1 << 30, help="bytes of the file to split")
    parser.add_argument("--pairs", type=int, default=7, help="paired runs for each row")
    parser.add_argument("--only", default="", help="rows whose name holds this text")
    arguments = parser.parse_args()

    settings = tempfile.TemporaryDirectory()
    os.environ["XDG_CONFIG_HOME"] = settings.name
    table = Table(arguments.only)

    for name, folder in (("memory", "/dev/shm"), ("disk", "/var/tmp")):
        place = Place(name, folder, arguments.size)
        try:
            measure_place(table, place, arguments.pairs, shares_blocks=False)
            if name == "memory":
                measure_start(table, place, arguments.pairs)
                measure_memory(table, place)
        finally:
            place.remove()
    with xfs_place(arguments.size) as place:
        if place:
            measure_place(table, place, arguments.pairs, shares_blocks=True)
        else:
            table.text("file system that shares blocks", "not measured: takes root")


if __name__ == "__main__":
    main()
