"""The picked colour is lost once, and the colour that is picked after the reset stays."""

import device

device.expect(device.preferences(), {"backgroundColor": "0000FFFF", "dimmingColor": "#FA0000:0.0",
                                     "glyphColor": "00FF00FF", "insetStyle": True})
