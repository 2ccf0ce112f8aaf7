#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "platform/foundation/objects/MutableDictionary.h"
#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"
#include "platform/preferences/PSCellType.h"

namespace platform {

// A row, or a group of rows, of a settings list: what it is called, which kind it is, whom it asks
// for its value, and a dictionary of properties.
//
// Threads: any; each single operation is whole by itself. The properties are one dictionary that
// is shared with whoever took it.
class PSSpecifier : public Object {
  PLATFORM_CLASS(PSSpecifier)

 public:
  PSSpecifier();

  // A row of the given kind. `set` and `get` are selectors that `target` offers
  // ("setPreferenceValue:specifier:", "readPreferenceValue:"), `detail` and `edit` are names of
  // classes; each may be absent. The target is held weakly. The properties start empty.
  static std::shared_ptr<PSSpecifier> preferenceSpecifierNamed(
      const std::optional<std::string>& name, const std::shared_ptr<Object>& target,
      const std::optional<std::string>& set, const std::optional<std::string>& get,
      const std::optional<std::string>& detail, PSCellType cell,
      const std::optional<std::string>& edit);
  // A group with a header text, and one without.
  static std::shared_ptr<PSSpecifier> groupSpecifierWithName(
      const std::optional<std::string>& name);
  static std::shared_ptr<PSSpecifier> emptyGroupSpecifier();

  // What the row is called: a row's title, a group's header.
  std::optional<std::string> name() const;
  void setName(const std::optional<std::string>& name);

  // What people and scripts call the row: its name, else the property "title", for cells that draw
  // their own title.
  std::optional<std::string> title() const;

  // The text of the property "id", else of the property "key", else the name; none where there is
  // none of them. `setIdentifier` writes the property "id".
  std::optional<std::string> identifier() const;
  void setIdentifier(const std::optional<std::string>& identifier);

  PSCellType cellType() const;
  void setCellType(PSCellType type);

  // None where the key is absent.
  Value propertyForKey(const std::string& key) const;
  // A none value removes the property.
  void setProperty(const Value& value, const std::string& key);
  void removePropertyForKey(const std::string& key);
  // The dictionary itself: what a cell writes there stays for later cells of the same row.
  std::shared_ptr<MutableDictionary> properties() const;
  // An empty pointer gives a new, empty dictionary.
  void setProperties(const std::shared_ptr<MutableDictionary>& properties);

  // Whom the getter, the setter and the action are sent to; empty when it is gone.
  std::shared_ptr<Object> target() const;
  void setTarget(const std::shared_ptr<Object>& target);

  std::optional<std::string> setter() const;
  void setSetter(const std::optional<std::string>& selector);
  std::optional<std::string> getter() const;
  void setGetter(const std::optional<std::string>& selector);
  // What a tap on the row sends to the target.
  std::optional<std::string> buttonAction() const;
  void setButtonAction(const std::optional<std::string>& selector);
  // The class of the page behind the row, by name.
  std::optional<std::string> detailControllerClass() const;
  void setDetailControllerClass(const std::optional<std::string>& className);
  std::optional<std::string> editPaneClass() const;

  // The row's value, as the target's getter gives it, of whatever kind. None without target or
  // getter, and where the target does not offer the getter.
  Value performGetter();
  // Hands a new value to the target's setter, with the specifier as its second argument. Nothing
  // without target or setter; raises NSInvalidArgumentException where the target does not offer it.
  void performSetterWithValue(const Value& value);

  // The elements of the property "validValues" and their titles, "validTitles"; empty where the
  // property is absent or no array.
  Array validValues() const;
  Array validTitles() const;
  // The position of the first valid value that equals the given one.
  std::optional<std::size_t> indexOfValue(const Value& value) const;
  // The title of a valid value: none for a value that is not among them; the value's own text where
  // there are fewer titles.
  std::optional<std::string> titleForValue(const Value& value) const;

  // The property "enabled"; true where it is absent or not a number.
  bool isEnabled() const;

  // What is wrong with the row's entry in its list, for people: file, row and reason. A row with a
  // problem is shown with it and takes no taps.
  std::optional<std::string> problem() const;
  void setProblem(const std::optional<std::string>& problem);

  // Where the row's entry stands, for messages: `Root.plist, row 5 ("Style")`. Else the title.
  std::string origin() const;
  void setOrigin(const std::optional<std::string>& origin);

  std::string description() const override;

 private:
  struct Fields {
    std::optional<std::string> name;
    std::optional<std::string> setter;
    std::optional<std::string> getter;
    std::optional<std::string> buttonAction;
    std::optional<std::string> detail;
    std::optional<std::string> edit;
    std::optional<std::string> problem;
    std::optional<std::string> origin;
    std::weak_ptr<Object> target;
    std::shared_ptr<MutableDictionary> properties;
    PSCellType cellType = PSGroupCell;
  };
  template <class T>
  T read(T Fields::*field) const {
    const std::lock_guard lock(_mutex);
    return _fields.*field;
  }
  template <class T>
  void write(T Fields::*field, T value);

  mutable std::mutex _mutex;
  Fields _fields;
};

// Sends an operation by name with the first of the given arguments, as many as the selector has
// colons; further ones are none.
Value performAction(Object& target, const std::string& selector,
                    std::initializer_list<Value> arguments);

}  // namespace platform
