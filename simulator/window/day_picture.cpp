#include "simulator/window/day_picture.h"

#include <QDateTime>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

namespace simulator {

namespace {

constexpr int Margin = 6;
constexpr int HourStep = 2;

QString TimeText(std::int64_t wall, const char* form = "HH:mm") {
  return DateTimeOf(wall).toString(QString::fromLatin1(form));
}

}  // namespace

QColor DayLineColor(int kind) {
  static const std::array colors{QColor(0xE0, 0x60, 0x20), QColor(0x9A, 0x50, 0xC8),
                                 QColor(0x20, 0x9A, 0x48), QColor(0x30, 0x78, 0xE0)};
  return colors.at(static_cast<std::size_t>(kind));
}

std::vector<std::pair<std::int64_t, std::int64_t>> DifferenceOf(const DayPlan::Stretches& a,
                                                                const DayPlan::Stretches& b) {
  std::vector<std::int64_t> edges;
  for (const auto* row : {&a, &b}) {
    for (const auto& stretch : *row) edges.insert(edges.end(), {stretch.From, stretch.To});
  }
  std::sort(edges.begin(), edges.end());
  const auto stateAt = [](const DayPlan::Stretches& row, std::int64_t wall) {
    for (const auto& stretch : row) {
      if (wall >= stretch.From && wall < stretch.To)
        return stretch.Level + (stretch.Blinks ? 1 : 0);
    }
    return 0;
  };
  std::vector<std::pair<std::int64_t, std::int64_t>> different;
  for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
    if (edges[i] == edges[i + 1] || stateAt(a, edges[i]) == stateAt(b, edges[i])) continue;
    if (!different.empty() && different.back().second == edges[i]) {
      different.back().second = edges[i + 1];
    } else {
      different.emplace_back(edges[i], edges[i + 1]);
    }
  }
  return different;
}

DayPicture::DayPicture() {
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(QStringLiteral("When lamps are on"));
  setObjectName(QStringLiteral("picture"));
}

void DayPicture::Show(const DayPlan& plan) {
  const bool sameSize = plan.Items.size() == Plan.Items.size();
  if (plan.FirstDay != Plan.FirstDay || plan.Days != Plan.Days) {
    constexpr std::int64_t noon = DayMs / 2;
    Mark = plan.FirstDay * DayMs + noon;
  }
  Plan = plan;
  MarkRow = std::clamp(MarkRow, 0, std::max(static_cast<int>(Plan.Items.size()) - 1, 0));
  MeasureNames();
  if (!sameSize) updateGeometry();
  update();
}

void DayPicture::ShowNow(std::int64_t wall) {
  const int before = static_cast<int>(X(Now));
  const int after = static_cast<int>(X(wall));
  Now = wall;
  // What it tells of a moment is of no use long after.
  if (std::abs(Now - ToldAt) >= HourMs) Tell(this, {}, {});
  constexpr int lineWidth = 4;
  if (after == before) return;
  for (const int x : {before, after}) update(x - lineWidth / 2, 0, lineWidth, height());
}

QSize DayPicture::sizeHint() const {
  constexpr int leastHourChars = 2;
  const int hours = 24 * leastHourChars * fontMetrics().horizontalAdvance(QLatin1Char('0'));
  return {NameWidth + hours, Top() + RowHeight() * static_cast<int>(Plan.Items.size()) + Margin};
}

void DayPicture::MeasureNames() {
  int width = 0;
  for (const auto& row : Plan.Items) {
    width = std::max(width, fontMetrics().horizontalAdvance(row.Name));
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
  return std::clamp(row, 0, static_cast<int>(Plan.Items.size()) - 1);
}

/// What an item does at a moment, since when and until when, and why.
QString DayPicture::StateAt(const DayPlan::Stretches& stretches, std::int64_t wall) const {
  const char* form = Plan.Days > 1 ? "ddd HH:mm" : "HH:mm";
  const auto state = [](const DayPlan::Stretch& stretch) {
    if (stretch.Blinks) return QStringLiteral("blinks");
    return stretch.Level == FullLevel ? QStringLiteral("on")
                                      : QStringLiteral("level %1").arg(stretch.Level);
  };
  const DayPlan::Stretch* before = nullptr;
  const DayPlan::Stretch* next = nullptr;
  for (const auto& stretch : stretches) {
    if (wall < stretch.From) {
      next = &stretch;
      break;
    }
    before = &stretch;
  }
  const auto then = [&](const DayPlan::Stretch* what) {
    if (!what || what->Began.isEmpty()) return QString();
    return QStringLiteral(", %1 %2%3").arg(state(*what), TimeText(what->From, form), what->Began);
  };
  if (before && wall < before->To) {
    QString text = state(*before);
    if (!before->Began.isEmpty()) {
      const QString since = before->Since.isEmpty() ? TimeText(before->From, form) : before->Since;
      text += QStringLiteral(" since %1%2").arg(since, before->Began);
    }
    if (next && next->From == before->To) return text + then(next);
    if (before->Ended.isEmpty()) return text;
    return text + QStringLiteral(", off %1%2").arg(TimeText(before->To, form), before->Ended);
  }
  QString text = QStringLiteral("off");
  if (before && !before->Ended.isEmpty()) {
    text += QStringLiteral(" since %1%2").arg(TimeText(before->To, form), before->Ended);
  }
  return text + then(next);
}

QString DayPicture::Words(int row, std::int64_t wall) const {
  const std::int64_t passed = wall - Plan.FirstDay * DayMs;
  if (passed < 0 || passed >= Plan.Days * DayMs || row >= static_cast<int>(Plan.Items.size())) {
    return {};
  }
  const DayPlan::ItemRow& item = Plan.Items[static_cast<std::size_t>(row)];
  const char* form = Plan.Days > 1 ? "ddd HH:mm" : "HH:mm";
  const auto listed = [form](const DayPlan::Stretches& all) {
    QStringList stretches;
    std::int64_t from = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (i == 0 || all[i].From != all[i - 1].To) from = all[i].From;
      if (i + 1 < all.size() && all[i + 1].From == all[i].To) continue;
      stretches << TimeText(from, form) + QStringLiteral(" to ") + TimeText(all[i].To, form);
    }
    return stretches.isEmpty()
               ? QStringLiteral("Never on.")
               : QStringLiteral("On ") + stretches.join(QStringLiteral(", ")) + QLatin1Char('.');
  };
  QString text = QStringLiteral("%1 at %2: %3. %4")
                     .arg(item.Name, TimeText(wall, form), StateAt(item.On, wall), listed(item.On));
  if (Plan.OtherName.isEmpty()) return text;
  return text + QStringLiteral(" %1: %2. %3%4")
                    .arg(Plan.OtherName, StateAt(item.Other, wall), listed(item.Other),
                         item.Differs.empty() ? QStringLiteral(" The same.")
                                              : QStringLiteral(" They differ."));
}

void DayPicture::PaintGrid(QPainter& painter, int bottom) const {
  QColor quiet = palette().color(QPalette::WindowText);
  quiet.setAlphaF(0.25F);
  painter.setPen(quiet);
  const int step = Plan.Days > 1 ? 12 : HourStep;
  for (int hour = 0; hour <= 24 * Plan.Days; hour += step) {
    const double x = X(Plan.FirstDay * DayMs + hour * HourMs);
    painter.drawLine(QPointF(x, Top()), QPointF(x, bottom));
  }
}

/// Above the rows, also where some of them are scrolled away.
void DayPicture::PaintScale(QPainter& painter) const {
  const int head = std::max(-y(), 0);
  const int height = Top() - 4;
  if (head > 0) painter.fillRect(0, head, width(), height, palette().color(QPalette::Window));
  painter.setPen(palette().color(QPalette::WindowText));
  const auto label = [&](std::int64_t wall, const QString& text) {
    const int wide = painter.fontMetrics().horizontalAdvance(text) + 2;
    const double left = std::min(X(wall) - wide / 2.0, double{1} * (width() - wide));
    painter.drawText(QRectF(left, head, wide, height), Qt::AlignCenter, text);
  };
  const std::int64_t first = Plan.FirstDay * DayMs;
  if (Plan.Days == 1) {
    for (int hour = 0; hour <= 24; hour += HourStep) {
      label(first + hour * HourMs, QString::number(hour));
    }
    return;
  }
  const int widest = painter.fontMetrics().horizontalAdvance(QStringLiteral("Wed 00-00  "));
  const bool narrow = widest * Plan.Days > width() - NameWidth - Margin;
  for (int day = 0; day < Plan.Days; ++day) {
    const std::int64_t noon = first + day * DayMs + DayMs / 2;
    label(noon, TimeText(noon, narrow ? "ddd d" : "ddd MM-dd"));
  }
}

void DayPicture::PaintStretches(QPainter& painter, const DayPlan::Stretches& stretches, int row,
                                const QRect& lane, const QRect& wanted) const {
  const bool relay = row < Items;
  const QColor on(0xE8, 0xA2, 0x00);
  const QColor level(0x3A, 0x8F, 0xB7);
  const QColor pilot(0x4A, 0x9A, 0x4A);
  const QColor color = relay ? on : row < Items + DimmerOutputs ? level : pilot;
  for (const auto& stretch : stretches) {
    const double from = X(stretch.From);
    const double to = std::max(X(stretch.To), from + 1);
    if (to < wanted.left() || from > wanted.right()) continue;
    const double height = lane.height() * double{1} * stretch.Level / FullLevel;
    const QRectF bar(from, lane.bottom() + 1 - height, to - from, height);
    if (!stretch.Blinks) {
      painter.fillRect(bar, color);
      continue;
    }
    painter.fillRect(bar, QBrush(QColor(0xD0, 0x40, 0x10), Qt::Dense4Pattern));
    painter.setPen(QColor(0xD0, 0x40, 0x10));
    painter.drawRect(bar.adjusted(0, 0, -1, -1));
  }
}

void DayPicture::PaintRow(QPainter& painter, const DayPlan::ItemRow& row, int top,
                          const QRect& wanted) const {
  const bool compared = !Plan.OtherName.isEmpty();
  const int whole = RowHeight() - 6;
  const QRect lane(0, top + 3, width(), compared ? whole / 2 - 1 : whole);
  PaintStretches(painter, row.On, row.Row, lane, wanted);
  if (!compared) return;
  painter.setOpacity(0.55);
  PaintStretches(painter, row.Other, row.Row, lane.translated(0, whole / 2 + 2), wanted);
  painter.setOpacity(1);
  for (const auto& [from, to] : row.Differs) {
    const double left = X(from);
    painter.fillRect(QRectF(left, lane.bottom() + 1, std::max(X(to) - left, 2.0), 3),
                     QColor(0xD0, 0x10, 0x60));
  }
}

void DayPicture::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const QRect wanted = event->rect();  // a strip, when only the present has moved
  const int left = NameWidth;
  const int top = Top();
  const int bottom = top + RowHeight() * static_cast<int>(Plan.Items.size());
  painter.fillRect(QRect(left, top, width() - left - Margin, bottom - top),
                   palette().color(QPalette::Base));
  PaintGrid(painter, bottom);
  for (std::size_t i = 0; i < Plan.Items.size(); ++i) {
    const int y = top + RowHeight() * static_cast<int>(i);
    if (hasFocus() && static_cast<int>(i) == MarkRow) {
      QColor row = palette().color(QPalette::Highlight);
      row.setAlphaF(0.25F);
      painter.fillRect(QRect(0, y, width(), RowHeight()), row);
    }
    if (wanted.left() < left) {
      painter.setPen(palette().color(QPalette::WindowText));
      painter.drawText(QRect(0, y, left - Margin, RowHeight()), Qt::AlignVCenter | Qt::AlignRight,
                       Plan.Items[i].Name);
    }
    PaintRow(painter, Plan.Items[i], y, wanted);
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
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2, Qt::DotLine));
    painter.drawLine(QPointF(X(Mark), top), QPointF(X(Mark), bottom));
  }
  PaintScale(painter);
}

void DayPicture::moveEvent(QMoveEvent* event) {
  QLabel::moveEvent(event);
  update();
}

bool DayPicture::event(QEvent* event) {
  if (event->type() == QEvent::FontChange) MeasureNames();
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  if (!Plan.Items.empty()) {
    const auto words = [this, row = RowAt(help->y()), wall = WallAt(help->x())] {
      return Words(row, wall);
    };
    ToldAt = Now;
    Tell(this, words, help->globalPos());
  }
  return true;
}

void DayPicture::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || event->position().x() < NameWidth) return;
  Mark = WallAt(event->position().x());
  MarkRow = RowAt(event->position().y());
  Choose(Mark);
  TellMark();
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
      TellMark();
      return;
    default:
      QLabel::keyPressEvent(event);
      return;
  }
  const std::int64_t first = Plan.FirstDay * DayMs;
  Mark = std::clamp(Mark, first, first + Plan.Days * DayMs - MinuteMs);
  MarkRow = std::clamp(MarkRow, 0, std::max(static_cast<int>(Plan.Items.size()) - 1, 0));
  TellMark();
}

void DayPicture::focusInEvent(QFocusEvent* event) {
  QLabel::focusInEvent(event);
  TellMark();
}

void DayPicture::TellMark() {
  ToldAt = Now;
  setAccessibleDescription(Words(MarkRow, Mark));
  Tell(this, [this] { return Words(MarkRow, Mark); }, {});
  update();
}

}  // namespace simulator
