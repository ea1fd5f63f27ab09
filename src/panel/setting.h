#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "panel/dimmer_fields.h"
#include "panel/field_facts.h"

// The settings of a project one by one, whatever they are of: what comparison, taking over and
// merging walk.

/// An element of a field of the panel or of a bus device, or of a field of a dimmer.
struct Setting {
  const FieldFacts* Field = nullptr;
  const DimmerField* Dimmer = nullptr;  ///< In place of a field.
  Place At;                             ///< Of a dimmer: device, output, slot or relay.
  bool Whole = false;                   ///< With all that is told in one sentence with it.

  bool operator==(const Setting&) const = default;
};

/// What a spare element is used for; null for all else.
const SpareUse* SpareOf(const Setting& setting);

/// The area of a comparison: "Relays".
QString AreaOf(const Setting& setting);
Item ItemOf(const Setting& setting);
QString PhraseOf(const Project& project, const Setting& setting);
/// Where it is edited.
const Editor& EditorOf(const Setting& setting);

/// The control by which it is edited.
struct Spot {
  Editor By;
  int Row;    ///< Of the control, where the screen has one for each element.
  int Month;  ///< Which the screen is to show; -1 where it shows none.
};
Spot SpotOf(const Setting& setting);

/// What a setting holds, to the bit. Of a dimmer's element it has the bits of its own, and those of
/// none where it stands first; of a pair of elements the first one is the high word.
using SettingValue = std::variant<Int32, std::string>;
SettingValue ValueOf(const Project& project, const Setting& setting);
void PutValue(Project& project, const Setting& setting, const SettingValue& value);

/// The numbers that can stand there.
struct NumberRange {
  std::int64_t Lowest;
  std::int64_t Highest;
  bool Has(std::int64_t number) const { return number >= Lowest && number <= Highest; }
};
NumberRange RangeOf(const Project& project, const Setting& setting);

/// As it is for a user: flags of 1 and -1 are one, blanks behind a name are none, and a panel
/// without a name has the one that it is given then.
SettingValue UsualValueOf(const Project& project, const Setting& setting);

/// What a number of a setting means: itself; of a dimmer's also percent, a channel, -1 or 0. Throws
/// RunTimeFailure for one that means nothing.
Int32 MeaningOf(const Setting& setting, Int32 number);
/// The number by which a meaning is usually stored. Throws RunTimeFailure where none is.
Int32 NumberOfMeaning(const Setting& setting, Int32 meaning);

/// Takes a setting of another project over, to the bit.
void TakeOver(Project& into, const Project& from, const Setting& setting);

/// Visits, in the order of the file, what differs by as much as a bit. Spare elements mean nothing.
void ForEachDifferent(const Project& one, const Project& other,
                      const std::function<void(const Setting& setting, bool spare)>& visit);
/// Visits all settings but spare elements, and what is told whole.
void ForEachSetting(const std::function<void(const Setting& setting)>& visit);

/// What a user takes for one: a timer's times and days, the two times of a weekday or a date, a
/// control slot; else a setting alone.
struct SettingUnit {
  QString Phrase;
  std::vector<Setting> Parts;
};
SettingUnit UnitOf(const Project& project, const Setting& setting);

/// What is told in one sentence, of which the setting is a part: what a timer runs by, a control
/// slot. It is edited where this part is. Nothing for a setting that is told by itself.
std::optional<Setting> WholeOf(const Setting& part);
/// The parts of what is told whole, in the order of the file.
std::vector<Setting> PartsOf(const Setting& whole);
/// Whether one sentence tells it; else only its parts are told.
bool HasWords(const Project& project, const Setting& whole);

/// How a comparison tells a value. No two values have the same words: one that shares its words
/// with a sounder one has its number behind them. Only what is told whole has parts that its words
/// do not tell.
QString WordsOf(const Project& project, const Setting& setting);

/// Whether an editor could have put there what stands there. For parts, not for what is whole.
bool IsListed(const Project& project, const Setting& setting);

/// A number with itself behind its words: two projects may have the same words for different ones.
QString NumberedWordsOf(const Project& project, const Setting& setting);
/// Whether words are one of the two for what stands there. Names in a sentence do not count.
bool IsToldBy(const Project& project, const Setting& setting, const QString& words);

/// Stores what such words tell; what they do not tell stays.
void PutWords(Project& project, const Setting& setting, const QString& words);
