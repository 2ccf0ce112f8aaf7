"""The style is a number and the switch a boolean, and nothing else was stored."""

import device

device.expect(device.preferences(), {"presentationStyle": 1, "reverseWhenTopPresented": True})
device.expect(device.preferences()["presentationStyle"], 1)
device.expect(device.preferences()["reverseWhenTopPresented"], True)
