"""What all rows share: places to measure in, run times, peak memory, the table."""

import contextlib
import functools
import os
import shutil
import statistics
import subprocess
import tempfile
import time

BUILD = os.path.abspath("build/release")
SPLITTER = os.path.join(BUILD, "ZarnFileSplitter")
NATIVE = os.path.join(BUILD, "zarn")
JOINER = os.path.join(BUILD, "ZarnScript")


def drive_path(path):
    return "C:" + path.replace("/", "\\")


class Place:
    """A folder to measure in."""

    def __init__(self, name, folder, size):
        self.name = name
        self.size = size
        self.folder = tempfile.mkdtemp(prefix="zarn-bench-", dir=folder)

    @functools.cached_property
    def source(self):
        """A file of random bytes, written when the first row asks for it."""
        path = os.path.join(self.folder, "SOURCE.BIN")
        with open(path, "wb") as file:
            for _ in range(self.size // (1 << 20)):
                file.write(os.urandom(1 << 20))
            file.write(os.urandom(self.size % (1 << 20)))
        return path

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


def seconds(command, cwd=None, env=None, stdout=subprocess.DEVNULL):
    """Run time of a command, which must succeed."""
    os.sync()
    before = time.perf_counter()
    subprocess.run(command, cwd=cwd, env=env, check=True, stdout=stdout)
    return time.perf_counter() - before


def paired(count, ours, theirs):
    """Pairs of what the two give, ours first. Who runs first alternates, since the memory that a run
    leaves behind costs or spares the next one a good deal; a pair ahead of the others warms up."""
    pairs = []
    for turn in range(count + 1):
        if turn % 2:
            other = theirs()
            pairs.append((ours(), other))
        else:
            pairs.append((ours(), theirs()))
    return pairs[1:]


def spawn_seconds(command):
    """Run time of a short command, without the cost of a pipe or a shell."""
    before = time.perf_counter()
    silence = [(os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)]
    pid = os.posix_spawn(command[0], command, os.environ, file_actions=silence)
    _, status = os.waitpid(pid, 0)
    elapsed = time.perf_counter() - before
    if status != 0:
        raise RuntimeError(f"{command} failed")
    return elapsed


def peak_megabytes(command, env=None):
    done = subprocess.run(["/usr/bin/time", "-f", "%M", *command], check=True, env=env,
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    return int(done.stderr.split()[-1]) / 1024


class Table:
    def __init__(self, only):
        self.only = only
        print(f"{'work':58} {'ours':>9} {'theirs':>9} {'ratio':>7}  wanted", flush=True)

    def wants(self, work):
        return self.only in work

    def row(self, work, pairs, wanted):
        """Pairs of run times in seconds, ours first."""
        ours = statistics.median(pair[0] for pair in pairs)
        theirs = statistics.median(pair[1] for pair in pairs)
        ratio = statistics.median(pair[0] / pair[1] for pair in pairs)
        print(f"{work:58} {ours * 1000:7.1f}ms {theirs * 1000:7.1f}ms {ratio:7.3f}"
              f"  {wanted}", flush=True)

    def sizes(self, work, ours, theirs, wanted):
        """Sizes in bytes."""
        print(f"{work:58} {ours / 1e6:7.2f}MB {theirs / 1e6:7.2f}MB {ours / theirs:7.3f}"
              f"  {wanted}", flush=True)

    def text(self, work, text, wanted=""):
        print(f"{work:58} {text:>27}  {wanted}", flush=True)
