"""The CRC-32 of a large file."""

import os

from rows.measuring import BUILD, paired, seconds

CRC32 = os.path.join(BUILD, "bench", "crc32")


def measure_checksum(table, place, count):
    tools = (("7z", ["7z", "h", "-scrcCRC32"], "0.35 or less"),
             ("rhash", ["rhash", "--crc32"], "0.3 or less"),
             ("cat", ["cat"], "1.4 or less"))
    for tool, command, wanted in tools:
        work = f"CRC-32, {place.name}, against {tool}"
        if table.wants(work):
            pairs = paired(count, lambda: seconds([CRC32, place.source]),
                           lambda: seconds([*command, place.source]))
            table.row(work, pairs, wanted)
