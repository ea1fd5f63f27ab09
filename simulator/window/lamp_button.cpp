#include "simulator/window/lamp_button.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

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

LampButton::LampButton(const QString& text) {
  setText(text);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void LampButton::SetLamp(bool lit, const QString& words) {
  if (accessibleDescription() != words) setAccessibleDescription(words);
  if (lit == IsLit) return;
  IsLit = lit;
  update();
}

QSize LampButton::sizeHint() const {
  const int line = fontMetrics().height();
  return {fontMetrics().horizontalAdvance(text()) + 3 * line, line * 9 / 5};
}

void LampButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  option.initFrom(this);
  option.state |= isDown() || isChecked() ? QStyle::State_Sunken : QStyle::State_Raised;
  painter.drawControl(QStyle::CE_PushButtonBevel, option);
  const int lamp = fontMetrics().height();
  const int margin = lamp / 2;
  PaintLamp(painter, QRectF(margin, (height() - lamp) / 2.0, lamp, lamp), palette(), IsLit);
  const QRect words = rect().adjusted(lamp + 2 * margin, 0, -margin / 2, 0);
  painter.setPen(palette().color(QPalette::ButtonText));
  painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft,
                   fontMetrics().elidedText(text(), Qt::ElideRight, words.width()));
  if (!hasFocus()) return;
  QStyleOptionFocusRect focus;
  focus.initFrom(this);
  focus.rect = rect().adjusted(3, 3, -3, -3);
  painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

}  // namespace simulator
