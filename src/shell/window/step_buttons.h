#pragma once

#include <functional>
#include <vector>

#include "panel/setting.h"

class History;
class QHBoxLayout;
class ScreenStack;

// The way back on the screen: its buttons and its list, and what a step brings up.

/// Undo, redo and the list of steps. The history must outlive the line.
void AddStepButtons(QHBoxLayout& line, History& history);

/// Brings up where the first of the changes that can be shown is edited, if showing it changes
/// nothing; else where the type is chosen that cuts it; else no screen but About. Where `stillSame`
/// is false it has put the project back.
void ShowChange(ScreenStack& screens, const std::vector<Setting>& changes,
                const std::function<bool()>& stillSame);
