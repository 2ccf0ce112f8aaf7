#pragma once

#include <cstddef>

// C functions for GNUstep's property lists, because its headers need an Objective-C compiler. Built
// only if that and GNUstep base are installed (packages gobjc, libgnustep-base-dev).

extern "C" {

// Reads a property list, XML or binary, and releases it. Returns whether GNUstep accepts it.
bool gnustepParses(const char* bytes, std::size_t size);

// Reads a list to be written repeatedly. The caller releases it. Returns null if GNUstep refuses
// it.
void* gnustepOpen(const char* bytes, std::size_t size);

// Writes the list as XML. Returns the number of bytes, or 0 if it cannot be written.
std::size_t gnustepWrites(void* list);

void gnustepRelease(void* list);
}
