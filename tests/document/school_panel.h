#pragma once

/// Changes a new panel to that of a school: 40 relays in 12 groups, 20 inputs, 5 stations and a
/// photocell, 15 timers, 6 presets, 4 dimmer outputs, holidays.
void LoadSchool();
