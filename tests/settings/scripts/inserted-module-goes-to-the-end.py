"""Only the pinned entry remains."""

import device

MODULE = "com.hollowmere.ZentrovaModule."
device.expect(device.preferences()["moduleConfig"],
              [MODULE + "ConnectivityModule," + MODULE + "GroupedTogglesModule"])
