#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "panel/screens.h"

class ChildForm;

/// One line of the menu tree. A line followed by a deeper one is a submenu.
struct MenuEntry {
  int Level;            ///< 1 for the menu bar.
  const char* Caption;  ///< "-" for a separator.
  const char* Name;
  Screen Opens = Screen::None;  ///< What the leaf shows; without one the main window acts.
};

/// How a screen is made.
struct ScreenEntry {
  Screen Name;
  /// Null while the screen is not built, and for what is a dialog.
  ChildForm* (*Create)(Screen name) = nullptr;
};

/// What the main window is made of.
struct ProgramScreens {
  const std::vector<MenuEntry>& Menu;
  const std::vector<ScreenEntry>& Screens;  ///< By Screen.
  /// Lists on Document what differs from a project file.
  std::function<void(const QString& name)> CompareWithFile = {};
  /// What the check finds, in few words; looks at no more than has changed.
  std::function<QString()> CountFindings = {};
  // What keys and the count run while the menus are on.
  std::function<void()> ListFindings = {};
  std::function<void()> Find = {};                 ///< Ctrl+F.
  std::function<void()> ListTimers = {};           ///< Ctrl+T.
  std::function<void(int step)> StepFinding = {};  ///< F8 (1), Shift+F8 (-1).
};
