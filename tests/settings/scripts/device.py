"""Access to the device's files after a script, for the checks next to the scripts."""

import pathlib
import plistlib
import sys

ROOT = pathlib.Path(sys.argv[1])


def host(path):
    """The file on this machine; the links of a new device stay inside it."""
    return ROOT / path.lstrip("/")


def read(path):
    """The property list at a device path."""
    return plistlib.loads(host(path).read_bytes())


def preferences():
    return read("/var/jb/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist")


def configuration():
    return read("/var/jb/var/mobile/Library/ControlCenter/ModuleConfiguration_CCSupport.plist")


def expect(actual, expected):
    """Ends the check with a message if the two differ in type or in value."""
    if type(actual) is not type(expected) or actual != expected:
        sys.exit(f"expected {expected!r}\nthere is {actual!r}")
