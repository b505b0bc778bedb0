"""Splitting, joining, starting."""

import os

from rows.measuring import (JOINER, SPLITTER, drive_path, paired, peak_megabytes, seconds,
                            spawn_seconds)


def split_command(place, part, out):
    return [SPLITTER, f"/F={drive_path(place.source)}", f"/D={drive_path(out)}", f"/PS={part}"]


def measure_split(table, place, part, part_bytes, wanted, count):
    work = f"split into {part} parts, {place.name}, against split"
    if not table.wants(work):
        return

    def ours():
        elapsed = seconds(split_command(place, part, place.fresh("OURS")))
        place.fresh("OURS")
        return elapsed

    def theirs():
        elapsed = seconds(["split", "-a", "4", "-b", str(part_bytes), place.source,
                           os.path.join(place.fresh("THEIRS"), "part")])
        place.fresh("THEIRS")
        return elapsed

    table.row(work, paired(count, ours, theirs), wanted)


def measure_join(table, place, part, wanted, count):
    work = f"join of {part} parts, {place.name}, against cat"
    if not table.wants(work):
        return
    out = place.fresh("OURS")
    seconds(split_command(place, part, out))
    script = next(name for name in os.listdir(out) if name.endswith(".bat"))
    parts = sorted(name for name in os.listdir(out) if not name.endswith(".bat"))
    joined, other = os.path.join(out, "SOURCE.BIN"), os.path.join(out, "cat.out")

    def ours():
        elapsed = seconds([JOINER, os.path.join(out, script)])
        os.remove(joined)
        return elapsed

    def theirs():
        with open(other, "wb") as target:
            elapsed = seconds(["cat", *parts], cwd=out, stdout=target)
        os.remove(other)
        return elapsed

    table.row(work, paired(count, ours, theirs), wanted)


def measure_place(table, place, count, shares_blocks):
    wanted_large = "0.05 or less" if shares_blocks else "0.95 or less"
    measure_split(table, place, "100MB", 104857600, wanted_large, count)
    measure_split(table, place, "1.44MB", 1457275, "1.0 or less", count)
    measure_join(table, place, "100MB", "0.05 or less" if shares_blocks else "1.0 or less", count)
    measure_join(table, place, "1.44MB", "1.0 or less", count)


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
    pairs = paired(count * 40, lambda: spawn_seconds(command), lambda: spawn_seconds(other))
    table.row(work, pairs, "2.0 or less")


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
