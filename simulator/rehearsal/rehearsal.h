#pragma once

#include <QString>
#include <functional>
#include <string_view>
#include <vector>

#include "simulator/rehearsal/plan.h"

namespace simulator {

/// Lines as in "2026-03-02 08:10 tap 3", sorted by time. Empty ones and those that begin with # are
/// passed over. Throws std::invalid_argument with the number of the line.
std::vector<ScriptedAct> ParseScript(const QString& text);

/// The same from a file, which the texts of failures name too.
std::vector<ScriptedAct> ReadScript(const QString& path);

/// What a script is made of, for people.
std::string ScriptHelp();

/// A rehearsal of some days from the command line.
struct RehearsalOptions {
  std::int64_t FirstDay = 0;  // counted from 1970
  std::int64_t LastDay = 0;
  std::vector<ScriptedAct> Script;
  QString PlanFile;  // empty: no picture
  PlanRows Rows;
  bool BurnHours = false;
  bool Daylight = false;  // follows the sun
};

/// As in "2026-01-01..2026-12-31" or one date. Throws std::invalid_argument.
void ParseRange(const QString& text, RehearsalOptions& options);

/// The lines of the script whose day is not rehearsed.
std::vector<int> LinesOutside(const RehearsalOptions& options);

/// The hours that each relay was on as tab-separated text.
std::string BurnHours(const Configuration& settings, const std::vector<Bar>& bars);

/// Runs the days and hands the output to `write` piece by piece. Throws std::runtime_error when
/// the picture cannot be written.
void Rehearse(const PanelMemory& memory, const RehearsalOptions& options,
              const std::function<void(std::string_view)>& write);

}  // namespace simulator
