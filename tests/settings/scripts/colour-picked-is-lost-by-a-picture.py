"""What the last page knew is in the file."""

import device

stored = device.preferences()
device.expect(stored.pop("backgroundImage")[:4], b"\x89PNG")
device.expect(stored, {"backgroundColor": "0000FFFF", "glyphColor": "00FF00FF"})
