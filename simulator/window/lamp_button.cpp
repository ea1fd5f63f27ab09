#include "simulator/window/lamp_button.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace simulator {

void PaintLamp(QPainter& painter, const QRectF& square, const QPalette& palette, bool lit) {
  const QColor light(255, 190, 40);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  QColor edge = palette.color(QPalette::ButtonText);
  edge.setAlphaF(0.6F);
  painter.setPen(QPen(edge, 1.2));
  painter.setBrush(lit ? light : palette.color(QPalette::Button).darker(112));
  painter.drawEllipse(square.adjusted(1, 1, -1, -1));
  if (lit) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 240, 200));
    painter.drawEllipse(square.center(), square.width() / 5, square.width() / 5);
  }
  painter.restore();
}

LampButton::LampButton(const QString& text, Kind kind) : Look(kind) {
  setText(text);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void LampButton::SetLamp(bool lit, const QString& words) {
  if (words != Words) {
    Words = words;
    Describe();
  }
  if (lit == IsLit) return;
  IsLit = lit;
  update();
}

void LampButton::SetNote(const QString& note) {
  if (note == TheNote) return;
  TheNote = note;
  update();
}

void LampButton::SetSign(const QString& word) {
  if (word == TheSign) return;
  TheSign = word;
  Describe();
  update();
}

void LampButton::Describe() {
  setAccessibleDescription(TheSign.isEmpty() ? Words : Words + QLatin1String(", ") + TheSign);
}

void LampButton::focusOutEvent(QFocusEvent* event) {
  Describe();  // whoever explained it while it had the focus
  QAbstractButton::focusOutEvent(event);
}

QFont LampButton::SmallFont() const {
  QFont small = font();
  constexpr double part = 0.85;
  small.setPointSizeF(small.pointSizeF() * part);
  return small;
}

QSize LampButton::sizeHint() const {
  const int line = fontMetrics().height();
  const int lamp = Look == Kind::Lamp ? line : 0;
  return {fontMetrics().horizontalAdvance(text()) + lamp + 2 * line, line * 13 / 5};
}

void LampButton::PaintSecondLine(QPainter& painter, const QRect& place) const {
  painter.setFont(SmallFont());
  const QFontMetrics metrics = painter.fontMetrics();
  QRect rest = place;
  if (!TheSign.isEmpty()) {
    const int width = metrics.horizontalAdvance(TheSign) + metrics.height() / 2;
    const QRect badge(place.left(), place.top(), std::min(width, place.width()), place.height());
    const bool mild = TheSign == QLatin1String("not now") || TheSign == QLatin1String("closed");
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mild ? QColor(0x50, 0x60, 0x70) : QColor(0xB0, 0x30, 0x20));
    painter.drawRoundedRect(badge, 3, 3);
    painter.setPen(Qt::white);
    painter.drawText(badge, Qt::AlignCenter, TheSign);
    rest.setLeft(badge.right() + metrics.height() / 3);
  }
  QColor quiet = palette().color(QPalette::ButtonText);
  quiet.setAlphaF(0.75F);
  painter.setPen(quiet);
  painter.drawText(rest, Qt::AlignVCenter | Qt::AlignLeft,
                   metrics.elidedText(TheNote, Qt::ElideRight, rest.width()));
}

void LampButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  option.initFrom(this);
  option.state |= isDown() || isChecked() ? QStyle::State_Sunken : QStyle::State_Raised;
  painter.drawControl(QStyle::CE_PushButtonBevel, option);
  const int line = fontMetrics().height();
  const int margin = line / 2;
  int left = margin;
  if (Look == Kind::Lamp) {
    PaintLamp(painter, QRectF(margin, (height() - line) / 2.0, line, line), palette(), IsLit);
    left += line + margin;
  }
  const QRect words(left, line / 5, width() - left - margin / 2, line);
  painter.setPen(palette().color(QPalette::ButtonText));
  painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft,
                   fontMetrics().elidedText(text(), Qt::ElideRight, words.width()));
  PaintSecondLine(painter, words.translated(0, line + line / 10));
  if (!hasFocus()) return;
  QStyleOptionFocusRect focus;
  focus.initFrom(this);
  focus.rect = rect().adjusted(3, 3, -3, -3);
  painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

}  // namespace simulator
