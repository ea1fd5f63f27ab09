#pragma once

#include <QWidget>
#include <functional>

#include "dimmer/rules/response_curve.h"
#include "shell/controls/accessible_controls.h"

/// The graph of a response curve. It paints the curve and tells of the pointer and the keys in the
/// curve's units; what they do is its owner's.
class CurveWidget : public DescribedWidget {
  Q_OBJECT
 public:
  /// `curve` and `selectedGrip` must outlive the widget, which is to be updated when they change.
  CurveWidget(const ResponseCurve& curve, const Int16& selectedGrip);

  /// Button 1 left, 2 right, 0 none; Shift 1, Control 2, Alt 4.
  using PointerEvent = std::function<void(int button, int shift, double x, double y)>;
  PointerEvent MouseDown;
  PointerEvent MouseMove;
  PointerEvent MouseUp;
  /// The pointer has left the graph with no button held.
  std::function<void()> MouseLeave;
  /// Codes 37 to 40 are the arrow keys Left, Up, Right and Down, a letter is its capital.
  std::function<void(int keyCode, int shift)> KeyDown;

  QSize sizeHint() const override { return {263, 200}; }
  QSize minimumSizeHint() const override { return {132, 100}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPointF ToPixels(double x, double y) const;
  /// A grip as it is drawn.
  struct Point {
    Int16 Grip;
    QRectF Square;
    QRectF Letter;
  };
  std::vector<Point> Points() const;
  QFont LetterFont() const;
  QRectF GripSquare(const ResponseCurve::Grip& grip) const;
  QPointF Aimed(QPointF pixel, QPointF units) const;
  void Tell(const PointerEvent& handler, const QMouseEvent& event, bool aims) const;
  void PaintGrid(QPainter& painter) const;
  void PaintLines(QPainter& painter) const;
  void PaintGrips(QPainter& painter) const;

  const ResponseCurve& curve_;
  const Int16& selectedGrip_;
};
