#pragma once

#include <QPointer>
#include <QUndoStack>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "panel/difference.h"
#include "panel/patch.h"
#include "panel/stopwatch.h"

/// The way back: what the user has done to the project since it was opened, step by step. A step is
/// what differs in the project after an event has been handled, whatever screen or command it was.
class History : public QObject {
  Q_OBJECT
 public:
  /// What the history asks of the main window.
  struct Hooks {
    /// Why no step can be taken at present; empty when one can.
    std::function<QString()> Rests;
    /// The caption of the screen on show.
    std::function<QString()> ScreenCaption;
    /// Brings up where the first of the changes that can be shown is edited. Showing may store;
    /// the project is then to be put back, and the next place tried.
    std::function<void(const std::vector<Setting>& changes, const std::function<bool()>& stillSame)>
        Show;
  };

  History(QObject* parent, Hooks hooks);
  ~History() override { begun_ = false; }

  /// The project has been opened or made; there is nothing to go back to.
  void Begin();
  /// What the event just handled has changed is a step. Waits while a button of the mouse is held:
  /// a drag is one step.
  void Record();
  /// The drag may be over.
  void RecordAfterDrag() {
    if (dragged_) Record();
  }
  /// A screen or an item is about to be shown, or has been: what the program stores by that belongs
  /// to the step before.
  void BeginShowing();
  void EndShowing();
  /// Whether the user's last input came from the keyboard. Keys typed into one control that
  /// change the same settings are one step until it is left or two seconds pass.
  void SetTyping(bool typing) { typing_ = typing; }

  void Undo();
  void Redo();
  QUndoStack& Stack() { return stack_; }

 private:
  void RecordStep();
  void GoTo(int index);
  int TypingId(const std::vector<Setting>& changes);
  QString WordsOf(const std::vector<Setting>& changes) const;
  void Replace(Patch& change, Patch by);

  Hooks hooks_;
  std::vector<Patch> changes_;  ///< What each step changes.
  std::size_t held_ = 0;        ///< Bytes of all of them.
  int dropped_ = 0;             ///< First steps that hold nothing any more.
  int done_ = 0;                ///< Steps that `known_` has behind it.
  Project known_;               ///< As it was recorded last.
  std::string content_;         ///< Its bytes.
  bool begun_ = false;
  int paused_ = 0;  ///< Above zero nothing is a step.
  bool dragged_ = false;
  bool typing_ = false;
  QPointer<QWidget> typedInto_;  ///< Null where no typing can go on.
  std::vector<Setting> typed_;
  int typingId_ = 0;
  Stopwatch sinceTyped_;
  QUndoStack stack_;  ///< The steps' words, and how many of them are done.
};
