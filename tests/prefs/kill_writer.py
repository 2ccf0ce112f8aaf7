#!/usr/bin/env python3
"""Kills a writer of the preference file at random moments and checks the file.

kill_writer.py STORE_WRITER [KILLS]

Half of the kills use a small file, half a file with a 4 MiB value. After each kill the file must be
complete, old or new, and never older than before. The next writer must find no temporary file of an
earlier one. Prints the seed on failure.
"""

import os
import pathlib
import plistlib
import random
import re
import subprocess
import sys
import tempfile
import time

FOLDER = "var/jb/var/mobile/Library/Preferences"
NAME = "com.hollowmere.zentrovaprefs.plist"
# The most seconds from "ready" until a writer is killed: enough for a few writes. On a busy machine
# a writer may not write anything in that time; until one has, each gets slightly longer.
LONGEST = {"small": 0.006, "image": 0.08}
GROWTH = 1.25
LONGEST_OF_ALL = 2.0


def content(kind):
    values = {f"key{i:02}": i if i % 2 else f"value {i}" for i in range(60)}
    values["counter"] = 0
    if kind == "image":
        values["backgroundImage"] = random.Random(1).randbytes(4 * 1024 * 1024)
    return values


class Victim:
    """A device tree with a preference file, and the writers that are killed in it."""

    def __init__(self, writer, kind, root):
        self.writer, self.kind, self.root = writer, kind, root
        self.folder = pathlib.Path(root) / FOLDER
        self.folder.mkdir(parents=True)
        self.file = self.folder / NAME
        self.values = content(kind)
        self.file.write_bytes(plistlib.dumps(self.values))
        self.counter = 0
        self.around = None

    def kill_one(self, delay):
        process = subprocess.Popen([self.writer, self.root, "count"], stdout=subprocess.PIPE)
        try:
            ready = process.stdout.readline()
            assert ready == b"ready\n", f"the writer did not start: {ready!r}"
            end = time.perf_counter() + delay
            while time.perf_counter() < end:
                pass
        finally:
            process.kill()
            process.wait()
            process.stdout.close()

    def check(self, closely):
        data = self.file.read_bytes()
        match = re.search(rb"<key>counter</key>\n\t<integer>(\d+)</integer>", data)
        assert match, f"the file holds no counter; it has {len(data)} bytes"
        counter = int(match[1])
        assert counter >= self.counter, f"the file went back from {self.counter} to {counter}"
        self.counter = counter
        around = data[: match.start(1)] + b"#" + data[match.end(1):]
        if closely or (self.around is not None and around != self.around):
            assert plistlib.loads(data) == {**self.values, "counter": counter}, "another content"
        if counter > 0 and self.around is None:
            self.around = around

    def check_leftovers(self):
        # Another writer starts and ends after a short write.
        process = subprocess.run([self.writer, self.root, "fill"], stdout=subprocess.PIPE,
                                 check=True)
        assert process.stdout == b"ready\n"
        names = os.listdir(self.folder)
        assert names == [NAME], f"left behind: {names}"


def main():
    writer, kills = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 200
    seed = int.from_bytes(os.urandom(4), "big")
    delays = random.Random(seed)
    left = written = 0
    for kind, longest in LONGEST.items():
        with tempfile.TemporaryDirectory(prefix="zentrova-kill-") as root:
            victim = Victim(writer, kind, root)
            try:
                for number in range(kills // 2):
                    victim.kill_one(delays.uniform(0, longest))
                    left += len(os.listdir(victim.folder)) - 1
                    victim.check(closely=number % 100 == 0)
                    if victim.counter == 0:
                        longest = min(longest * GROWTH, LONGEST_OF_ALL)
                victim.check(closely=True)
                victim.check_leftovers()
            except AssertionError as error:
                sys.exit(f"{kind}, kill {number + 1} of seed {seed}: {error}")
            assert victim.counter > 0, "no writer wrote anything, so the test proves nothing"
            written += victim.counter
    print(f"{kills} writers killed after {written} writes; the file was complete each time; "
          f"{left} temporary files were seen and removed")


if __name__ == "__main__":
    main()
