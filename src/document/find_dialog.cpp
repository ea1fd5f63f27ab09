#include "document/find_dialog.h"

#include <QVBoxLayout>

#include "panel/live_project.h"
#include "shell/controls/dialogs.h"
#include "shell/controls/go_to_item.h"

FindDialog::FindDialog(QWidget* parent) : QDialog(parent) {
  setWindowTitle(QStringLiteral("Find"));
  SetGuidePage(*this, "find.md");
  auto* column = new QVBoxLayout(this);
  txtFind = new TextBox;
  txtFind->UndoesItself = true;
  txtFind->setObjectName(QStringLiteral("txtFind"));
  txtFind->setPlaceholderText(
      QStringLiteral("A name or a number, such as toilets, relay 8, R08, FL 1A"));
  txtFind->setAccessibleName(QStringLiteral("Find"));
  txtFind->Change = [this] { txtFind_Change(); };
  txtFind->installEventFilter(this);
  column->addWidget(txtFind);
  lstFound = new QListWidget;
  lstFound->setObjectName(QStringLiteral("lstFound"));
  lstFound->setAccessibleName(QStringLiteral("Found"));
  lstFound->setUniformItemSizes(true);
  connect(lstFound, &QListWidget::itemActivated, this,
          [this] { RunHandler([this] { lstFound_Click(); }); });
  column->addWidget(lstFound);
  const QFontMetrics metrics = fontMetrics();
  resize(metrics.averageCharWidth() * 80, metrics.height() * 20);
}

void FindDialog::txtFind_Change() {
  found_ = FindItems(LiveProject, txtFind->Text());
  lstFound->clear();
  for (const FoundItem& found : found_) lstFound->addItem(found.Words);
  if (!found_.empty()) {
    lstFound->setCurrentRow(0);
  } else if (!txtFind->Text().trimmed().isEmpty()) {
    lstFound->addItem(QStringLiteral("Nothing has such a name or number."));
    lstFound->item(0)->setFlags(Qt::NoItemFlags);
  }
  if (found_.size() == MostFound) {
    lstFound->addItem(QStringLiteral("There is more: type more of the name."));
    lstFound->item(lstFound->count() - 1)->setFlags(Qt::NoItemFlags);
  }
}

void FindDialog::lstFound_Click() {
  const int row = lstFound->currentRow();
  if (row < 0 || row >= static_cast<int>(found_.size())) return;
  const FoundItem found = found_[static_cast<std::size_t>(row)];
  accept();
  GoToItem(found.On, found.Where);
}

/// Up and Down walk the list while the text is typed; Enter takes its row.
bool FindDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    RunHandler([this] { lstFound_Click(); });
    return true;
  }
  if (key != Qt::Key_Up && key != Qt::Key_Down) return QDialog::eventFilter(watched, event);
  const int row = lstFound->currentRow() + (key == Qt::Key_Down ? 1 : -1);
  if (row >= 0 && row < lstFound->count()) lstFound->setCurrentRow(row);
  return true;
}
