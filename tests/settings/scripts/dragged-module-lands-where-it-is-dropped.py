"""The file has the order of the last drag and its other content."""

import device

MODULE = "com.hollowmere.ZentrovaModule."
preferences = device.preferences()
device.expect(preferences["moduleConfig"], [
    MODULE + "MediaModule",
    MODULE + "PowerModule",
    MODULE + "AudioSliderModule",
    MODULE + "ConnectivityModule," + MODULE + "GroupedTogglesModule",
    MODULE + "DisplaySliderModule",
])
device.expect(len(preferences["groupedIdentifiers"]), 4)
