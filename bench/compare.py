"""Ratios of the program's times to those of the system's tools, measured side by side.

Each row is the median of the ratios of paired runs: the program, then the other tool, on the
same files, caches warm, pending writes flushed beforehand. Rows that this machine cannot
measure say why. The script never fails for a bad ratio.
"""

import argparse
import os
import tempfile

from rows.checksums import measure_checksum
from rows.compression import measure_compression
from rows.measuring import Place, Table, xfs_place
from rows.native import measure_native
from rows.splitting import measure_memory, measure_place, measure_start


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
            measure_native(table, place, arguments.pairs)
            if name == "memory":
                measure_checksum(table, place, arguments.pairs)
                measure_start(table, place, arguments.pairs)
                measure_memory(table, place)
                measure_compression(table, place, arguments.pairs)
        finally:
            place.remove()
    with xfs_place(arguments.size) as place:
        if place:
            measure_place(table, place, arguments.pairs, shares_blocks=True)
        else:
            table.text("file system that shares blocks", "not measured: takes root")


if __name__ == "__main__":
    main()
