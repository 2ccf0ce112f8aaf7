#include "platform/foundation/FoundationClasses.h"

#include "platform/foundation/FoundationClassTables.h"
#include "platform/foundation/files/NSFileHandle.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/MutableDictionary.h"
#include "platform/foundation/objects/NSNotificationCenter.h"
#include "platform/foundation/programs/NSPipe.h"
#include "platform/foundation/programs/NSTask.h"

namespace platform {

namespace {

Class mutableDictionaryClass() {
  using Setter = void (MutableDictionary::*)(const Value&, const Value&);
  using Getter = Value (MutableDictionary::*)(const Value&) const;
  return ClassBuilder<MutableDictionary>("NSObject")
      .operation("valueForKey:", static_cast<Getter>(&MutableDictionary::valueForKey))
      .operation("objectForKey:", static_cast<Getter>(&MutableDictionary::valueForKey))
      .operation("setValue:forKey:", static_cast<Setter>(&MutableDictionary::setValueForKey))
      .operation("removeObjectForKey:", &MutableDictionary::removeObjectForKey)
      .operation("count", &MutableDictionary::count)
      .build();
}

Class fileHandleClass() {
  return ClassBuilder<NSFileHandle>("NSObject")
      .operation("availableData", &NSFileHandle::availableData)
      .operation("waitForDataInBackgroundAndNotify",
                 &NSFileHandle::waitForDataInBackgroundAndNotify)
      .operation("closeFile", &NSFileHandle::closeFile)
      .build();
}

Class pipeClass() {
  return ClassBuilder<NSPipe>("NSObject")
      .operation("fileHandleForReading", &NSPipe::fileHandleForReading)
      .operation("fileHandleForWriting", &NSPipe::fileHandleForWriting)
      .build();
}

Class taskClass() {
  return ClassBuilder<NSTask>("NSObject")
      .operation("setLaunchPath:", &NSTask::setLaunchPath)
      .operation("launch", &NSTask::launch)
      .operation("waitUntilExit", &NSTask::waitUntilExit)
      .operation("isRunning", &NSTask::isRunning)
      .operation("terminationStatus", &NSTask::terminationStatus)
      .operation("terminate", &NSTask::terminate)
      .build();
}

}  // namespace

void registerFoundationClasses(ClassRegistry& classes) {
  classes.add(mutableDictionaryClass());
  classes.add(ClassBuilder<NSNotificationCenter>("NSObject").build());
  classes.add(fileHandleClass());
  classes.add(pipeClass());
  classes.add(taskClass());
  registerURLClasses(classes);
}

}  // namespace platform
