#pragma once

#include <cstddef>

// GNUstep's property lists behind functions of C, since its headers need an Objective-C compiler.
// Built only where that and GNUstep base are installed (packages gobjc, libgnustep-base-dev).

extern "C" {

// Reads a property list, XML or binary, and lets go of it. Whether GNUstep takes it.
bool gnustepParses(const char* bytes, std::size_t size);

// Reads one to be written again and again; null where GNUstep refuses it. The caller releases it.
void* gnustepOpen(const char* bytes, std::size_t size);

// Writes it as XML; the number of bytes, 0 where it cannot be written.
std::size_t gnustepWrites(void* list);

void gnustepRelease(void* list);
}
