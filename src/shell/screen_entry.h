#pragma once

#include <functional>
#include <vector>

class ChildForm;

/// One line of the menu tree. A line followed by a deeper one is a submenu.
struct MenuEntry {
  int Level;            ///< 1 for the menu bar.
  const char* Caption;  ///< "-" for a separator.
  const char* Name;
  const char* Form =
      nullptr;  ///< The screen that the leaf opens; without one the main window acts.
};

/// A screen by name, in the order in which UnloadAllForms closes them.
struct ScreenEntry {
  const char* Name;
  /// Makes the screen of that name; null while the screen is not built.
  ChildForm* (*Create)(const char* name) = nullptr;
};

/// What the main window is made of.
struct ProgramScreens {
  const std::vector<MenuEntry>& Menu;
  const std::vector<ScreenEntry>& Screens;
  std::function<void()> Find = {};  ///< What Ctrl+F runs while the menus are on.
};
