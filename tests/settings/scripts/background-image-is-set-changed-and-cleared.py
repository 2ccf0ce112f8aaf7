"""The stored picture is a PNG with the size of the last chosen photo."""

import struct

import device

stored = device.preferences()
image = stored.pop("backgroundImage")
device.expect(stored, {"other": 1})
device.expect(image[:8], b"\x89PNG\r\n\x1a\n")
original = device.host("/var/mobile/Media/DCIM/100APPLE/IMG_0005.PNG").read_bytes()
device.expect(struct.unpack(">II", image[16:24]), struct.unpack(">II", original[16:24]))
