#include "modules/EditingPage.h"

#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/views/NSLayoutConstraint.h"

namespace zentrova {

using platform::NSLayoutConstraint;
using platform::UITableView;

void prepareEditingPage(platform::UIViewController& page, const std::string& title) {
  page.view()->setBackgroundColor(platform::UIColor::systemGroupedBackgroundColor());
  page.setTitle(title);
  page.navigationItem()->setLargeTitleDisplayMode(
      platform::UINavigationItemLargeTitleDisplayMode::always);
  if (const auto navigation = page.navigationController()) {
    navigation->navigationBar()->setPrefersLargeTitles(true);
  }
}

std::shared_ptr<UITableView> makeEditingTable(
    const std::shared_ptr<platform::UITableViewDataSource>& dataSource,
    const std::shared_ptr<platform::UITableViewDelegate>& delegate,
    SelectionDuringEditing selection) {
  auto table = std::make_shared<UITableView>();
  table->initWithFrame({}, platform::UITableViewStyle::grouped);
  table->setTranslatesAutoresizingMaskIntoConstraints(false);
  table->setDelegate(delegate);
  table->setDataSource(dataSource);
  table->setEditing(true);
  table->setAllowsSelectionDuringEditing(selection == SelectionDuringEditing::yes);
  table->registerClass(platform::UITableViewCell::staticClassName, moduleCellIdentifier);
  return table;
}

void showEditingTable(platform::UIViewController& page, const std::shared_ptr<UITableView>& table) {
  const auto& view = page.view();
  view->addSubview(table);
  NSLayoutConstraint::activateConstraints(
      {table->topAnchor().constraintEqualToAnchor(view->topAnchor()),
       table->leadingAnchor().constraintEqualToAnchor(view->leadingAnchor()),
       table->trailingAnchor().constraintEqualToAnchor(view->trailingAnchor()),
       table->bottomAnchor().constraintEqualToAnchor(view->bottomAnchor())});
}

}  // namespace zentrova
