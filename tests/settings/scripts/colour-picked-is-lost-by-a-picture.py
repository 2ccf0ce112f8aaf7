"""The file contains the values of the last page."""

import device

stored = device.preferences()
device.expect(stored.pop("backgroundImage")[:4], b"\x89PNG")
device.expect(stored, {"backgroundColor": "0000FFFF", "glyphColor": "00FF00FF"})
