#include "panel/difference.h"

#include <algorithm>
#include <memory>

namespace {

/// What is told of something whole: itself where its words differ, and the parts that would differ
/// still if those of the other were taken over. `taken` has the names of `one`.
std::vector<Setting> DifferentOfWhole(const Project& one, const Project& other,
                                      const Setting& whole, Project& taken) {
  std::vector<Setting> different;
  TakeOver(taken, other, whole);
  const QString words = WordsOf(taken, whole);
  TakeOver(taken, one, whole);
  if (HasWords(one, whole) && HasWords(other, whole) && WordsOf(one, whole) != words) {
    different.push_back(whole);
    PutWords(taken, whole, words);
  }
  for (const Setting& part : PartsOf(whole)) {
    if (ValueOf(taken, part) != ValueOf(other, part)) different.push_back(part);
  }
  return different;
}

bool IsFirstDifferent(const Project& one, const Project& other, const Setting& part,
                      const std::vector<Setting>& parts) {
  const auto first = std::find_if(parts.begin(), parts.end(), [&](const Setting& p) {
    return ValueOf(one, p) != ValueOf(other, p);
  });
  return *first == part;
}

bool IsZero(const SettingValue& value) {
  return value == SettingValue(Int32{0});
}

}  // namespace

std::vector<Setting> DifferentSettings(const Project& one, const Project& other, bool names) {
  std::vector<Setting> found;
  std::unique_ptr<Project> taken;
  ForEachDifferent(one, other, [&](const Setting& setting, bool spare) {
    if (spare || (!names && AreaOf(setting) == u"Names")) return;
    if (const auto whole = WholeOf(setting)) {
      if (!IsFirstDifferent(one, other, setting, PartsOf(*whole))) return;
      if (!taken) taken = std::make_unique<Project>(one);
      const auto different = DifferentOfWhole(one, other, *whole, *taken);
      TakeOver(*taken, one, *whole);
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
  // A cell of a table stands for what the input's type says; the type may differ, too.
  if (setting.Field && setting.Field->Told.Value.Target && !IsZero(ValueOf(other, setting))) {
    row.Field = PhraseOf(other, setting);
  }
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
