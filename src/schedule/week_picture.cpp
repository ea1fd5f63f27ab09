#include "schedule/week_picture.h"

#include <QHelpEvent>
#include <QLocale>
#include <QPainter>
#include <QScrollArea>
#include <QTextDocument>
#include <QToolTip>
#include <QtMath>

#include "shell/controls/dialogs.h"
#include "shell/controls/label.h"

namespace {

constexpr int WeekMargin = 4;

}  // namespace

WeekPicture::WeekPicture() : DescribedWidget(QAccessible::Chart) {
  setObjectName(QStringLiteral("picWeek"));
  setAccessibleName(QStringLiteral("The week by timers alone"));
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  Description = [this] {
    if (week_.Rows.empty()) return QStringLiteral("No timer turns a relay on in these seven days.");
    QStringList names;
    for (const TimerWeek::Row& row : week_.Rows) names << row.Name;
    return QStringLiteral("Arrow keys walk, Enter opens the timer. Rows: ") +
           names.join(QStringLiteral("; "));
  };
  Value = [this] { return InHand(); };
}

void WeekPicture::Show(TimerWeek week) {
  week_ = std::move(week);
  updateGeometry();
  update();
  TakeInHand(inHand_);
}

QString WeekPicture::InHand() const {
  const bool has = inHand_ >= 0 && inHand_ < static_cast<int>(week_.Ends.size());
  return has ? week_.Ends[static_cast<std::size_t>(inHand_)].Words : QString();
}

QSize WeekPicture::sizeHint() const {
  const auto rows = static_cast<int>(week_.Rows.size());
  return {fontMetrics().averageCharWidth() * 60, RowHeight() * (std::max(rows, 1) + 1)};
}

int WeekPicture::RowHeight() const {
  return fontMetrics().height() + WeekMargin;
}

/// Longer names are cut.
int WeekPicture::NamesWidth() const {
  const QFontMetricsF metrics(font());
  double most = 0;
  for (const TimerWeek::Row& row : week_.Rows) {
    most = std::max(most, metrics.horizontalAdvance(row.Name));
  }
  constexpr int part = 3;
  return std::min(qCeil(most) + 1, width() / part) + 2 * WeekMargin;
}

double WeekPicture::XOf(WallMinute minute) const {
  const int left = NamesWidth();
  const double part = static_cast<double>(minute - week_.Begin()) /
                      static_cast<double>(week_.Finish() - week_.Begin());
  return left + part * (width() - left - WeekMargin);
}

int WeekPicture::EndNear(int row, WallMinute minute) const {
  int nearest = -1;
  WallMinute least = week_.Finish() - week_.Begin();
  for (std::size_t i = 0; i < week_.Ends.size(); ++i) {
    const WallMinute away = std::abs(week_.Ends[i].At - minute);
    if (week_.Ends[i].Row != row || away > least) continue;
    nearest = static_cast<int>(i);
    least = away;
  }
  return nearest;
}

int WeekPicture::EndAt(QPointF point) const {
  const double left = XOf(week_.Begin());
  const double part = (point.x() - left) / (XOf(week_.Finish()) - left);
  const int row = static_cast<int>(point.y()) / RowHeight() - 1;
  if (part < 0) return -1;
  return EndNear(row, week_.Begin() +
                          std::llround(part * static_cast<double>(week_.Finish() - week_.Begin())));
}

void WeekPicture::TakeInHand(int end) {
  inHand_ = std::clamp(end, 0, std::max(static_cast<int>(week_.Ends.size()) - 1, 0));
  update();
  TellChange();
  if (InHandChanged) InHandChanged();
  if (InHand().isEmpty() || !hasFocus()) return;
  QWidget* viewport = parentWidget();
  auto* area = viewport ? qobject_cast<QScrollArea*>(viewport->parentWidget()) : nullptr;
  const int row = week_.Ends[static_cast<std::size_t>(inHand_)].Row;
  if (area) area->ensureVisible(0, (row + 1) * RowHeight() + RowHeight() / 2, 0, RowHeight());
}

void WeekPicture::WalkToRow(int step) {
  if (InHand().isEmpty()) return;
  const TimerWeek::End& from = week_.Ends[static_cast<std::size_t>(inHand_)];
  const int to = EndNear(from.Row + step, from.At);
  if (to >= 0) TakeInHand(to);
}

void WeekPicture::OpenInHand() {
  if (!InHand().isEmpty() && Open) Open(week_.Ends[static_cast<std::size_t>(inHand_)].Timer);
}

void WeekPicture::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      TakeInHand(inHand_ - 1);
      break;
    case Qt::Key_Right:
      TakeInHand(inHand_ + 1);
      break;
    case Qt::Key_Up:
      WalkToRow(-1);
      break;
    case Qt::Key_Down:
      WalkToRow(1);
      break;
    case Qt::Key_Home:
      TakeInHand(0);
      break;
    case Qt::Key_End:
      TakeInHand(static_cast<int>(week_.Ends.size()) - 1);
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      RunHandler([this] { OpenInHand(); });
      break;
    default:
      DescribedWidget::keyPressEvent(event);
  }
}

void WeekPicture::mousePressEvent(QMouseEvent* event) {
  const int end = EndAt(event->position());
  if (event->button() != Qt::LeftButton || end < 0) return;
  TakeInHand(end);
  RunHandler([this] { OpenInHand(); });
}

void WeekPicture::focusInEvent(QFocusEvent* event) {
  DescribedWidget::focusInEvent(event);
  TakeInHand(inHand_);
}

void WeekPicture::focusOutEvent(QFocusEvent* event) {
  DescribedWidget::focusOutEvent(event);
  if (InHandChanged) InHandChanged();
}

bool WeekPicture::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return DescribedWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int end = EndAt(help->pos());
  if (end >= 0) {
    QToolTip::showText(help->globalPos(),
                       Qt::convertFromPlainText(week_.Ends[static_cast<std::size_t>(end)].Words),
                       this);
  }
  return true;
}

void WeekPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (week_.Rows.empty()) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect(), static_cast<int>(Qt::AlignLeft | Qt::AlignTop), Description());
    return;
  }
  PaintDays(painter);
  for (int row = 0; row < static_cast<int>(week_.Rows.size()); ++row) PaintRow(painter, row);
  if (hasFocus()) DrawFocusRing(painter, *this);
}

void WeekPicture::PaintDays(QPainter& painter) const {
  const QLocale words = QLocale::c();
  for (int day = 0; day < TimerWeek::Days; ++day) {
    const QDate date = week_.First.addDays(day);
    const double x = XOf(FirstMinuteOf(date));
    const QRectF room(x + 2, 0, XOf(FirstMinuteOf(date.addDays(1))) - x - 2, RowHeight());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(room, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                     words.toString(date, QStringLiteral("ddd d")));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(QPointF(x, 0), QPointF(x, height()));
  }
}

void WeekPicture::PaintRow(QPainter& painter, int row) const {
  const TimerWeek::Row& told = week_.Rows[static_cast<std::size_t>(row)];
  const int top = (row + 1) * RowHeight();
  painter.setPen(palette().color(QPalette::WindowText));
  const int room = NamesWidth() - 2 * WeekMargin;
  painter.drawText(QRect(WeekMargin, top, room, RowHeight()),
                   static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                   fontMetrics().elidedText(told.Name, Qt::ElideRight, room));
  for (const LitSpan& span : told.Spans) {
    const double from = XOf(span.From);
    const QRectF bar(from, top + 3, std::max(XOf(span.To) - from, 2.0), RowHeight() - 6);
    painter.fillRect(bar, palette().color(QPalette::Highlight));
  }
  if (!hasFocus() || InHand().isEmpty()) return;
  const TimerWeek::End& end = week_.Ends[static_cast<std::size_t>(inHand_)];
  if (end.Row != row) return;
  // The end in hand: a line from edge to edge with a foot on either side.
  const double x = XOf(end.At);
  painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
  painter.drawLine(QPointF(x, top), QPointF(x, top + RowHeight()));
  for (const int y : {top + 1, top + RowHeight() - 1}) {
    painter.drawLine(QPointF(x - 4, y), QPointF(x + 4, y));
  }
}
