#!/usr/bin/env python3
"""A store on a disk that is full: a small tmpfs, mounted if the machine allows it.

full_disk.py STORE_WRITER

Exits with status 77 if no file system can be mounted.
"""

import os
import pathlib
import plistlib
import subprocess
import sys
import tempfile

FOLDER = "var/jb/var/mobile/Library/Preferences"
NAME = "com.hollowmere.zentrovaprefs.plist"
CANNOT = 77


def inside(writer, root):
    """Runs in its own mount namespace, so that nothing stays mounted."""
    mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=256k", "tmpfs", root],
                             stderr=subprocess.DEVNULL, check=False)
    if mounted.returncode != 0:
        sys.exit(CANNOT)
    folder = pathlib.Path(root) / FOLDER
    folder.mkdir(parents=True)
    file = folder / NAME
    before = plistlib.dumps({"presentationStyle": 1, "useGestures": True})
    file.write_bytes(before)

    subprocess.run([writer, root, "fill", str(1024 * 1024)], check=True,
                   stdout=subprocess.DEVNULL)
    assert file.read_bytes() == before, "the old file has changed"
    assert os.listdir(folder) == [NAME], f"left behind: {os.listdir(folder)}"

    subprocess.run([writer, root, "fill", "1024"], check=True, stdout=subprocess.DEVNULL)
    after = plistlib.loads(file.read_bytes())
    assert after["filling"] == b"z" * 1024 and after["presentationStyle"] == 1, after
    assert os.listdir(folder) == [NAME], f"left behind: {os.listdir(folder)}"


def main():
    writer = sys.argv[1]
    if len(sys.argv) > 2:
        return inside(writer, sys.argv[2])
    with tempfile.TemporaryDirectory(prefix="zentrova-full-") as root:
        namespace = ["unshare", "--mount"] + ([] if os.geteuid() == 0 else ["--map-root-user"])
        allowed = subprocess.run(namespace + ["true"], stderr=subprocess.DEVNULL, check=False)
        if allowed.returncode != 0:
            sys.exit(CANNOT)
        done = subprocess.run(namespace + [sys.executable, __file__, writer, root], check=False)
        sys.exit(done.returncode)


if __name__ == "__main__":
    main()
