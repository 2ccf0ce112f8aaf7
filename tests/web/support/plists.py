"""Property lists for the browser tests, read and written by Python's own plistlib.

Reads each request as a line of JSON, answers with a line of JSON, and exits at the end of its input.
"""

import json
import os
import plistlib
import sys


def typed(value):
    """The type and the value; for data, only the length."""
    kind = type(value).__name__
    if isinstance(value, bytes):
        return [kind, len(value)]
    return [kind, value]


def read_typed(path):
    with open(path, "rb") as file:
        return {key: typed(value) for key, value in plistlib.load(file).items()}


def read(path):
    with open(path, "rb") as file:
        return plistlib.load(file)


def write(path, value):
    # Atomically, like other programs of a device.
    with open(path + ".new", "wb") as file:
        plistlib.dump(value, file)
    os.replace(path + ".new", path)


def install_modules(folder, count):
    for index in range(count):
        name = f"Extra{index}Module"
        bundle = os.path.join(folder, name + ".bundle")
        os.mkdir(bundle)
        write(os.path.join(bundle, "Info.plist"), {
            "CFBundleIdentifier": f"org.example.{name}",
            "CFBundleDisplayName": f"Extra {index}",
            "CFBundleName": name,
            "CFBundlePackageType": "BNDL",
        })


def answer(request):
    work = {"readTyped": read_typed, "read": read, "write": write, "installModules": install_modules}
    try:
        return {"result": work[request["work"]](*request["arguments"])}
    except Exception as problem:  # any problem is reported to the test
        return {"problem": f"{type(problem).__name__}: {problem}"}


for line in sys.stdin:
    print(json.dumps(answer(json.loads(line)), default=repr), flush=True)
