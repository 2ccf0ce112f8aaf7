"""The folder is still empty."""

import device

folder = device.host("/var/jb/var/mobile/Library/ControlCenter")
device.expect([path.name for path in folder.iterdir()], [])
