"""A module's page stores its values in the product's settings, next to the others."""

import device

preferences = device.preferences()
device.expect(preferences["powerHideWhenLocked"], False)
device.expect(sorted(preferences), ["groupedIdentifiers", "moduleConfig", "powerHideWhenLocked"])
