#pragma once

#include "shell/window/screen_entry.h"

// The only place that knows every screen.

const std::vector<MenuEntry>& MenuTable();
const std::vector<ScreenEntry>& ScreenTable();

/// Both, for the main window; gives the line the window and the connection screen the check, too.
ProgramScreens AllScreens();
