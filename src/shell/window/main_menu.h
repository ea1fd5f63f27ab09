#pragma once

#include <functional>
#include <map>
#include <string>

#include "shell/window/screen_entry.h"

class QMenuBar;

/// What the leaves run that show no screen, by their names.
using MenuCommands = std::map<std::string, std::function<void()>>;

/// Fills the menu bar from the program's table. A leaf whose screen is not built is off.
void BuildMenu(QMenuBar& bar, const ProgramScreens& program, const MenuCommands& commands);
