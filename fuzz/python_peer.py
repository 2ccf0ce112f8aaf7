"""Reads property lists with plistlib for the fuzzer that compares.

Each request on standard input is a length (four bytes, big endian) and that many bytes; each answer
on standard output is the same: nothing where plistlib refuses, else the value in a form in which
equal values are equal texts.
"""

import datetime
import math
import plistlib
import struct
import sys


def canonical(value, out):
    if isinstance(value, bool):
        out.append("b1" if value else "b0")
    elif isinstance(value, int):
        out.append("i%d" % value)
    elif isinstance(value, float):
        out.append("rnan" if math.isnan(value) else "r" + struct.pack(">d", value + 0.0).hex())
    elif isinstance(value, str):
        out.append("s" + value.encode("utf-8").hex())
    elif isinstance(value, bytes):
        out.append("d" + value.hex())
    elif isinstance(value, datetime.datetime):
        out.append("t" + value.strftime("%m-%dT%H:%M:%S"))
    elif isinstance(value, list):
        out.append("[")
        for item in value:
            canonical(item, out)
        out.append("]")
    elif isinstance(value, dict):
        out.append("{")
        for key in sorted(value, key=lambda k: k.encode("utf-16-be")):
            canonical(key, out)
            canonical(value[key], out)
        out.append("}")
    else:
        raise ValueError("no value of a property list")
    out.append(",")


def answer(request):
    try:
        out = []
        canonical(plistlib.loads(request), out)
        return "".join(out).encode("ascii")
    except Exception:
        return b""


def main():
    sys.setrecursionlimit(10000)
    source, sink = sys.stdin.buffer, sys.stdout.buffer
    while True:
        head = source.read(4)
        if len(head) < 4:
            return
        result = answer(source.read(struct.unpack(">I", head)[0]))
        sink.write(struct.pack(">I", len(result)) + result)
        sink.flush()


main()
