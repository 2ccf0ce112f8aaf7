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

// A row, or a group of rows, of a settings list: its name, its kind, the target that has its value,
// and a dictionary of properties.
//
// Threads: any. Each operation is atomic. The dictionary of properties is shared with everyone who
// has asked for it.
class PSSpecifier : public Object {
  PLATFORM_CLASS(PSSpecifier)

 public:
  PSSpecifier();

  // A row of the given kind. `set` and `get` are selectors of `target`
  // ("setPreferenceValue:specifier:", "readPreferenceValue:"), `detail` and `edit` are class names.
  // All of them are optional. The target is held weakly. The properties are empty.
  static std::shared_ptr<PSSpecifier> preferenceSpecifierNamed(
      const std::optional<std::string>& name, const std::shared_ptr<Object>& target,
      const std::optional<std::string>& set, const std::optional<std::string>& get,
      const std::optional<std::string>& detail, PSCellType cell,
      const std::optional<std::string>& edit);
  // A group with a header text, and one without.
  static std::shared_ptr<PSSpecifier> groupSpecifierWithName(
      const std::optional<std::string>& name);
  static std::shared_ptr<PSSpecifier> emptyGroupSpecifier();

  // The title of a row, or the header of a group.
  std::optional<std::string> name() const;
  void setName(const std::optional<std::string>& name);

  // The name of the row for people and scripts: its name, otherwise the property "title", for cells
  // that draw their own title.
  std::optional<std::string> title() const;

  // The string in the property "id", otherwise in "key", otherwise the name. Empty if there is
  // none. `setIdentifier` writes the property "id".
  std::optional<std::string> identifier() const;
  void setIdentifier(const std::optional<std::string>& identifier);

  PSCellType cellType() const;
  void setCellType(PSCellType type);

  // None if the key is absent.
  Value propertyForKey(const std::string& key) const;
  // A none value removes the property.
  void setProperty(const Value& value, const std::string& key);
  void removePropertyForKey(const std::string& key);
  // The dictionary itself. What a cell writes to it is seen by later cells of the same row.
  std::shared_ptr<MutableDictionary> properties() const;
  // An empty pointer gives a new, empty dictionary.
  void setProperties(const std::shared_ptr<MutableDictionary>& properties);

  // The object that the getter, the setter and the action are sent to. Empty once it is gone.
  std::shared_ptr<Object> target() const;
  void setTarget(const std::shared_ptr<Object>& target);

  std::optional<std::string> setter() const;
  void setSetter(const std::optional<std::string>& selector);
  std::optional<std::string> getter() const;
  void setGetter(const std::optional<std::string>& selector);
  // The selector that a tap on the row sends to the target.
  std::optional<std::string> buttonAction() const;
  void setButtonAction(const std::optional<std::string>& selector);
  // The name of the class of the page behind the row.
  std::optional<std::string> detailControllerClass() const;
  void setDetailControllerClass(const std::optional<std::string>& className);
  std::optional<std::string> editPaneClass() const;

  // The row's value of any type, from the target's getter. None without target or getter, or if the
  // target does not have the getter.
  Value performGetter();
  // Sends a new value to the target's setter, with the specifier as the second argument. Does
  // nothing without target or setter. Raises NSInvalidArgumentException if the target does not have
  // it.
  void performSetterWithValue(const Value& value);

  // The elements of the property "validValues" and their titles, "validTitles". Empty if the
  // property is absent or not an array.
  Array validValues() const;
  Array validTitles() const;
  // The index of the first valid value that equals the given one.
  std::optional<std::size_t> indexOfValue(const Value& value) const;
  // The title of a valid value, or the value's own text if there are fewer titles. Empty for a
  // value that is not valid.
  std::optional<std::string> titleForValue(const Value& value) const;

  // The property "enabled"; true if it is absent or not a number.
  bool isEnabled() const;

  // The problem with the row's entry in its list, as shown to people: file, row and reason. A row
  // with a problem shows it and ignores taps.
  std::optional<std::string> problem() const;
  void setProblem(const std::optional<std::string>& problem);

  // Where the row's entry is, for messages: `Root.plist, row 5 ("Style")`; otherwise the title.
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

// Sends an operation by name with as many of the arguments as the selector has colons. Missing ones
// are none.
Value performAction(Object& target, const std::string& selector,
                    std::initializer_list<Value> arguments);

}  // namespace platform
