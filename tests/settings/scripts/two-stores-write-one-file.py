"""The file is the complete content of the store that wrote last."""

import device

preferences = device.preferences()
device.expect(preferences, {"enabled": False, "closeAfterUse": True})
device.expect([type(value) for value in preferences.values()], [bool, bool])
