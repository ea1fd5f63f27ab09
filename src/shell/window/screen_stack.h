#pragma once

#include <QLabel>
#include <QStackedWidget>
#include <QToolButton>
#include <map>
#include <vector>

#include "shell/controls/child_form.h"
#include "shell/window/mark_line.h"
#include "shell/window/screen_entry.h"

class History;

/// The screens that are loaded. One of them is on show, below a line with its caption, the marks,
/// the way back, and the box that closes it.
class ScreenStack : public QWidget {
 public:
  /// The table must outlive it; the line takes in the marks.
  ScreenStack(const std::vector<ScreenEntry>& screens, MarkLine* marks, History& history);

  /// Loads the screen if need be, and brings it to the front unless it has brought up another
  /// meanwhile. Null for a screen that is not built.
  ChildForm* Show(Screen screen);
  /// Null unless it is loaded.
  ChildForm* Loaded(Screen screen) const;
  Screen Front() const { return front_; }
  /// The screen on show; null for none.
  ChildForm* FrontForm() const { return Loaded(front_); }
  QString FrontCaption() const { return lblTitle_->text(); }
  /// Hides those that stay loaded.
  void UnloadAll();
  void UnloadForGood();
  /// The session ends with the program: the screen in front puts back what it has switched.
  void PutPanelBack();
  /// Nothing is shown but About.
  void ShowAbout();
  void SetCloseEnabled(bool enabled) { cmdClose_->setEnabled(enabled); }
  /// From the grid of the screen on show to its other controls and back.
  void GoToOtherPart();
  /// No handler can be using the screens that were unloaded any more.
  void DeleteRetired();

 private:
  struct LoadedScreen {
    ChildForm* Form;
    QWidget* Page;
  };

  void Unload(Screen screen);
  void BringToFront(const LoadedScreen& screen);

  const std::vector<ScreenEntry>& screens_;
  std::map<Screen, LoadedScreen> loaded_;
  Screen front_ = Screen::None;
  std::vector<QWidget*> retired_;  ///< Unloaded screens that a waiting handler may still be using.
  QStackedWidget* pages_;
  QWidget* captionLine_;
  QLabel* lblTitle_;
  MarkLine* lblMark_;
  QToolButton* cmdClose_;
};
