#pragma once

#include <QProxyStyle>

namespace simulator {

/// The desktop's style, whose check boxes and option buttons, and in dark colours push buttons,
/// have a frame that is seen: that of the style in use is nearly the colour of a dark window.
class FrameStyle : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace simulator
