#include "simulator/window/day_picture.h"

#include <QDateTime>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

namespace simulator {

namespace {

constexpr int Margin = 6;

QString TimeText(std::int64_t wall, const char* form = "HH:mm") {
  return DateTimeOf(wall).toString(QString::fromLatin1(form));
}

}  // namespace

QColor DayLineColor(int kind) {
  static const std::array colors{QColor(0xE0, 0x60, 0x20), QColor(0x9A, 0x50, 0xC8),
                                 QColor(0x20, 0x9A, 0x48), QColor(0x30, 0x78, 0xE0)};
  return colors.at(static_cast<std::size_t>(kind));
}

DayPicture::DayPicture() {
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(QStringLiteral("When relays are on"));
  setObjectName(QStringLiteral("picture"));
}

void DayPicture::Show(const DayPlan& plan) {
  const bool sameSize = plan.Relays.size() == Plan.Relays.size();
  if (plan.FirstDay != Plan.FirstDay || plan.Days != Plan.Days) {
    constexpr std::int64_t noon = DayMs / 2;
    Mark = plan.FirstDay * DayMs + noon;
  }
  Plan = plan;
  MarkRow = std::clamp(MarkRow, 0, std::max(static_cast<int>(Plan.Relays.size()) - 1, 0));
  MeasureNames();
  if (!sameSize) updateGeometry();
  update();
}

void DayPicture::ShowNow(std::int64_t wall) {
  const int before = static_cast<int>(X(Now));
  const int after = static_cast<int>(X(wall));
  Now = wall;
  constexpr int lineWidth = 4;
  if (after == before) return;
  for (const int x : {before, after}) update(x - lineWidth / 2, 0, lineWidth, height());
}

QSize DayPicture::sizeHint() const {
  constexpr int leastHourChars = 3;
  const int hours = 24 * leastHourChars * fontMetrics().horizontalAdvance(QLatin1Char('0'));
  return {NameWidth + hours, Top() + RowHeight() * static_cast<int>(Plan.Relays.size()) + Margin};
}

void DayPicture::MeasureNames() {
  int width = 0;
  for (const auto& relay : Plan.Relays) {
    width = std::max(width, fontMetrics().horizontalAdvance(relay.Name));
  }
  NameWidth = width + 2 * Margin;
}

double DayPicture::X(std::int64_t wall) const {
  const std::int64_t all = Plan.Days * DayMs;
  const std::int64_t at = std::clamp<std::int64_t>(wall - Plan.FirstDay * DayMs, 0, all);
  const int left = NameWidth;
  return left + static_cast<double>(at) / static_cast<double>(all) * (width() - left - Margin);
}

std::int64_t DayPicture::WallAt(double x) const {
  const int left = NameWidth;
  const double part = std::clamp((x - left) / (width() - left - Margin), 0.0, 1.0);
  const auto minutes = static_cast<std::int64_t>(part * Plan.Days * DayMinutes);
  return Plan.FirstDay * DayMs + std::min(minutes, Plan.Days * DayMinutes - 1) * MinuteMs;
}

int DayPicture::RowAt(double y) const {
  const int row = static_cast<int>((y - Top()) / RowHeight());
  return std::clamp(row, 0, static_cast<int>(Plan.Relays.size()) - 1);
}

QString DayPicture::Words(int row, std::int64_t wall) const {
  if (Plan.Relays.empty()) return {};
  const DayPlan::RelayRow& relay = Plan.Relays[static_cast<std::size_t>(row)];
  const char* form = Plan.Days > 1 ? "ddd HH:mm" : "HH:mm";
  QStringList stretches;
  bool on = false;
  for (const auto& stretch : relay.On) {
    stretches << TimeText(stretch.From, form) + QStringLiteral(" to ") + TimeText(stretch.To, form);
    on = on || (wall >= stretch.From && wall < stretch.To);
  }
  return QStringLiteral("%1 at %2: %3. %4")
      .arg(relay.Name, TimeText(wall, form), on ? QStringLiteral("on") : QStringLiteral("off"),
           stretches.isEmpty() ? QStringLiteral("Never on.")
                               : QStringLiteral("On ") + stretches.join(QStringLiteral(", ")));
}

void DayPicture::PaintScale(QPainter& painter, int bottom) const {
  QColor quiet = palette().color(QPalette::WindowText);
  quiet.setAlphaF(0.25F);
  const int top = Top();
  for (int day = 0; day < Plan.Days; ++day) {
    constexpr int hourStep = 2;
    const std::int64_t start = (Plan.FirstDay + day) * DayMs;
    for (int hour = 0; hour <= 24; hour += Plan.Days > 1 ? 12 : hourStep) {
      const double x = X(start + hour * HourMs);
      painter.setPen(quiet);
      painter.drawLine(QPointF(x, top), QPointF(x, bottom));
      if (Plan.Days > 1 && hour != 12) continue;
      painter.setPen(palette().color(QPalette::WindowText));
      const QString text = Plan.Days > 1 ? TimeText(start, "ddd MM-dd") : QString::number(hour);
      const int half = painter.fontMetrics().horizontalAdvance(text);
      const double left = std::min(x - half, width() - 2.0 * half);
      painter.drawText(QRectF(left, 0, 2.0 * half, top - 4), Qt::AlignCenter, text);
    }
  }
}

void DayPicture::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const QRect wanted = event->rect();  // a strip, when only the present has moved
  const int left = NameWidth;
  const int top = Top();
  const int bottom = top + RowHeight() * static_cast<int>(Plan.Relays.size());
  painter.fillRect(QRect(left, top, width() - left - Margin, bottom - top),
                   palette().color(QPalette::Base));
  PaintScale(painter, bottom);
  for (std::size_t i = 0; i < Plan.Relays.size(); ++i) {
    const int y = top + RowHeight() * static_cast<int>(i);
    if (hasFocus() && static_cast<int>(i) == MarkRow) {
      QColor row = palette().color(QPalette::Highlight);
      row.setAlphaF(0.25F);
      painter.fillRect(QRect(0, y, width(), RowHeight()), row);
    }
    if (wanted.left() < left) {
      painter.setPen(palette().color(QPalette::WindowText));
      painter.drawText(QRect(0, y, left - Margin, RowHeight()), Qt::AlignVCenter | Qt::AlignRight,
                       Plan.Relays[i].Name);
    }
    for (const auto& stretch : Plan.Relays[i].On) {
      const double from = X(stretch.From);
      const double to = std::max(X(stretch.To), from + 1);
      if (to < wanted.left() || from > wanted.right()) continue;
      painter.fillRect(QRectF(from, y + 3, to - from, RowHeight() - 6), QColor(0xE8, 0xA2, 0x00));
    }
  }
  for (const auto& line : Plan.Lines) {
    painter.setPen(QPen(DayLineColor(line.Kind), 2));
    painter.drawLine(QPointF(X(line.At), top), QPointF(X(line.At), bottom));
  }
  const std::int64_t first = Plan.FirstDay * DayMs;
  if (Now >= first && Now < first + Plan.Days * DayMs) {
    painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
    painter.drawLine(QPointF(X(Now), top - 4), QPointF(X(Now), bottom));
  }
  if (!hasFocus()) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2, Qt::DotLine));
  painter.drawLine(QPointF(X(Mark), top), QPointF(X(Mark), bottom));
}

bool DayPicture::event(QEvent* event) {
  if (event->type() == QEvent::FontChange) MeasureNames();
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  if (!Plan.Relays.empty()) {
    QToolTip::showText(help->globalPos(), Words(RowAt(help->y()), WallAt(help->x())), this);
  }
  return true;
}

void DayPicture::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || event->position().x() < NameWidth) return;
  Mark = WallAt(event->position().x());
  MarkRow = RowAt(event->position().y());
  Choose(Mark);
}

void DayPicture::keyPressEvent(QKeyEvent* event) {
  constexpr std::int64_t step = 15 * MinuteMs;
  const std::int64_t move = event->modifiers() & Qt::ControlModifier ? HourMs : step;
  switch (event->key()) {
    case Qt::Key_Left:
      Mark -= move;
      break;
    case Qt::Key_Right:
      Mark += move;
      break;
    case Qt::Key_Up:
      --MarkRow;
      break;
    case Qt::Key_Down:
      ++MarkRow;
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Choose(Mark);
      return;
    default:
      QLabel::keyPressEvent(event);
      return;
  }
  const std::int64_t first = Plan.FirstDay * DayMs;
  Mark = std::clamp(Mark, first, first + Plan.Days * DayMs - MinuteMs);
  MarkRow = std::clamp(MarkRow, 0, std::max(static_cast<int>(Plan.Relays.size()) - 1, 0));
  TellMark();
}

void DayPicture::focusInEvent(QFocusEvent* event) {
  QLabel::focusInEvent(event);
  TellMark();
}

void DayPicture::TellMark() {
  const QString words = Words(MarkRow, Mark);
  setAccessibleDescription(words);
  Tell(words);
  update();
}

}  // namespace simulator
