"""The program for the terminal: splitting, joining, checking, starting, memory."""

import os

from rows.measuring import NATIVE, paired, peak_megabytes, seconds, spawn_seconds

PART_BYTES = 104857600


def split_command(place, out):
    return [NATIVE, "split", "-q", "--sfv", "-s", str(PART_BYTES), "-o", out, place.source]


def measure_split(table, place, count):
    work = f"zarn split, {place.name}, against split"
    if not table.wants(work):
        return

    def timed(name, command):
        out = place.fresh(name)
        elapsed = seconds([word.replace("OUT", out) for word in command])
        place.fresh(name)
        return elapsed

    ours = [NATIVE, "split", "-q", "-s", str(PART_BYTES), "-o", "OUT", place.source]
    theirs = ["split", "-b", str(PART_BYTES), place.source, "OUT/part"]
    table.row(work, paired(count, lambda: timed("NATIVE", ours), lambda: timed("THEIRS", theirs)),
              "1.0 or less")


def measure_join(table, place, count):
    work = f"zarn join, {place.name}, against cat"
    if not table.wants(work):
        return
    out = place.fresh("NATIVE")
    seconds(split_command(place, out))
    parts = sorted(name for name in os.listdir(out) if not name.endswith((".bat", ".sfv")))
    joined, other = os.path.join(out, "SOURCE.BIN"), os.path.join(out, "cat.out")

    def ours():
        elapsed = seconds([NATIVE, "join", "-q", os.path.join(out, parts[0])])
        os.remove(joined)
        return elapsed

    def theirs():
        with open(other, "wb") as target:
            elapsed = seconds(["cat", *parts], cwd=out, stdout=target)
        os.remove(other)
        return elapsed

    table.row(work, paired(count, ours, theirs), "1.0 or less")


def measure_check(table, place, count):
    work = f"zarn check, {place.name}, against rhash -c"
    if not table.wants(work):
        return
    out = place.fresh("NATIVE")
    seconds(split_command(place, out))
    sums = next(os.path.join(out, name) for name in os.listdir(out) if name.endswith(".sfv"))
    pairs = paired(count, lambda: seconds([NATIVE, "check", "-q", sums]),
                   lambda: seconds(["rhash", "-c", sums], cwd=out))
    table.row(work, pairs, "0.35 or less")


def measure_start(table, place, count):
    work = "zarn: start, split of 10 KB, end, against split"
    if not table.wants(work):
        return
    small = os.path.join(place.folder, "SMALL.BIN")
    with open(small, "wb") as file:
        file.write(os.urandom(10240))
    out = place.fresh("NATIVE")
    command = [NATIVE, "split", "-q", "-n2", "-o", out, small]
    other = ["/usr/bin/split", "-b", "5120", small, os.path.join(out, "part")]

    def timed(line):
        place.fresh("NATIVE")
        return spawn_seconds(line)

    table.row(work, paired(count * 40, lambda: timed(command), lambda: timed(other)), "2.0 or less")


def measure_memory(table, place):
    work = "zarn: peak memory of a check"
    if table.wants(work):
        out = place.fresh("NATIVE")
        seconds(split_command(place, out))
        sums = next(os.path.join(out, name) for name in os.listdir(out) if name.endswith(".sfv"))
        table.text(work, f"{peak_megabytes([NATIVE, 'check', '-q', sums]):.1f} MB", "16 MB or less")


def measure_native(table, place, count):
    measure_split(table, place, count)
    measure_join(table, place, count)
    measure_check(table, place, count)
    if place.name == "memory":
        measure_start(table, place, count)
        measure_memory(table, place)
