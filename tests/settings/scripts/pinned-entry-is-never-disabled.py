"""The pinned entry is one element of the stored list, including its comma."""

import device

MODULE = "com.hollowmere.ZentrovaModule."
device.expect(device.preferences()["moduleConfig"], [
    MODULE + "DisplaySliderModule",
    MODULE + "AudioSliderModule",
    MODULE + "MediaModule",
    MODULE + "ConnectivityModule," + MODULE + "GroupedTogglesModule",
])
