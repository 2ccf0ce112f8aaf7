"""The pinned entry alone is left."""

import device

MODULE = "com.hollowmere.ZentrovaModule."
device.expect(device.preferences()["moduleConfig"],
              [MODULE + "ConnectivityModule," + MODULE + "GroupedTogglesModule"])
