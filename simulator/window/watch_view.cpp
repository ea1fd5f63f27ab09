#include "simulator/window/watch_view.h"

#include <QHeaderView>
#include <QLabel>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace simulator {

namespace {

enum Column { Left, What };

}  // namespace

WatchView::WatchView(Panel& panel, Narrator& narrator)
    : PanelView(panel), Story(narrator), List(new QTreeWidget) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  auto* caption = new QLabel(QStringLiteral("&Runs Now"));
  caption->setBuddy(List);
  column->addWidget(caption);
  List->setObjectName(QStringLiteral("watch"));
  List->setAccessibleName(QStringLiteral("Runs now"));
  List->setColumnCount(2);
  List->setHeaderLabels({QStringLiteral("Left"), QStringLiteral("What")});
  List->setRootIsDecorated(false);
  List->setWordWrap(true);
  List->setAlternatingRowColors(true);
  List->header()->setSectionResizeMode(Left, QHeaderView::ResizeToContents);
  connect(List->header(), &QHeaderView::sectionResized, this, [this] { FitLater(); });
  Fits.setSingleShot(true);
  connect(&Fits, &QTimer::timeout, this, [this] { FitLines(); });
  List->setMinimumHeight(3 * fontMetrics().height());
  connect(List, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
    const auto at = static_cast<std::size_t>(List->indexOfTopLevelItem(item));
    if (at < Known.size()) Story.Tell(Story.Why(Known[at].About));
  });
  column->addWidget(List, 1);
}

void WatchView::FitLines() {
  const int margin = List->style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
  const QFontMetrics metrics = List->fontMetrics();
  const QRect room(0, 0, List->columnWidth(What) - 2 * margin, QWIDGETSIZE_MAX);
  for (int i = 0; i < List->topLevelItemCount(); ++i) {
    QTreeWidgetItem* item = List->topLevelItem(i);
    const QRect words = metrics.boundingRect(room, Qt::TextWordWrap, item->text(What));
    item->setSizeHint(What, {0, words.height() + 2});
  }
  List->doItemsLayout();
}

void WatchView::ShowStates() {
  constexpr qint64 leastMs = 200;  // nobody reads faster
  if (!isVisible() || (Made.isValid() && Made.elapsed() < leastMs)) return;
  Made.start();
  const Engine& runner = Source.Runner();
  std::vector<Running> running = RunningNow(runner);
  if (running != Known) {
    Known = std::move(running);
    const auto count = static_cast<int>(Known.size());
    while (List->topLevelItemCount() > count) delete List->takeTopLevelItem(count);
    while (List->topLevelItemCount() < count) {
      (new QTreeWidgetItem(List))->setTextAlignment(Left, Qt::AlignRight);
    }
    for (int i = 0; i < count; ++i) {
      const QString words = QString::fromStdString(Known[static_cast<std::size_t>(i)].Words);
      QTreeWidgetItem* item = List->topLevelItem(i);
      if (item->text(What) == words) continue;
      item->setText(What, words);
      item->setToolTip(What, Wrapped(words));
    }
    FitLines();
    FitLater();
  }
  for (int i = 0; i < List->topLevelItemCount(); ++i) {
    const Running& known = Known[static_cast<std::size_t>(i)];
    const QString left = QString::fromStdString(TimeLeft(known.Until, runner.Now()));
    if (List->topLevelItem(i)->text(Left) != left) List->topLevelItem(i)->setText(Left, left);
  }
}

}  // namespace simulator
