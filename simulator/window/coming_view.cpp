#include "simulator/window/coming_view.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "simulator/window/log_view.h"

namespace simulator {

namespace {

constexpr int WallRole = Qt::UserRole;

}  // namespace

ComingView::ComingView(Panel& panel, Narrator& narrator)
    : PanelView(panel), Story(narrator), Coming(new QListWidget) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  auto* caption = new QLabel(QStringLiteral("Co&ming (Enter goes there)"));
  caption->setBuddy(Coming);
  column->addWidget(caption);
  Coming->setObjectName(QStringLiteral("coming"));
  Coming->setAccessibleName(QStringLiteral("Coming"));
  Coming->setWordWrap(true);
  Coming->setAlternatingRowColors(true);
  Coming->setMinimumHeight(3 * fontMetrics().height());
  connect(Coming, &QListWidget::itemActivated, this,
          [this](const QListWidgetItem* item) { GoTo(item->data(WallRole).toDateTime()); });
  column->addWidget(Coming, 1);
}

void ComingView::ShowStates() {
  if (std::exchange(ShownLooks, Story.Looks()) == Story.Looks()) return;
  const std::vector<LogLines::Line>& lines = Story.Ahead().Lines();
  const int row = std::max(Coming->currentRow(), 0);
  const auto count = static_cast<int>(lines.size());
  while (Coming->count() > count) delete Coming->takeItem(0);
  while (Coming->count() < count) Coming->addItem(QString());
  for (int i = 0; i < count; ++i) {
    const LogLines::Line& line = lines[static_cast<std::size_t>(i)];
    QListWidgetItem* item = Coming->item(i);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setText(LineText(line, "ddd HH:mm:ss"));
    item->setData(WallRole, DateTimeOf(line.Wall));
  }
  if (lines.empty()) {
    auto* nothing = new QListWidgetItem(QStringLiteral("Nothing within eight days."), Coming);
    nothing->setFlags(Qt::NoItemFlags);
  }
  Coming->setCurrentRow(std::min(row, count - 1), QItemSelectionModel::NoUpdate);
}

}  // namespace simulator
