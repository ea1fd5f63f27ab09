#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

#include "panel/fixed_array.h"
#include "shell/dialogs.h"

// The controls that screens are made of. They behave alike: setting a different value from code
// runs the handler just as a user's choice does, and a user who picks the value already shown runs
// it too. An index that a list does not hold leaves it with no selection and runs nothing; a value
// beyond a bar's range moves it to the nearer end and runs nothing. Setting a text always runs its
// change handler.

/// Colours with a meaning, red in the high byte.
namespace Colors {
constexpr QRgb White = 0xFFFFFF;
constexpr QRgb Grey = 0x808080;
constexpr QRgb LightGrey = 0xC0C0C0;
constexpr QRgb PaleGrey = 0xE0E0E0;
constexpr QRgb LightRed = 0xFF8080;
constexpr QRgb LightGreen = 0x80FF80;
constexpr QRgb Green = 0x00FF00;
constexpr QRgb Red = 0xFF0000;
constexpr QRgb Yellow = 0xFFFF00;
constexpr QRgb Blue = 0x0000FF;
}  // namespace Colors

/// A caption, or with a click handler a value cell: hover, focus ring, Space and Enter click it.
/// The tooltip tells a caption in full that is too long.
class Label : public QWidget {
  Q_OBJECT
 public:
  explicit Label(QWidget* parent = nullptr);

  QString Caption() const { return caption_; }
  void SetCaption(const QString& caption);

  /// Fills the label with the colour and writes in black or white, whichever reads better;
  /// without a value the label is plain again.
  void SetBackColor(std::optional<QRgb> color);
  std::optional<QRgb> BackColor() const { return backColor_; }

  /// Room for this many average characters at the least.
  void SetWidthInChars(int chars);
  /// Wishes for the width of its caption where there is more room than the least.
  void SetGrowsWithCaption() { growsWithCaption_ = true; }
  void SetAlignment(Qt::Alignment alignment) { alignment_ = alignment; }
  /// Where a caption that is too long loses its text; at its end unless told otherwise.
  void SetElideMode(Qt::TextElideMode mode) { elideMode_ = mode; }

  enum class Look { Plain, Quiet, Link };
  /// Quiet lines are grey; a link is a clickable text that is no cell.
  void SetLook(Look look);

  std::function<void()> Click;
  /// Button 1 left, 2 right, 4 middle; Shift 1 when Shift alone is held. A key that clicks tells of
  /// its Shift as the left button; without a click handler Shift+Space stands for Shift and the
  /// right button.
  std::function<void(int button, int shift)> MouseDown;

  /// Makes the label reachable by Tab although it has no click handler.
  void MakeFocusable();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QRect TextRoom() const;

  QString caption_;
  std::optional<QRgb> backColor_;
  Qt::Alignment alignment_ = Qt::AlignLeft | Qt::AlignVCenter;
  Qt::TextElideMode elideMode_ = Qt::ElideRight;
  int widthInChars_ = 0;
  bool growsWithCaption_ = false;
  Look look_ = Look::Plain;
};

/// A drop-down list.
class ComboBox : public QComboBox {
  Q_OBJECT
 public:
  explicit ComboBox(QWidget* parent = nullptr);

  int ListIndex() const { return currentIndex(); }
  void SetListIndex(int index);
  /// The text of an item, empty outside the list.
  QString List(int index) const { return itemText(index); }
  /// Replaces all items and leaves no selection; runs nothing.
  void SetItems(const QStringList& items);
  /// A fixed width for this many average characters, however long the items are.
  void SetWidthInChars(int chars);

  std::function<void()> Click;

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

class OptionButton : public QRadioButton {
  Q_OBJECT
 public:
  explicit OptionButton(const QString& text, QWidget* parent = nullptr);
  bool Value() const { return isChecked(); }
  /// Selects this option of its group.
  void Select();

  std::function<void()> Click;
};

class CheckBox : public QCheckBox {
  Q_OBJECT
 public:
  explicit CheckBox(const QString& text, QWidget* parent = nullptr);
  int Value() const { return isChecked() ? 1 : 0; }
  void SetValue(int value);

  std::function<void()> Click;
};

class TextBox : public QLineEdit {
  Q_OBJECT
 public:
  explicit TextBox(QWidget* parent = nullptr);
  QString Text() const { return text(); }
  void SetText(const QString& text);

  std::function<void()> Change;
  std::function<void()> Click;  ///< Enter acts as a click.
  /// Receives the code of a typed character (8 for backspace) and returns the code to use in its
  /// place; 0 refuses the key. A paste does not pass through it.
  std::function<char16_t(char16_t)> KeyPress;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
};

/// A horizontal bar; `Change` runs at every step of a drag.
class ScrollBar : public QScrollBar {
  Q_OBJECT
 public:
  explicit ScrollBar(QWidget* parent = nullptr);
  int Value() const { return value(); }
  void SetValue(int value);

  std::function<void()> Change;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

class Button : public QPushButton {
  Q_OBJECT
 public:
  explicit Button(const QString& text = {}, QWidget* parent = nullptr);
  QString Caption() const { return text(); }
  void SetCaption(const QString& caption) { setText(caption); }

  std::function<void()> Click;
};

/// A timer that is off until it is enabled.
class Timer : public QTimer {
  Q_OBJECT
 public:
  Timer(QObject* parent, const char* name, int intervalMs);
  bool Enabled() const { return isActive(); }
  void SetEnabled(bool enabled);

  std::function<void()> Tick;
};

/// Controls of one name told apart by an index. Element i has the object name "name(i)".
template <typename Control>
class ControlArray {
 public:
  Control& operator()(int index) const {
    if (index < 0 || index >= Count()) SubscriptOutOfRange(index, 0);
    return *controls_[static_cast<std::size_t>(index)];
  }
  int Count() const { return static_cast<int>(controls_.size()); }

  void Add(Control* control, const QString& name) {
    control->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(Count()));
    controls_.push_back(control);
  }

  /// Runs `(form->*method)(index)` on an event of any element, for example
  /// `OnEach(&Label::Click, this, &frmT3Setup::lblIOCount_Click)`.
  template <typename Event, typename Form, typename Result, typename... Arguments>
  void OnEach(Event event, Form* form, Result (Form::*method)(int, Arguments...)) const {
    for (int i = 0; i < Count(); ++i) {
      (*this)(i).*event = [form, method, i](Arguments... arguments) {
        return (form->*method)(i, arguments...);
      };
    }
  }

 private:
  std::vector<Control*> controls_;
};
