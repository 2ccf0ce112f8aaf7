"""The switches that are gone left their values behind."""

import device

device.expect(device.preferences(), {"presentationStyle": "0", "alwaysPresentFromTop": True})
