#include "simulator/window/frame_style.h"

#include <QPainter>
#include <QStyleOption>

namespace simulator {

void FrameStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  constexpr int dark = 128;
  const bool round = element == PE_IndicatorRadioButton;
  const bool raised = element == PE_PanelButtonCommand && !(option->state & State_HasFocus) &&
                      option->palette.color(QPalette::Window).lightness() < dark;
  if (!round && !raised && element != PE_IndicatorCheckBox) return;
  constexpr float strength = 0.6F;
  const double corner = raised ? 2 : 0;
  const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
  QColor line = option->palette.color(QPalette::WindowText);
  line.setAlphaF(strength);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(line);
  painter->setBrush(Qt::NoBrush);
  round ? painter->drawEllipse(frame) : painter->drawRoundedRect(frame, corner, corner);
  painter->restore();
}

}  // namespace simulator
