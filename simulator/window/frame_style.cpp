#include "simulator/window/frame_style.h"

#include <QPainter>
#include <QStyleOption>

namespace simulator {

void FrameStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool round = element == PE_IndicatorRadioButton;
  if (!round && element != PE_IndicatorCheckBox) return;
  constexpr float strength = 0.6F;
  QColor line = option->palette.color(QPalette::WindowText);
  line.setAlphaF(strength);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing, round);
  painter->setPen(line);
  painter->setBrush(Qt::NoBrush);
  if (round) {
    painter->drawEllipse(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5));
  } else {
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
  }
  painter->restore();
}

}  // namespace simulator
