"""Not a byte of the file has changed."""

import pathlib

import device

damaged = pathlib.Path(__file__).with_name("files") / "damaged.plist"
file = device.host("/var/jb/var/mobile/Library/ControlCenter/ModuleConfiguration_CCSupport.plist")
device.expect(file.read_bytes(), damaged.read_bytes())
