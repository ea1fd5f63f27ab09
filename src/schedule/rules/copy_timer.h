#pragma once

#include <QString>

#include "panel/project.h"

/// Why a timer cannot take over what another one is; empty where it can.
QString WhyNotCopied(const Project& project, int from, int to);

/// Gives a timer the time and the days of another, and has it switch the same relays, groups,
/// presets and dimmers. Its name stays.
void CopyTimer(Project& project, int from, int to);
