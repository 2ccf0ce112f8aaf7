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
// loaded from the domain's property list when the store is made. Each change writes the whole
// dictionary back, synchronously and atomically. A store never reloads the file and posts no
// notifications: if two stores share a domain, the last write wins for the whole file.
//
// Failures are silent. A file that cannot be read gives an empty store. A failed write leaves the
// old file and keeps the change in memory. A value of the wrong type gives the fallback.
//
// Keys are strings. Reading a none key returns the fallback; writing one raises
// NSInvalidArgumentException. A key of any other type always raises it.
//
// Threads: the store has no lock. setObject, removeObjectForKey and the getters may be called
// from several threads at once: each operation of dictRep is atomic, and writes to the file are
// serialized. Getters never wait for a write. initWithIdentifier, setDictRep and setIdentifier_rl
// belong to the thread that made the store.
class HBPreferences : public platform::Object {
  PLATFORM_CLASS(HBPreferences)

 public:
  using Value = platform::Value;

  // Makes a new store on every call.
  static std::shared_ptr<HBPreferences> preferencesForIdentifier(
      const std::optional<std::string>& identifier);
  // The file that backs a domain. No identifier reads as "(null)", as the platform formats it.
  static std::string filePathForIdentifier(const std::optional<std::string>& identifier);
  // Adds the class to a registry.
  static void registerClass(platform::ClassRegistry& registry);

  // Loads the domain's file; always true.
  virtual bool initWithIdentifier(const std::optional<std::string>& identifier);

  const std::shared_ptr<platform::MutableDictionary>& dictRep() const noexcept { return _dictRep; }
  void setDictRep(std::shared_ptr<platform::MutableDictionary> dictRep);
  const std::optional<std::string>& identifier_rl() const noexcept { return _identifier_rl; }
  // The next write goes to the file of the new identifier; the values in memory are kept.
  void setIdentifier_rl(const std::optional<std::string>& identifier);

  // The stored object, or none. Both names do the same.
  virtual Value objectForKey(const Value& key) const;
  Value _objectForKey(const Value& key) const;
  // The stored object, or the default.
  virtual Value objectForKey(const Value& key, const Value& defaultValue) const;

  // Stores the object and writes the file before returning. A none object removes the key.
  // Both names do the same.
  virtual void setObject(const Value& object, const Value& key);
  void _setObject(const Value& object, const Value& key);
  // Writes the file even if the key was absent.
  virtual void removeObjectForKey(const Value& key);

  // A stored string; otherwise nothing, or the default.
  std::optional<std::string> stringForKey(const Value& key) const;
  std::optional<std::string> stringForKey(const Value& key,
                                          const std::optional<std::string>& defaultValue) const;
  // The boolValue of a stored number whose intValue is 0 or 1 (so 0.5 is true and 2 is rejected);
  // otherwise false, or the default.
  bool boolForKey(const Value& key) const;
  bool boolForKey(const Value& key, bool defaultValue) const;
  // The intValue of a stored number, wrapped to 32 bits; otherwise 0.
  std::int64_t integerForKey(const Value& key) const;
  // The integerValue of a stored number, all 64 bits; otherwise the default.
  std::int64_t integerForKey(const Value& key, std::int64_t defaultValue) const;
  // A stored number in single precision, widened; otherwise 0, or the default.
  double floatForKey(const Value& key) const;
  double floatForKey(const Value& key, float defaultValue) const;

  // Read a key into the caller's variable and make sure that the key exists. The pointer must be
  // valid during the call only. A stored number of any size is written to the variable. Otherwise
  // the default is stored and written to the variable; registerInteger leaves the variable alone.
  void registerBool(bool* variable, bool defaultValue, const Value& key);
  void registerInteger(std::int64_t* variable, std::int64_t defaultValue, const Value& key);
  void registerFloat(double* variable, double defaultValue, const Value& key);

 private:
  void writeToFile() const;

  std::shared_ptr<platform::MutableDictionary> _dictRep;
  std::optional<std::string> _identifier_rl;
};

}  // namespace zentrova
