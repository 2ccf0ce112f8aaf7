#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"

namespace platform {

// A dictionary that changes, and that two threads may meet in: each single operation is whole by
// itself, a reader sees the state before or after, never between. A reader takes a snapshot by a
// guarded pointer exchange and never waits for a writer's encoding or disk.
class MutableDictionary : public Object {
  PLATFORM_CLASS(NSMutableDictionary)

 public:
  MutableDictionary() = default;
  explicit MutableDictionary(Dictionary entries);

  // The platform's valueForKey:, none where the key is absent or none. One that is no string raises
  // (an unknown message). "@count" asks the dictionary itself; other keys with "@" raise there too.
  Value valueForKey(const Value& key) const;
  // The platform's setValue:forKey:. A none value removes; a none key raises
  // NSInvalidArgumentException.
  void setValueForKey(const Value& value, const Value& key);
  void removeObjectForKey(const Value& key);  // a none key raises NSInvalidArgumentException
  std::size_t count() const;
  Dictionary snapshot() const;  // all entries as they are now
  void replaceAll(Dictionary entries);
  // Calls the function with the entries at that moment and returns its result. Calls on one
  // dictionary follow one another, so that what they write ends equal to the memory when several
  // threads set and write; readers do not wait for them.
  bool writeEntries(const std::function<bool(const Dictionary&)>& write) const;

  Value valueForKey(std::string_view key) override;
  void setValueForKey(const Value& value, std::string_view key) override;
  // A key that could become a Value as well as a view.
  Value valueForKey(const char* key) { return valueForKey(std::string_view(key)); }
  Value valueForKey(const std::string& key) { return valueForKey(std::string_view(key)); }
  void setValueForKey(const Value& value, const char* key) {
    setValueForKey(value, std::string_view(key));
  }
  void setValueForKey(const Value& value, const std::string& key) {
    setValueForKey(value, std::string_view(key));
  }
  std::string description() const override;

 private:
  void store(const Value& value, std::string_view key);
  bool storeInPlace(const Value& value, std::string_view key, Value& replaced);

  std::mutex _setterMutex;  // taken before _mutex, held by one setter from first look to exchange
  mutable std::mutex _writerMutex;  // taken before _mutex, held while a file is written
  mutable std::mutex _mutex;        // guards _entries, held for one look or exchange
  Dictionary _entries;
};

}  // namespace platform
