#include "cells/HBTintedTableCell.h"

#include "platform/foundation/objects/ClassBuilder.h"

namespace zentrova {

void HBTintedTableCell::tintColorDidChange() {
  PSTableCell::tintColorDidChange();
  tintTitle();
}

void HBTintedTableCell::refreshCellContentsWithSpecifier(
    const std::shared_ptr<platform::PSSpecifier>& specifier) {
  PSTableCell::refreshCellContentsWithSpecifier(specifier);
  tintTitle();
}

void HBTintedTableCell::tintTitle() {
  textLabel()->setTextColor(tintColor());
  textLabel()->setHighlightedTextColor(tintColor());
}

void HBTintedTableCell::registerClass(platform::ClassRegistry& registry) {
  registry.add(platform::ClassBuilder<HBTintedTableCell>("PSTableCell").build());
}

}  // namespace zentrova
