#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "panel/project.h"
#include "panel/screens.h"

class ChildForm;
struct KeptWork;
class QWidget;

// What screens ask of the main window. All of these do nothing while there is none.

/// The main window itself, for dialogs to stand over; null while there is none.
QWidget* MainWindow();

/// Brings a screen to the front, created on first use. Screen::None shows nothing and gives null.
ChildForm* ShowForm(Screen screen);

/// Closes every screen; one that stays loaded is hidden.
void UnloadAllForms();

/// Rewrites both panels: the file's name and whether a panel is connected.
void UpdateStatusBar();

/// The text of panel 2 alone, for example "Error - Retry: 1".
void SetLinkStatus(const QString& text);

/// A word on what has just been done, or was not, beside the caption of the screen on show.
void TellNews(const QString& news);

/// The like, of what was refused or lost; it stays until the next key or press.
void TellRefusal(const QString& refusal);

/// Paints what has changed in the main window before a wait that delivers no events.
void PaintNow();

/// Switches the six top menu entries and the close box of the screen on show.
void DisableMainMenus();
void EnableMainMenus();

/// Brings the recovery copy up to date before a wait that delivers no events.
void KeepUnsavedWork();

/// The project in memory is the user's to lose: its recovery copy goes.
void ForgetUnsavedWork();

/// The project as it was saved, opened or new.
std::unique_ptr<Project> SavedProject();

/// Opens a project by its path, under the rules of Open.
void OpenProject(const QString& name);

/// Takes up the unsaved work of a program that has ended, under the rules of Open.
void OpenKeptWork(const KeptWork& work);

/// Whether the program is being torn down; from then on nobody asks or tells the user anything.
bool ProgramEnding();

/// While one of these lives, a screen or an item is brought up: what the program stores by that is
/// no step of the user's.
class Showing {
 public:
  Showing();
  ~Showing();
  Showing(const Showing&) = delete;
  Showing& operator=(const Showing&) = delete;
};

/// The main window's pointer is an hourglass while one of these lives.
class Hourglass {
 public:
  Hourglass();
  ~Hourglass();
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;
};

/// What the main window asks of the link. Empty until the connection screen is loaded.
struct LinkHooks {
  std::function<void()> DisconnectQZ;
  std::function<void(bool)> ShowNetworkDiagnostics;
  /// Whether the window must not close at this moment; the link closes it at the next one.
  std::function<bool()> PutsOffClose;
  /// Asks before a panel is left half new; false when the window is to stay.
  std::function<bool()> MayLeave;
};
extern LinkHooks Link;

/// A line of the order of work: how far the project is, and what goes on with it.
struct WorkStep {
  QString Text;
  std::function<void()> Open;
};
/// Of the project in memory. Empty until a program has screens.
extern std::function<std::vector<WorkStep>()> ListWorkSteps;
