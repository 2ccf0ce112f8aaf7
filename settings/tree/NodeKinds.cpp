#include "settings/tree/NodeKinds.h"

#include <iterator>

#include "settings/tree/ControlKinds.h"
#include "settings/tree/EveryNode.h"
#include "settings/tree/PageKinds.h"
#include "settings/tree/PresentedKinds.h"
#include "settings/tree/TableKinds.h"

namespace settings {

namespace {

std::vector<NodeKind> allKinds() {
  std::vector<NodeKind> all;
  for (auto part : {pageKinds(), tableKinds(), controlKinds(), presentedKinds()}) {
    std::ranges::move(part, std::back_inserter(all));
  }
  return all;
}

std::vector<NodeAction> applicationActions() {
  constexpr auto number = MemberForm::number;
  return {{"bounds", {{"width", number}, {"height", number}}, nullptr},
          {"trait", {{"name"}, {"value"}}, nullptr},
          {"reopen", {}, nullptr}};
}

}  // namespace

const KindTable& nodeKinds() {
  static const KindTable table(everyNode(), allKinds(), applicationActions());
  return table;
}

}  // namespace settings
