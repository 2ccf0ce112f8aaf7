"""The project's C++ files and their includes, for the checks that work on single files."""

import functools
import hashlib
import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
# What every C++ file is compiled with, as far as reading it goes.
FLAGS = ["-std=c++20", "-I.", "-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow",
         "-Werror"]
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.M)


@functools.cache
def texts():
    """Every header and source that git tracks or would add: path from the root -> text."""
    listing = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "*.h", "*.cpp"],
                             cwd=ROOT, check=True, capture_output=True, text=True).stdout
    return {name: (ROOT / name).read_text() for name in sorted(set(listing.split()))
            if (ROOT / name).exists()}


@functools.cache
def included(name):
    """The files of the project that the file includes directly."""
    return tuple(other for other in INCLUDE.findall(texts().get(name, "")) if other in texts())


@functools.cache
def closure(name):
    """The file and all files that it includes, directly or indirectly."""
    found, waiting = {name}, [name]
    while waiting:
        for other in included(waiting.pop()):
            if other not in found:
                found.add(other)
                waiting.append(other)
    return frozenset(found)


def digest(name, more=""):
    """A digest of the file's text, the texts that it includes, and `more`."""
    total = hashlib.sha256(more.encode())
    for each in sorted(closure(name)):
        total.update(each.encode() + b"\0" + texts()[each].encode())
    return total.hexdigest()[:32]
