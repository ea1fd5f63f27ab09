#include "shell/controls/in_place_list.h"

#include <QGraphicsDropShadowEffect>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

namespace {

/// Rows as high as the value cells that the list stands over, with their notes.
class CellHeightDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = index.data(Qt::AccessibleTextRole).toString();
  }
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return {size.width(), std::max(size.height(), Label().sizeHint().height())};
  }
};

}  // namespace

QVariant NotedTexts::data(const QModelIndex& index, int role) const {
  if (role != Qt::AccessibleTextRole) return QStringListModel::data(index, role);
  const QString text = QStringListModel::data(index, Qt::DisplayRole).toString();
  const QString note = Notes.value(index.row());
  return note.isEmpty() ? text : text + NoteGap + note;
}

InPlaceList::InPlaceList(ChildForm* form, const char* name, const QStringList& items)
    : QListView(form), form_(form) {
  setObjectName(QString::fromLatin1(name));
  setModel(&model_);
  setUniformItemSizes(true);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMouseTracking(true);
  setFrameShape(QFrame::Box);
  setFrameShadow(QFrame::Plain);
  setLineWidth(1);
  setItemDelegate(new CellHeightDelegate(this));
  auto* shadow = new QGraphicsDropShadowEffect(this);
  shadow->setBlurRadius(16);
  shadow->setOffset(0, 3);
  shadow->setColor(QColor(0, 0, 0, 140));
  setGraphicsEffect(shadow);
  model_.setStringList(items);
  hide();
  connect(this, &QListView::clicked, this,
          [this](const QModelIndex& index) { RunHandler([&] { Choose(index.row()); }); });
}

void InPlaceList::SetItems(const QStringList& items) {
  model_.setStringList(items);
}

QString InPlaceList::List(int index) const {
  return index < 0 ? QString() : model_.index(index).data().toString();
}

void InPlaceList::Open(QWidget& cell, int index) {
  constexpr int mostRowsShown = 13;
  for (auto* list : form_->findChildren<InPlaceList*>()) {
    if (list != this) list->Close();
  }
  if (cell_) cell_->removeEventFilter(this);
  cell_ = &cell;
  cell_->installEventFilter(this);
  const int rows = std::clamp(ListCount(), 1, mostRowsShown);
  const int rowHeight = ListCount() > 0 ? sizeHintForRow(0) : cell.height();
  // A sample of the items is enough: they differ by digits only where there are many.
  int width = cell.width();
  const int step = std::max(1, ListCount() / 24);
  for (int i = 0; i < ListCount(); i += step) {
    const QString text = model_.index(i).data(Qt::AccessibleTextRole).toString();
    width = std::max(width, fontMetrics().horizontalAdvance(text) + 40);
  }
  // Whole rows, however low the screen is.
  const int fit = std::max((form_->height() - 2 * frameWidth()) / rowHeight, 1);
  const QSize size(std::min(width, form_->width()),
                   std::min(rows, fit) * rowHeight + 2 * frameWidth());
  QPoint at = cell.mapTo(form_, QPoint(0, 0));
  at.setX(std::clamp(at.x(), 0, form_->width() - size.width()));
  at.setY(std::clamp(at.y(), 0, form_->height() - size.height()));
  setGeometry(QRect(at, size));
  setCurrentIndex(index < 0 ? QModelIndex() : model_.index(index));
  if (currentIndex().isValid())
    scrollTo(currentIndex(), PositionAtCenter);
  else
    clearSelection();
  show();
  raise();
  openedBy_ = LastPress();
  ignoring_ = false;
  setFocus(Qt::PopupFocusReason);
  if (auto* label = qobject_cast<Label*>(cell_)) label->SetExpanded(true);
}

void InPlaceList::Close() {
  if (isHidden()) return;
  // Before the list goes, or the focus would pass over whatever stands first on the screen.
  if (hasFocus() && cell_) cell_->setFocus(Qt::OtherFocusReason);
  hide();
  if (auto* label = qobject_cast<Label*>(cell_)) label->SetExpanded(false);
}

void InPlaceList::Choose(int index) {
  if (index < 0 || index >= ListCount()) return;
  setCurrentIndex(model_.index(index));
  if (Click) Click();
}

void InPlaceList::keyPressEvent(QKeyEvent* event) {
  const bool searched = search_.Takes(*event);
  if (event->key() == Qt::Key_Space) {
    if (searched) {
      keyboardSearch(event->text());
    } else if (currentIndex().isValid()) {
      RunHandler([this] { Choose(ListIndex()); });
    }
    return;
  }
  switch (event->key()) {
    case Qt::Key_Escape:
      Close();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (currentIndex().isValid()) RunHandler([this] { Choose(ListIndex()); });
      break;
    default:
      QListView::keyPressEvent(event);
  }
}

/// The second click of a fast pair was meant for the cell below the list.
bool InPlaceList::IsSecondOfPair(const QMouseEvent& press) {
  const auto opened = std::exchange(openedBy_, std::nullopt);
  const QStyleHints& hints = *QGuiApplication::styleHints();
  return opened && press.timestamp() >= opened->Timestamp &&
         press.timestamp() - opened->Timestamp <
             static_cast<quint64>(hints.mouseDoubleClickInterval()) &&
         (press.globalPosition().toPoint() - opened->At).manhattanLength() <=
             hints.mouseDoubleClickDistance();
}

void InPlaceList::mousePressEvent(QMouseEvent* event) {
  ignoring_ = IsSecondOfPair(*event);
  if (!ignoring_) QListView::mousePressEvent(event);
}

/// A third fast click is a double click of the list's, and chooses like any other.
void InPlaceList::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

void InPlaceList::mouseReleaseEvent(QMouseEvent* event) {
  if (!ignoring_) QListView::mouseReleaseEvent(event);
  ignoring_ = false;
}

bool InPlaceList::eventFilter(QObject* watched, QEvent* event) {
  // A choice would go to a value that nobody sees.
  if (watched == cell_ && event->type() == QEvent::Hide && !cell_->isVisibleTo(form_)) Close();
  return QListView::eventFilter(watched, event);
}
