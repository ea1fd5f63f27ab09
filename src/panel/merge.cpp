#include "panel/merge.h"

#include <QStringList>
#include <algorithm>

namespace {

using Reading = SettingValue (*)(const Project& project, const Setting& setting);

bool IsEqual(const Project& one, const Project& other, const std::vector<Setting>& parts,
             Reading read) {
  return std::all_of(parts.begin(), parts.end(),
                     [&](const Setting& part) { return read(one, part) == read(other, part); });
}

using Teller = QString (*)(const Project& project, const Setting& setting);

MergeConflict ConflictOf(const Project& base, const Project& ours, const Project& theirs,
                         const SettingUnit& unit) {
  const Setting& first = unit.Parts.front();
  MergeConflict conflict{AreaOf(first), ItemOf(first), unit.Phrase, {}, {}, {}};
  const auto tell = [&](const std::vector<Setting>& parts, Teller wordsOf) {
    const auto words = [&](const Project& project) {
      QStringList told;
      for (const Setting& part : parts) told << wordsOf(project, part);
      return told.join(QLatin1String(", "));
    };
    conflict.Base = words(base);
    conflict.Ours = words(ours);
    conflict.Theirs = words(theirs);
  };
  const auto areAlike = [&] {
    return conflict.Ours == conflict.Theirs || conflict.Base == conflict.Ours ||
           conflict.Base == conflict.Theirs;
  };
  const auto whole = WholeOf(first);
  const bool told =
      whole && HasWords(base, *whole) && HasWords(ours, *whole) && HasWords(theirs, *whole);
  if (told) tell({*whole}, WordsOf);
  if (areAlike()) tell(unit.Parts, WordsOf);
  if (areAlike()) tell(unit.Parts, NumberedWordsOf);
  return conflict;
}

}  // namespace

MergedProject MergeProjects(const Project& base, const Project& ours, const Project& theirs) {
  MergedProject merged{ours, {}};
  ForEachDifferent(base, theirs, [&](const Setting& setting, bool spare) {
    const SettingUnit unit = spare ? SettingUnit{{}, {setting}} : UnitOf(ours, setting);
    // The unit is visited for each part that theirs changed.
    const auto first = std::find_if(unit.Parts.begin(), unit.Parts.end(), [&](const Setting& part) {
      return ValueOf(base, part) != ValueOf(theirs, part);
    });
    if (first->Field != setting.Field || first->Dimmer != setting.Dimmer) return;
    const auto equal = [&](const Project& one, const Project& other, Reading read) {
      return IsEqual(one, other, unit.Parts, read);
    };
    const bool untouched = equal(base, ours, ValueOf);
    if (!untouched && (equal(ours, theirs, UsualValueOf) || equal(base, theirs, UsualValueOf))) {
      return;
    }
    if (untouched || equal(base, ours, UsualValueOf)) {
      for (const Setting& part : unit.Parts) TakeOver(merged.Content, theirs, part);
    } else if (!spare) {
      merged.Conflicts.push_back(ConflictOf(base, ours, theirs, unit));
    }
  });
  return merged;
}
