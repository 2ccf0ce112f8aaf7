"""The pinned entry is one element of the stored list, its comma and all."""

import device

MODULE = "com.hollowmere.ZentrovaModule."
device.expect(device.preferences()["moduleConfig"], [
    MODULE + "DisplaySliderModule",
    MODULE + "AudioSliderModule",
    MODULE + "MediaModule",
    MODULE + "ConnectivityModule," + MODULE + "GroupedTogglesModule",
])
