"""What a module's page stores goes to the settings of the product, beside the rest."""

import device

preferences = device.preferences()
device.expect(preferences["powerHideWhenLocked"], False)
device.expect(sorted(preferences), ["groupedIdentifiers", "moduleConfig", "powerHideWhenLocked"])
