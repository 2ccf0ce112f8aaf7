"""Existing elements keep their place and type; new ones are at the end, in order. The new version of
the file has the permissions of the old one."""

import datetime

import device

device.expect(device.configuration(), {
    "module-identifiers": [
        "com.example.a",
        7,
        "com.apple.control-center.CameraModule",
        "com.apple.mobiletimer.controlcenter.timer",
        "com.apple.control-center.CalculatorModule",
        "com.apple.control-center.FlashlightModule",
    ],
    "userenabled-fixed-module-identifiers": ["x"],
    "real": 0.1,
    "data": b"\x00\x01\x02",
    "date": datetime.datetime(2026, 1, 2, 3, 4, 5),
})
file = device.host("/var/jb/var/mobile/Library/ControlCenter/ModuleConfiguration_CCSupport.plist")
device.expect(file.stat().st_mode & 0o777, 0o444)
