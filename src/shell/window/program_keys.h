#pragma once

#include <QObject>

class History;
class MarkLine;
class ScreenStack;

/// The keys that mean the same wherever the focus is. F1 is the guide's, in dialogs and open lists
/// too; Ctrl+Page Up and Down are the screen's; undo and redo are the program's, except in a text
/// that the project does not hold.
class ProgramKeys : public QObject {
 public:
  /// An event filter of the whole program. All three must outlive it.
  ProgramKeys(QObject* parent, ScreenStack& screens, MarkLine& marks, History& history)
      : QObject(parent), screens_(screens), marks_(marks), history_(history) {}

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool StepItem(const QObject* pressedOn, int step);
  QString PageOfFocus() const;
  bool StepHistory(QObject* pressedOn, bool back);

  ScreenStack& screens_;
  MarkLine& marks_;
  History& history_;
};
