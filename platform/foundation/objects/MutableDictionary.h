#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"

namespace platform {

// A mutable dictionary that two threads may use. Each operation is atomic: a reader sees the state
// before or after it. A reader takes a snapshot under a short lock and never waits while a writer
// encodes or writes to disk.
class MutableDictionary : public Object {
  PLATFORM_CLASS(NSMutableDictionary)

 public:
  MutableDictionary() = default;
  explicit MutableDictionary(Dictionary entries);

  // The platform's valueForKey:. Returns none if the key is absent or none. A key that is not a
  // string raises (an unrecognized selector). "@count" is sent to the dictionary itself; other keys
  // with "@" raise.
  Value valueForKey(const Value& key) const;
  // The platform's setValue:forKey:. A none value removes the key; a none key raises
  // NSInvalidArgumentException.
  void setValueForKey(const Value& value, const Value& key);
  void removeObjectForKey(const Value& key);  // raises NSInvalidArgumentException for a none key
  std::size_t count() const;
  Dictionary snapshot() const;  // the current entries
  void replaceAll(Dictionary entries);
  // Calls the function with the current entries and returns its result. Calls for one dictionary
  // are serialised, so that the last write matches the memory even if several threads set and
  // write. Readers do not wait for them.
  bool writeEntries(const std::function<bool(const Dictionary&)>& write) const;

  Value valueForKey(std::string_view key) override;
  void setValueForKey(const Value& value, std::string_view key) override;
  // Resolves the ambiguity of a literal, which converts to a Value and to a view.
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

  std::mutex _setterMutex;          // locked before _mutex, for a whole read-modify-write
  mutable std::mutex _writerMutex;  // locked before _mutex, while a file is written
  mutable std::mutex _mutex;        // guards _entries, held for one read or exchange
  Dictionary _entries;
};

}  // namespace platform
