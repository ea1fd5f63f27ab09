#pragma once

#include <QAbstractButton>

namespace simulator {

/// A button with a lamp: a relay, or a switch with its pilot.
class LampButton : public QAbstractButton {
 public:
  explicit LampButton(const QString& text);

  /// The lamp's state is told to screen readers in `words`, as in "on".
  void SetLamp(bool lit, const QString& words);
  bool Lit() const { return IsLit; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool IsLit = false;
};

/// A lit or dark lamp that fills a square.
void PaintLamp(QPainter& painter, const QRectF& square, const QPalette& palette, bool lit);

}  // namespace simulator
