"""Runs a command on many files in parallel, and skips files that passed before and are unchanged."""

import concurrent.futures
import os
import pathlib
import subprocess

import includes


def check(kind, names, command, more=""):
    """Runs command(name) -> (arguments, standard input) for each file; prints the failures.

    A file that passed is recorded in build/KIND under a digest of its text, the texts that it includes
    and `more`, which is everything else that the result depends on. Returns the exit status.
    """
    stamps = includes.ROOT / "build" / kind
    stamps.mkdir(parents=True, exist_ok=True)

    def run(name):
        stamp = stamps / includes.digest(name, more + name)
        if stamp.exists():
            return None
        arguments, text = command(name)
        ended = subprocess.run(arguments, input=text, cwd=includes.ROOT, capture_output=True,
                               text=True, check=False)
        if ended.returncode == 0:
            stamp.touch()
            return None
        return f"FAILED {name}\n{ended.stdout}{ended.stderr}"

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        problems = [problem for problem in pool.map(run, names) if problem]
    print("\n".join(problems))
    return 1 if problems else 0


def tools(*paths):
    """The texts of the check's own files, for `more`."""
    return "".join(pathlib.Path(path).read_text() for path in paths)
