#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

#include "panel/fixed_array.h"
#include "panel/stopwatch.h"
#include "shell/controls/dialogs.h"
#include "shell/controls/label.h"

// The controls that screens are made of. They behave alike: setting a different value from code
// runs the handler just as a user's choice does, and a user who picks the value already shown runs
// it too. An index that a list does not hold leaves it with no selection and runs nothing; a value
// beyond a bar's range moves it to the nearer end and runs nothing. Setting a text always runs its
// change handler.

/// Leaves a control's place empty while it is hidden, so that nothing moves.
void KeepRoomWhileHidden(QWidget& control);

/// Has an area show what takes the focus in it by keys.
void ScrollToFocus(QScrollArea& area);

/// A search in a list by the letters typed. While it runs a blank belongs to it.
class LetterSearch {
 public:
  /// Whether the key is a letter of a search; one of these begins or goes on with it.
  bool Takes(const QKeyEvent& key);

 private:
  std::optional<Stopwatch> sinceLetter_;
};

/// A drop-down list.
class ComboBox : public QComboBox {
  Q_OBJECT
 public:
  explicit ComboBox(QWidget* parent = nullptr);

  int ListIndex() const { return currentIndex(); }
  void SetListIndex(int index);
  /// Chooses an item as a user does.
  void Choose(int index);
  /// The text of an item, empty outside the list.
  QString List(int index) const { return itemText(index); }
  /// Replaces all items and leaves no selection; runs nothing.
  void SetItems(const QStringList& items);
  /// A fixed width for this many average characters, however long the items are.
  void SetWidthInChars(int chars);

  std::function<void()> Click;
  /// A choice brings up another item and is no edit.
  bool ChoosesItem = false;

  void showPopup() override;
  /// The same, which the toolkit would measure item by item once more.
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void RunClick();

  LetterSearch search_;
};

class OptionButton : public QRadioButton {
  Q_OBJECT
 public:
  explicit OptionButton(const QString& text, QWidget* parent = nullptr);
  bool Value() const { return isChecked(); }
  /// Selects this option of its group.
  void Select();
  /// The option of its group that is chosen, or this while there is none that takes the focus.
  OptionButton* Chosen();
  /// Shows a value without running the handler.
  void ShowValue(bool value);

  std::function<void()> Click;

 protected:
  void focusInEvent(QFocusEvent* event) override;
};

class CheckBox : public QCheckBox {
  Q_OBJECT
 public:
  explicit CheckBox(const QString& text, QWidget* parent = nullptr);
  int Value() const { return isChecked() ? 1 : 0; }
  void SetValue(int value);
  /// Shows a value without running the handler.
  void ShowValue(bool value);

  std::function<void()> Click;
};

/// A single line. Whatever brings a text in (a paste, a drop, a key), it ends at its first line end
/// and loses its other control characters; a text set from code stays as it is.
class TextBox : public QLineEdit {
  Q_OBJECT
 public:
  explicit TextBox(QWidget* parent = nullptr);
  QString Text() const { return text(); }
  void SetText(const QString& text);
  /// Shows a value that nobody types, with a tooltip that tells all of it. What stands there
  /// already is left alone.
  void ShowValue(const QString& value);
  /// Types the text in place of the one that stands there.
  void TypeOver(const QString& text);

  std::function<void()> Change;
  std::function<void()> Click;  ///< Enter acts as a click.
  /// What is typed goes into no project: the box takes it back itself.
  bool UndoesItself = false;
  /// Receives the code of a typed character (8 for backspace) and returns the code to use in its
  /// place; 0 refuses the key. A paste does not pass through it. Input methods type too.
  std::function<char16_t(char16_t)> KeyPress;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void Type(const QString& text);
  void CleanEdit();

  QString before_;            ///< The text before the edit that is under way.
  bool clickedInto_ = false;  ///< By the press that is under way.
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
