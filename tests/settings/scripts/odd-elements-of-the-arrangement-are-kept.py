"""Every element that was not disabled keeps its type and its place."""

import device

MODULE = "com.hollowmere.ZentrovaModule."
device.expect(device.preferences()["moduleConfig"], [
    MODULE + "ConnectivityModule," + MODULE + "GroupedTogglesModule",
    True,
    MODULE + "AudioSliderModule",
    {"b": 1},
    "",
    "x,y",
    7,
])
