"""Both lists contain the elements unchanged; the loaded modules contain each one once."""

import device

NOTES = "com.apple.control-center.NotesModule"
favourites = device.preferences()["groupedIdentifiers"]
device.expect(favourites, [NOTES, True, NOTES])
device.expect(favourites[1] is True, True)
loaded = device.configuration()["module-identifiers"]
device.expect(loaded.count(NOTES), 1)
device.expect(loaded[-2:], [NOTES, True])
