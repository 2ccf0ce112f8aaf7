"""Property lists for the browser tests, read and written by Python's own plistlib.

Takes a request as a line of JSON, answers with a line of JSON, and ends with its input.
"""

import json
import os
import plistlib
import sys


def typed(value):
    """Names the type beside the value; of data there is only its length."""
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
    # As other programs of a device do it: the file is whole at every moment.
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
    except Exception as problem:  # the test that asked is told, whatever it is
        return {"problem": f"{type(problem).__name__}: {problem}"}


for line in sys.stdin:
    print(json.dumps(answer(json.loads(line)), default=repr), flush=True)
