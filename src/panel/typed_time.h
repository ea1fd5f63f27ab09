#pragma once

#include <QString>
#include <optional>

/// Minutes since midnight of a time as people and spreadsheets write it: "7:00 AM", "7a", "615p",
/// "07:00".
std::optional<int> MinutesOfTyped(const QString& text);
