"""The accepted change stores a list; the other keys have their types and values."""

import device

MODULE = "com.hollowmere.ZentrovaModule."
preferences = device.preferences()
device.expect(preferences.pop("moduleConfig"), [
    MODULE + "ConnectivityModule," + MODULE + "GroupedTogglesModule",
    MODULE + "DisplaySliderModule",
    MODULE + "AudioSliderModule",
    MODULE + "MediaModule",
    MODULE + "PowerModule",
])
device.expect(preferences, {"other": b"\x00\x01\x02", "real": 0.1})
