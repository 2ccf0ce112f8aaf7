"""The values of the removed switches are still stored."""

import device

device.expect(device.preferences(), {"presentationStyle": "0", "alwaysPresentFromTop": True})
