"""Loaded modules only grow: removed favourites are still loaded, and there are no duplicates."""

import device

device.expect(device.preferences()["groupedIdentifiers"], [
    "com.apple.control-center.CalculatorModule",
    "com.apple.mobiletimer.controlcenter.alarm",
    "com.apple.control-center.AppearanceModule",
])
configuration = device.configuration()
loaded = configuration["module-identifiers"]
device.expect(len(loaded), len(set(loaded)))
device.expect(loaded[-2:], [
    "com.apple.mobiletimer.controlcenter.alarm",
    "com.apple.control-center.AppearanceModule",
])
for identifier in ("com.apple.control-center.FlashlightModule",
                   "com.apple.mobiletimer.controlcenter.timer",
                   "com.apple.control-center.FocusModule"):
    device.expect(loaded.count(identifier), 1)
device.expect(configuration["version"], 1)
