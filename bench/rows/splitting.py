"""Splitting, joining, starting."""

import os
import subprocess
import time

from rows.measuring import JOINER, SPLITTER, drive_path, peak_megabytes, seconds, spawn_seconds


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
    pairs = [(spawn_seconds(command), spawn_seconds(other)) for _ in range(count * 40)]
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
