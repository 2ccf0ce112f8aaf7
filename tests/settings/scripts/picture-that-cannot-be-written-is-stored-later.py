"""The write of another row stored the picture, and no temporary file remains."""

import device

stored = device.preferences()
device.expect(stored.pop("backgroundImage")[:4], b"\x89PNG")
device.expect(stored, {"insetStyle": False, "other": 1})
folder = device.host("/var/jb/var/mobile/Library/Preferences")
device.expect(sorted(path.name for path in folder.iterdir()),
              ["another.plist", "com.hollowmere.zentrovaprefs.plist"])
