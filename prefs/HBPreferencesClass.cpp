// The operations that HBPreferences offers by name.

#include "platform/foundation/objects/ClassBuilder.h"
#include "prefs/HBPreferences.h"

namespace zentrova {

namespace {

using platform::Value;
using Text = std::optional<std::string>;

template <class R, class... P>
using Getter = R (HBPreferences::*)(P...) const;

}  // namespace

// registerBool and its siblings take pointers, so they cannot be sent by name.
void HBPreferences::registerClass(platform::ClassRegistry& registry) {
  using Object = Getter<Value, const Value&>;
  using ObjectOrDefault = Getter<Value, const Value&, const Value&>;
  using String = Getter<Text, const Value&>;
  using StringOrDefault = Getter<Text, const Value&, const Text&>;
  using Bool = Getter<bool, const Value&>;
  using BoolOrDefault = Getter<bool, const Value&, bool>;
  using Integer = Getter<std::int64_t, const Value&>;
  using IntegerOrDefault = Getter<std::int64_t, const Value&, std::int64_t>;
  using Float = Getter<double, const Value&>;
  using FloatOrDefault = Getter<double, const Value&, float>;

  registry.add(
      platform::ClassBuilder<HBPreferences>("NSObject")
          .classOperation("preferencesForIdentifier:", &HBPreferences::preferencesForIdentifier)
          .operation("initWithIdentifier:", &HBPreferences::initWithIdentifier)
          .property("dictRep", &HBPreferences::dictRep, &HBPreferences::setDictRep)
          .property("identifier_rl", &HBPreferences::identifier_rl,
                    &HBPreferences::setIdentifier_rl)
          .operation("objectForKey:", static_cast<Object>(&HBPreferences::objectForKey))
          .operation("_objectForKey:", &HBPreferences::_objectForKey)
          .operation("objectForKey:default:",
                     static_cast<ObjectOrDefault>(&HBPreferences::objectForKey))
          .operation("setObject:forKey:", &HBPreferences::setObject)
          .operation("_setObject:forKey:", &HBPreferences::_setObject)
          .operation("removeObjectForKey:", &HBPreferences::removeObjectForKey)
          .operation("stringForKey:", static_cast<String>(&HBPreferences::stringForKey))
          .operation("stringForKey:default:",
                     static_cast<StringOrDefault>(&HBPreferences::stringForKey))
          .operation("boolForKey:", static_cast<Bool>(&HBPreferences::boolForKey))
          .operation("boolForKey:default:", static_cast<BoolOrDefault>(&HBPreferences::boolForKey))
          .operation("integerForKey:", static_cast<Integer>(&HBPreferences::integerForKey))
          .operation("integerForKey:default:",
                     static_cast<IntegerOrDefault>(&HBPreferences::integerForKey))
          .operation("floatForKey:", static_cast<Float>(&HBPreferences::floatForKey))
          .operation("floatForKey:default:",
                     static_cast<FloatOrDefault>(&HBPreferences::floatForKey))
          .build());
}

}  // namespace zentrova
