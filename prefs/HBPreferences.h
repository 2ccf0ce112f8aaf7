#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/objects/MutableDictionary.h"
#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Value.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// The domain of the product's settings.
inline constexpr const char* preferencesDomain = "com.hollowmere.zentrovaprefs";

// A key-value store for one preferences domain. The whole domain is one dictionary in memory,
// loaded from the domain's property list when the store is made; each change writes the whole
// dictionary back, at once and atomically. A store neither reloads nor notifies nor looks at the
// file again: of two stores for one domain the one that writes last wins for the whole file.
//
// Failures are silent: a file that cannot be read gives an empty store, a failed write leaves the
// file as it was and the change in memory, a value of another type gives the fallback.
//
// A key is a text. Reading under a none key answers the fallback; writing under one raises
// NSInvalidArgumentException, as do keys that are no text.
//
// Threads: the store has no lock. setObject, removeObjectForKey and the getters may be called
// from two threads at once, since each single operation of dictRep is whole by itself and its
// writes to the file follow one another; getters never wait for a write. initWithIdentifier,
// setDictRep and setIdentifier_rl belong to the thread that made the store.
class HBPreferences : public platform::Object {
  PLATFORM_CLASS(HBPreferences)

 public:
  using Value = platform::Value;

  // A new store each time; nothing is kept.
  static std::shared_ptr<HBPreferences> preferencesForIdentifier(
      const std::optional<std::string>& identifier);
  // The file that backs a domain. No text prints as "(null)", as the platform formats it.
  static std::string filePathForIdentifier(const std::optional<std::string>& identifier);
  // Adds the class to a registry.
  static void registerClass(platform::ClassRegistry& registry);

  // Loads the domain's file; always true.
  virtual bool initWithIdentifier(const std::optional<std::string>& identifier);

  const std::shared_ptr<platform::MutableDictionary>& dictRep() const noexcept { return _dictRep; }
  void setDictRep(std::shared_ptr<platform::MutableDictionary> dictRep);
  const std::optional<std::string>& identifier_rl() const noexcept { return _identifier_rl; }
  // The next write goes to the file of the new identifier; what is in memory stays.
  void setIdentifier_rl(const std::optional<std::string>& identifier);

  // The stored object, none where there is none. Both names do the same.
  virtual Value objectForKey(const Value& key) const;
  Value _objectForKey(const Value& key) const;
  // The stored object, else the default.
  virtual Value objectForKey(const Value& key, const Value& defaultValue) const;

  // Stores the object and writes the file before returning; a none object removes the key.
  // Both names do the same.
  virtual void setObject(const Value& object, const Value& key);
  void _setObject(const Value& object, const Value& key);
  // Writes the file even where the key was absent.
  virtual void removeObjectForKey(const Value& key);

  // A stored string, else no text or the default.
  std::optional<std::string> stringForKey(const Value& key) const;
  std::optional<std::string> stringForKey(const Value& key,
                                          const std::optional<std::string>& defaultValue) const;
  // A stored number whose intValue is 0 or 1, by its boolValue (so 0.5 is true, 2 is refused);
  // else false or the default.
  bool boolForKey(const Value& key) const;
  bool boolForKey(const Value& key, bool defaultValue) const;
  // A stored number by its intValue, that is wrapped to 32 bits; else 0.
  std::int64_t integerForKey(const Value& key) const;
  // A stored number by its integerValue, in full 64 bits; else the default.
  std::int64_t integerForKey(const Value& key, std::int64_t defaultValue) const;
  // A stored number in single precision, widened; else 0 or the default.
  double floatForKey(const Value& key) const;
  double floatForKey(const Value& key, float defaultValue) const;

  // Bind a variable of the caller to a key and make sure that the key exists. The pointer must be
  // valid during the call only. A stored number of any size goes through the pointer; otherwise
  // the default is stored, and reaches the variable too, except in registerInteger, which leaves
  // it as it was.
  void registerBool(bool* variable, bool defaultValue, const Value& key);
  void registerInteger(std::int64_t* variable, std::int64_t defaultValue, const Value& key);
  void registerFloat(double* variable, double defaultValue, const Value& key);

 private:
  void writeToFile() const;

  std::shared_ptr<platform::MutableDictionary> _dictRep;
  std::optional<std::string> _identifier_rl;
};

}  // namespace zentrova
