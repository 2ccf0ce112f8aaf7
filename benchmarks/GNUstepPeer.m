#import <Foundation/Foundation.h>
#include <stdbool.h>
#include <stddef.h>

static id parsed(const char* bytes, size_t size) {
  NSData* data = [NSData dataWithBytesNoCopy:(void*)bytes length:size freeWhenDone:NO];
  return [NSPropertyListSerialization propertyListWithData:data
                                                   options:NSPropertyListImmutable
                                                    format:NULL
                                                     error:NULL];
}

bool gnustepParses(const char* bytes, size_t size) {
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  const bool done = parsed(bytes, size) != nil;
  [pool drain];
  return done;
}

void* gnustepOpen(const char* bytes, size_t size) {
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  id list = [parsed(bytes, size) retain];
  [pool drain];
  return list;
}

size_t gnustepWrites(void* list) {
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  NSData* data = [NSPropertyListSerialization dataWithPropertyList:(id)list
                                                            format:NSPropertyListXMLFormat_v1_0
                                                           options:0
                                                             error:NULL];
  const size_t size = [data length];
  [pool drain];
  return size;
}

void gnustepRelease(void* list) { [(id)list release]; }
