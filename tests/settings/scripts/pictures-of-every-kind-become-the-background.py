"""The rotated picture is 24 pixels wide in its file and 24 pixels high as stored."""

import struct

import device

stored = device.preferences()
image = stored.pop("backgroundImage")
device.expect(stored, {"other": 1})
device.expect(image[:8], b"\x89PNG\r\n\x1a\n")
device.expect(struct.unpack(">II", image[16:24]), (16, 24))
