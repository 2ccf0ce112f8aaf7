"""The repaired list is stored, and the other key is unchanged."""

import device

MODULE = "com.hollowmere.ZentrovaModule."
device.expect(device.preferences(), {
    "moduleConfig": [
        MODULE + "ConnectivityModule," + MODULE + "GroupedTogglesModule",
        MODULE + "PowerModule",
        MODULE + "AudioSliderModule",
    ],
    "presentationStyle": 1,
})
