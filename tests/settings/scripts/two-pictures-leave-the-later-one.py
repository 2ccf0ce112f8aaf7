"""The drawing, which was chosen last, is stored, and the other key remains."""

import struct

import device

stored = device.preferences()
image = stored.pop("backgroundImage")
device.expect(stored, {"other": 1})
original = device.host("/var/mobile/Media/DCIM/100APPLE/IMG_0005.PNG").read_bytes()
device.expect(struct.unpack(">II", image[16:24]), struct.unpack(">II", original[16:24]))
