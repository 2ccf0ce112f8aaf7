"""The previously stored picture is unchanged."""

import struct

import device

image = device.preferences()["backgroundImage"]
original = device.host("/var/mobile/Media/DCIM/100APPLE/IMG_0005.PNG").read_bytes()
device.expect(image[:8], b"\x89PNG\r\n\x1a\n")
device.expect(struct.unpack(">II", image[16:24]), struct.unpack(">II", original[16:24]))
device.expect(image[-8:-4], b"IEND")
