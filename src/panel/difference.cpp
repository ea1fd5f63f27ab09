#include "panel/difference.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

/// What of a timer is told: what it runs by where the words differ, and the parts that would differ
/// still if those of the other were taken over.
std::vector<Setting> DifferentOfTimer(const Project& one, const Project& other, int timer) {
  std::vector<Setting> different;
  const std::vector<Setting> parts = PartsOfTimer(timer);
  Project taken;
  for (const Setting& part : parts) TakeOver(taken, one, part);
  Setting runs = RunsOfTimer(timer);
  // It is edited where the first part that differs is.
  runs.Field = std::find_if(parts.begin(), parts.end(), [&](const Setting& part) {
                 return ValueOf(one, part) != ValueOf(other, part);
               })->Field;
  const QString words = WordsOf(other, runs);
  if (WordsOf(one, runs) != words) {
    different.push_back(runs);
    PutWords(taken, runs, words);
  }
  for (const Setting& part : parts) {
    if (ValueOf(taken, part) != ValueOf(other, part)) different.push_back(part);
  }
  return different;
}

}  // namespace

std::vector<Setting> DifferentSettings(const Project& one, const Project& other, bool names) {
  std::vector<Setting> found;
  std::array<bool, ItemCount> timerTold{};
  ForEachDifferent(one, other, [&](const Setting& setting, bool spare) {
    if (spare || (!names && AreaOf(setting) == u"Names")) return;
    if (IsPartOfTimer(setting)) {
      const int timer = setting.At.First;
      if (std::exchange(timerTold[static_cast<std::size_t>(timer)], true)) return;
      const auto different = DifferentOfTimer(one, other, timer);
      found.insert(found.end(), different.begin(), different.end());
    } else if (UsualValueOf(one, setting) != UsualValueOf(other, setting)) {
      found.push_back(setting);
    }
  });
  return found;
}

Difference DifferenceIn(const Setting& setting, const Project& one, const Project& other) {
  Difference row{AreaOf(setting),       ItemOf(setting),         PhraseOf(one, setting),
                 WordsOf(one, setting), WordsOf(other, setting), setting};
  if (row.This == row.Other) {
    row.This = NumberedWordsOf(one, setting);
    row.Other = NumberedWordsOf(other, setting);
  }
  return row;
}

std::vector<Difference> CompareProjects(const Project& one, const Project& other, bool names) {
  std::vector<Difference> found;
  for (const Setting& setting : DifferentSettings(one, other, names)) {
    found.push_back(DifferenceIn(setting, one, other));
  }
  return found;
}
