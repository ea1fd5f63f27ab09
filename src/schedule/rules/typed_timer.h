#pragma once

#include <QString>
#include <optional>

#include "panel/time_values.h"

/// When a timer runs as people write it: a time ("7:00a", "30 min before sunset", "sunset-30",
/// "ss-30", of a time that counts from an event also minutes alone), days ("Mon-Fri", "M-F",
/// "weekdays, not on holidays", "Dec 25"), or both, behind a number also without a blank ("7awd",
/// "5pd24"). What is not written stays as it is; nothing for other texts.
std::optional<TimerRun> ReadTypedTimer(const QString& typed, const TimerRun& over);
