#pragma once

#include <QAbstractButton>

namespace simulator {

/// A button with a lamp: a relay, or a switch with its pilot. Below its caption stands a quiet
/// line, or a sign with a word, as in "disabled".
class LampButton : public QAbstractButton {
 public:
  enum class Kind { Lamp, NoLamp };
  explicit LampButton(const QString& text, Kind kind = Kind::Lamp);

  /// The lamp's state is told to screen readers in `words`, as in "on", with the sign.
  void SetLamp(bool lit, const QString& words);
  void SetNote(const QString& note);
  void SetSign(const QString& word);
  bool Lit() const { return IsLit; }
  const QString& Note() const { return TheNote; }
  const QString& Sign() const { return TheSign; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  QFont SmallFont() const;
  void Describe();
  void PaintSecondLine(QPainter& painter, const QRect& place) const;

  Kind Look;
  bool IsLit = false;
  QString Words;
  QString TheNote;
  QString TheSign;
};

/// A lit or dark lamp that fills a square.
void PaintLamp(QPainter& painter, const QRectF& square, const QPalette& palette, bool lit);

}  // namespace simulator
