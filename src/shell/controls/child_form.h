#pragma once

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "panel/items.h"
#include "panel/screens.h"
#include "shell/controls/controls.h"

/// The row of a screen in the table of the screens of its kind; the table has one with that name.
template <typename Table>
const auto& ScreenRow(const Table& table, Screen name) {
  return *std::find_if(std::begin(table), std::end(table),
                       [name](const auto& row) { return row.Name == name; });
}

/// A screen of the main window. A derived class carries the screen's own name; it builds its
/// controls in Form_Load and fills them from the project in Form_Activate. Controls write straight
/// into it: there is no OK, no Cancel and no copy.
class ChildForm : public QWidget {
  Q_OBJECT
 public:
  ChildForm(Screen name, const QString& caption);

  Screen Which() const { return name_; }
  QString Caption() const { return caption_; }

  /// Runs once, before the screen is first shown.
  virtual void Form_Load() {}
  /// Runs whenever the screen comes to the front.
  virtual void Form_Activate() {}
  /// A click on the empty background.
  virtual void Form_Click() { CloseLists(); }
  /// Runs when the screen is closed for good.
  virtual void Form_Unload() {}
  /// Runs instead of Form_Unload on a screen that stays loaded when it leaves the front.
  virtual void Form_Hide() {}
  virtual bool StaysLoaded() const { return false; }
  /// Runs before the program ends a session: what the screen switched for a while goes back.
  virtual void PutPanelBack() {}
  /// The control that has the focus when the screen comes to the front, by which a key pressed too
  /// often changes nothing: the first in the order of Tab, of a group the chosen option, of a grid
  /// the first value. Null where none takes it.
  virtual QWidget* FirstFocus();
  /// Whether the screen shows what is edited on another, too; then it is brought to its row.
  virtual bool ShowsToo(const Item& /*of*/) { return false; }
  /// Fills the screen from the project again, with the item on show still chosen.
  void ShowAnew();
  /// Chooses the item before (-1) or after (1) the one on show, in the innermost selector on show.
  void StepItem(int step);
  /// The least: what is between it and the height that the controls wish for is no cause to scroll.
  int heightForWidth(int width) const override;

 protected:
  /// Closes whatever list is open over a cell.
  void CloseLists();
  /// A row of controls at the present end of the screen; they stand at its left.
  QHBoxLayout* AddRow();
  /// A titled frame at the present end of the screen; the caller gives it a layout.
  QGroupBox* AddFrame(const char* name, const QString& title);
  void AddWidget(QWidget* widget);
  /// Gives the spare height of a tall screen to its controls instead of leaving it free below.
  void UseSpareHeight();
  /// What a user cannot guess, in one quiet line at the foot of the screen.
  void AddHint(const QString& text, QBoxLayout* to = nullptr);

  /// A control with its object name, in `layout` when one is given.
  template <typename Control, typename... Arguments>
  Control* Add(QBoxLayout* layout, const char* name, Arguments&&... arguments) {
    auto* control = new Control(std::forward<Arguments>(arguments)...);
    control->setObjectName(QString::fromLatin1(name));
    if (layout) layout->addWidget(control);
    return control;
  }
  Label* AddLabel(QBoxLayout* layout, const char* name, const QString& caption);
  /// A drop-down list behind its caption. The caption's name is the list's with "lbl" for "cbo";
  /// lists below each other line up when they are given the same width of the caption.
  ComboBox* AddList(QBoxLayout* layout, const char* name, const QString& caption,
                    int captionChars = 0);

  /// A list that chooses the item on show. Of several, the later are within the earlier.
  void AddSelector(ComboBox* list);
  /// The innermost selector on show; null where there is none.
  virtual QWidget* Selector() const;
  /// Chooses the item before or after the one on show as a user does, if there is one.
  virtual void ChooseBeside(int step);
  /// Where the focus goes when the item chosen has no grid.
  virtual QWidget* FocusWithoutGrid(QWidget* selector) { return selector; }

  void mousePressEvent(QMouseEvent* event) override;

 private:
  QVBoxLayout* body_;
  Screen name_;
  QString caption_;
  std::vector<ComboBox*> selectors_;
};

/// The control itself, or where it stands for several the one at which Tab stops: the chosen option
/// of its group, the first value of its grid.
QWidget* StopAt(QWidget* control);
