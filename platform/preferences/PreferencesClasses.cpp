#include "platform/preferences/PreferencesClasses.h"

#include <vector>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/preferences/PSEditableTableCell.h"
#include "platform/preferences/PSListController.h"
#include "platform/preferences/PSListItemsController.h"
#include "platform/preferences/PSSegmentTableCell.h"
#include "platform/preferences/PSSliderTableCell.h"
#include "platform/preferences/PSSpecifier.h"
#include "platform/preferences/PSSwitchTableCell.h"
#include "platform/preferences/PSValueTableCell.h"

namespace platform {

namespace {

using Row = std::shared_ptr<PSSpecifier>;

void addSpecifierClass(ClassRegistry& registry) {
  using S = PSSpecifier;
  registry.add(ClassBuilder<S>("NSObject")
                   .property("name", &S::name, &S::setName)
                   .property("identifier", &S::identifier, &S::setIdentifier)
                   .property("target", &S::target, &S::setTarget)
                   .property("setter", &S::setter, &S::setSetter)
                   .property("getter", &S::getter, &S::setGetter)
                   .property("buttonAction", &S::buttonAction, &S::setButtonAction)
                   .property("cellType", &S::cellType, &S::setCellType)
                   .property("properties", &S::properties, &S::setProperties)
                   .property("detailControllerClass", &S::detailControllerClass,
                             &S::setDetailControllerClass)
                   .key("title", &S::title)
                   .key("problem", &S::problem)
                   .key("validValues", &S::validValues)
                   .key("validTitles", &S::validTitles)
                   .operation("propertyForKey:", &S::propertyForKey)
                   .operation("setProperty:forKey:", &S::setProperty)
                   .operation("removePropertyForKey:", &S::removePropertyForKey)
                   .operation("performGetter", &S::performGetter)
                   .operation("performSetterWithValue:", &S::performSetterWithValue)
                   .build());
}

void addTableCellClass(ClassRegistry& registry) {
  using C = PSTableCell;
  using Initialiser =
      bool (C::*)(UITableViewCellStyle, const std::optional<std::string>&, const Row&);
  registry.add(
      ClassBuilder<C>("UITableViewCell")
          .operation("initWithStyle:reuseIdentifier:specifier:",
                     static_cast<Initialiser>(&C::initWithStyle))
          .property("specifier", &C::specifier, &C::setSpecifier)
          .property("value", &C::value, &C::setValue)
          .property("cellEnabled", &C::cellEnabled, &C::setCellEnabled)
          .property("target", &C::target, &C::setTarget)
          .property("action", &C::action, &C::setAction)
          .property("cellTarget", &C::cellTarget, &C::setCellTarget)
          .property("cellAction", &C::cellAction, &C::setCellAction)
          .property("control", &C::control)
          .operation("refreshCellContentsWithSpecifier:", &C::refreshCellContentsWithSpecifier)
          .build());
}

void addCellClasses(ClassRegistry& registry) {
  registry.add(ClassBuilder<PSValueTableCell>("PSTableCell").build());
  registry.add(ClassBuilder<PSListItemTableCell>("PSTableCell").build());
  registry.add(ClassBuilder<PSControlTableCell>("PSTableCell")
                   .operation("controlChanged:", &PSControlTableCell::controlChanged)
                   .build());
  registry.add(ClassBuilder<PSSwitchTableCell>("PSControlTableCell").build());
  registry.add(ClassBuilder<PSSegmentTableCell>("PSControlTableCell").build());
  registry.add(ClassBuilder<PSSliderTableCell>("PSControlTableCell").build());
  registry.add(ClassBuilder<PSEditableTableCell>("PSControlTableCell")
                   .operation("editingDidBegin:", &PSEditableTableCell::editingDidBegin)
                   .key("textField", &PSEditableTableCell::textField)
                   .build());
  registry.add(ClassBuilder<PSSegmentableSlider>("UISlider").build());
}

void addRowOperations(ClassBuilder<PSListController>& builder) {
  using P = PSListController;
  using InsertAfter = void (P::*)(const Row&, const Row&, bool);
  using InsertAfterID = void (P::*)(const Row&, const std::string&, bool);
  using InsertAt = void (P::*)(const Row&, std::size_t, bool);
  builder.operation("specifierForID:", &P::specifierForID)
      .operation("insertSpecifier:afterSpecifier:animated:",
                 static_cast<InsertAfter>(&P::insertSpecifier))
      .operation("insertSpecifier:afterSpecifierID:animated:",
                 static_cast<InsertAfterID>(&P::insertSpecifier))
      .operation("insertSpecifier:atIndex:animated:", static_cast<InsertAt>(&P::insertSpecifier))
      .operation("addSpecifier:animated:", &P::addSpecifier)
      .operation("removeSpecifier:animated:", &P::removeSpecifier)
      .operation("removeSpecifierID:animated:", &P::removeSpecifierID)
      .operation("reloadSpecifier:animated:", &P::reloadSpecifier)
      .operation("reloadSpecifierID:animated:", &P::reloadSpecifierID)
      .operation("reloadSpecifiers", &P::reloadSpecifiers)
      .operation("cachedCellForSpecifier:", &P::cachedCellForSpecifier)
      .operation("cachedCellForSpecifierID:", &P::cachedCellForSpecifierID);
}

Value keptSpecifiersOf(PSListController& page) {
  return valueOfSpecifiers(page.keptSpecifiers());
}

void addListControllerClass(ClassRegistry& registry) {
  using P = PSListController;
  ClassBuilder<P> builder("UIViewController");
  builder.key("_table", &P::table)
      .key("table", &P::table)
      .key("_specifiers", &keptSpecifiersOf)
      .property("specifiers", &P::specifiersValue)
      .property("specifier", &P::specifier, &P::setSpecifier)
      .property("parentController", &P::parentController, &P::setParentController)
      .operation("readPreferenceValue:", &P::readPreferenceValue)
      .operation("setPreferenceValue:specifier:", &P::setPreferenceValue);
  addRowOperations(builder);
  registry.add(builder.build());
}

}  // namespace

void registerPreferencesClasses(ClassRegistry& registry) {
  addSpecifierClass(registry);
  addTableCellClass(registry);
  addCellClasses(registry);
  addListControllerClass(registry);
  registry.add(ClassBuilder<PSListItemsController>("PSListController").build());
}

}  // namespace platform
