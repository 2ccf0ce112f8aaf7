#include "modules/InstalledModules.h"

#include <string_view>

#include "modules/Membership.h"
#include "platform/foundation/objects/Class.h"
#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Process.h"

namespace zentrova {

using platform::Process;
using platform::Value;

namespace {

bool systemIsAtLeast(int major) {
  return Process::current().service<platform::DeviceTraits>().systemVersion.isAtLeast(major, 0);
}

// A message to none returns none.
Value send(const Value& receiver, std::string_view selector) {
  const auto object = receiver.asObject();
  return object ? object->perform(selector) : Value();
}

// The elements of an array, or of a set through its "allObjects"; no elements for other values.
MutableList elementsOf(const Value& collection) {
  if (collection.asArray()) return *mutableListOf(collection);
  return mutableListOf(send(collection, "allObjects")).value_or(MutableList());
}

}  // namespace

std::optional<MutableList> usableModuleIdentifiers() {
  if (!systemIsAtLeast(15)) return std::nullopt;
  const auto* const repositories = platform::NSClassFromString("CCSModuleRepository");
  const auto* const owner = platform::NSClassFromString("ZVModuleRepository");
  if (!repositories || !owner) return MutableList();
  auto identifiers = elementsOf(
      send(repositories->perform("repositoryWithDefaults"), "loadableModuleIdentifiers"));
  const Membership forbidden(elementsOf(owner->perform("forbiddenCCIdentifiers")));
  std::erase_if(identifiers, [&](const Value& each) { return forbidden.contains(each); });
  return identifiers;
}

Value moduleDescriptions() {
  const auto controller = platform::makeNamed<platform::Object>(
      systemIsAtLeast(14) ? "CCUISettingsListController" : "CCUISettingsModulesController");
  return controller ? controller->valueForKey("_identifiersToDescriptions") : Value();
}

std::optional<std::string> displayNameOf(const Value& description) {
  return send(description, "displayName").text();
}

std::shared_ptr<platform::UIImage> iconImageOf(const Value& description) {
  return send(description, "iconImage").as<platform::UIImage>();
}

}  // namespace zentrova
