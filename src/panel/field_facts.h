#pragma once

#include <QString>

#include "panel/items.h"
#include "panel/packing.h"
#include "panel/screens.h"
#include "panel/words.h"

// What is known of a field of a project, and of one field by its member. Whoever asks for a single
// field is spared the whole table, which stands in fields.h.

/// What an index of a field counts, and how many of its elements are items. The others are spare.
struct Axis {
  enum class Of {
    Nothing,
    Relay,
    Group,
    Input,
    Timer,
    Preset,
    Month,
    Date,
    Weekday,
    Node,
    DeviceInput,
    Byte,
    Element
  };
  Of Counts;
  int Items;
};

/// Where a value stands in its field.
struct Place {
  int Device = 0;  ///< The bus device, for the fields of bus devices.
  int First = 0;
  int Second = 0;

  bool operator==(const Place&) const = default;
};

/// How a value is told, and what an editor may put there.
struct Words {
  /// The words of a number, given the project that it is of.
  using Teller = QString (*)(const Project& project, const Place& place, Int32 value);

  Teller Tell;
  WordTable Choices = {};  ///< By code, where one list holds for all items.
  /// What the cells of a control table act on, where the input's type says so.
  ItemKind (*Target)(const Project& project, const Place& place) = nullptr;
  /// A number by nature: there is no better word for it.
  bool IsNumber = false;
  /// Whether the editor's list has a number, or nothing asks for it; null where Choices tells, or
  /// any number will do.
  bool (*Has)(const Project& project, const Place& place, Int32 value) = nullptr;
};

/// Whether an editor may put a number there.
inline bool IsListed(const Words& words, const Project& project, const Place& place, Int32 value) {
  if (words.Has) return words.Has(project, place, value);
  const auto choices = static_cast<Int32>(words.Choices.size());
  return choices == 0 || (value >= 0 && value < choices);
}

/// What a new panel has there.
struct Default {
  enum class Kind { Number, FirstOnly, OwnIndex, ItemName, DeviceName, Everywhere, Stays };
  Kind Is;
  Int32 Value = 0;
  const char* Why = "";  ///< It stays as it is.
};

constexpr Default StartsAs(Int32 value) {
  return {Default::Kind::Number, value};
}
/// The first element alone; the others start as 0.
constexpr Default FirstStartsAs(Int32 value) {
  return {Default::Kind::FirstOnly, value};
}
/// In spare elements too.
constexpr Default StartsEverywhereAs(Int32 value) {
  return {Default::Kind::Everywhere, value};
}
constexpr Default StartsAsItsIndex() {
  return {Default::Kind::OwnIndex};
}
constexpr Default StartsAsItemName() {
  return {Default::Kind::ItemName};
}
constexpr Default StartsAsDeviceName() {
  return {Default::Kind::DeviceName};
}
constexpr Default Stays(const char* why) {
  return {Default::Kind::Stays, 0, why};
}

/// The screen and the control that edit a field. Of several, parted by '|', it is the one in sight.
struct Editor {
  Screen On;
  const char* Control;
  const char* WhyNone = "";

  bool operator==(const Editor&) const = default;
};

constexpr Editor EditedBy(Screen screen, const char* control) {
  return {screen, control};
}
constexpr Editor NotEdited(const char* why) {
  return {Screen::None, "", why};
}

/// A spare element that holds something else.
struct SpareUse {
  const char* Phrase;
  const char* Area;
  Words Told;
  Editor Where;
};

/// A value without which a row does not compile.
template <typename T>
struct Needed {
  // NOLINTNEXTLINE(google-explicit-constructor): a row is read as a line of values.
  constexpr Needed(const T& value) : Value(value) {}
  T Value;
};

struct FieldFacts {
  Needed<const char*> Name;
  Needed<const char*> Area;  ///< Of a comparison: "Relays".
  Needed<const char*>
      Phrase;  ///< In a sentence: "power-on type". "%1" is what a table's cell is for.
  Needed<Axis> First;
  Needed<Axis> Second;
  Needed<Packing> Memory;
  Needed<Words> Told;
  Needed<Default> Start;
  Needed<Editor> Where;
  const SpareUse* Spare = nullptr;  ///< What element 48 holds.
};

/// The kind of item that an index counts; Panel where it counts none.
ItemKind KindOf(Axis axis);

/// The item that an element of a field is of.
Item ItemOf(const FieldFacts& facts, const Place& place);

/// Where the type of an input, local or of a bus device, is chosen. The screens of its actions
/// would cut those that the type does not offer.
constexpr Screen TypeScreen(const Item& input) {
  return input.Kind == ItemKind::Input ? Screen::InputOptions : Screen::ConfigureFennlinkDevices;
}

/// What an element is, in a sentence or as a row of a comparison: "power-on type", "open time of
/// Sunday"; of a table's cell what it is for: "RELAY 03".
QString PhraseOf(const Project& project, const FieldFacts& facts, const Place& place);

/// The row of a field, by its member.
template <typename Owner, typename Type>
const FieldFacts& FactsOf(Type Owner::*member);

// The words that rows are made of.

namespace told {

QString Code(WordTable table, Int32 code);
QString Number(const Project&, const Place&, Int32 value);
/// Of a list that begins with 1.
QString NumberFrom1(const Project&, const Place&, Int32 value);
QString YesOrNo(const Project&, const Place&, Int32 value);
QString Quarters(const Project&, const Place&, Int32 value);
QString Minutes(const Project&, const Place&, Int32 value);
QString Seconds(const Project&, const Place&, Int32 value);
QString DegreesNorth(const Project&, const Place&, Int32 value);
QString DegreesWest(const Project&, const Place&, Int32 value);
QString Percent(const Project&, const Place&, Int32 value);
/// "128/255 (50%)".
QString LevelOf255(const Project&, const Place&, Int32 value);
QString PresetCode(const Project&, const Place&, Int32 value);
QString Blocks(const Project&, const Place&, Int32 value);
QString Port(const Project&, const Place&, Int32 value);
QString DMXChannel(const Project&, const Place&, Int32 value);
QString AddOnModule(const Project&, const Place&, Int32 value);
QString Month(const Project&, const Place&, Int32 value);
QString Week(const Project&, const Place&, Int32 value);
QString LocalPilot(const Project&, const Place&, Int32 value);
QString DevicePilot(const Project&, const Place&, Int32 value);
QString RelayAction(const Project&, const Place&, Int32 value);
QString GroupAction(const Project&, const Place&, Int32 value);
QString DeviceRelayAction(const Project&, const Place&, Int32 value);
QString DeviceGroupAction(const Project&, const Place&, Int32 value);
/// What the cells of an input's relay table stand for: relays, inputs or timers.
ItemKind LocalRows(const Project& project, const Place& place);
ItemKind DeviceRows(const Project& project, const Place& place);
QString DeviceType(const Project&, const Place&, Int32 value);
QString DeviceInputType(const Project&, const Place&, Int32 value);
/// All that a timer runs by, whichever part of it is asked for.
QString TimerRuns(const Project&, const Place&, Int32 value);

// What lists have.

bool IsAnything(const Project&, const Place&, Int32 value);
/// What an input's type does not offer is told as such.
bool IsAction(const Project&, const Place&, Int32 value);
bool IsPresetOfInput(const Project&, const Place&, Int32 value);
bool IsPresetOfDeviceInput(const Project&, const Place&, Int32 value);
bool IsQuarter(const Project&, const Place&, Int32 value);
bool IsQuarterOrNone(const Project&, const Place&, Int32 value);
bool IsTimedOn(const Project&, const Place&, Int32 value);
bool IsDeviceTimedOn(const Project&, const Place&, Int32 value);
bool IsKindOfTime(const Project&, const Place&, Int32 value);
bool IsTimeOfTimer(const Project&, const Place&, Int32 value);
bool IsWeek(const Project&, const Place&, Int32 value);
bool IsMonth(const Project&, const Place&, Int32 value);
bool IsAddOnModule(const Project&, const Place&, Int32 value);
bool IsDeviceType(const Project&, const Place&, Int32 value);
bool IsDeviceInputType(const Project&, const Place&, Int32 value);
bool IsTimerMonth(const Project&, const Place&, Int32 value);
bool IsTimerDate(const Project&, const Place&, Int32 value);
/// Of the place of a panel, where a timer goes by the sun.
bool IsLatitude(const Project&, const Place&, Int32 value);
bool IsLongitude(const Project&, const Place&, Int32 value);
template <const ListRange& Range>
bool IsWithin(const Project&, const Place&, Int32 value) {
  return value >= Range.First && value <= Range.Last;
}

template <const auto& Table>
QString Listed(const Project&, const Place&, Int32 value) {
  return Code(Table, value);
}
/// The second word for any value but 0.
template <const auto& Table>
QString Flagged(const Project&, const Place&, Int32 value) {
  return Code(Table, value != 0 ? 1 : 0);
}

}  // namespace told

using IsInList = bool (*)(const Project& project, const Place& place, Int32 value);
constexpr Words ByNumber() {
  return {told::Number, {}, nullptr, true};
}
constexpr Words ByNumberFrom1(IsInList has) {
  return {told::NumberFrom1, {}, nullptr, true, has};
}
template <const auto& Table>
constexpr Words FromList() {
  return {told::Listed<Table>, Table};
}
template <const auto& Table>
constexpr Words FromFlags() {
  return {told::Flagged<Table>, Table, nullptr, false, told::IsAnything};
}
/// The numbers of which there are words, told by a function.
constexpr Words FromSome(Words::Teller tell, IsInList has) {
  return {tell, {}, nullptr, false, has};
}
/// The actions that the type of an input offers.
constexpr Words FromActions(Words::Teller tell,
                            ItemKind (*target)(const Project& project, const Place& place) = {}) {
  return {tell, {}, target, false, told::IsAction};
}
constexpr Words AsText() {
  return {nullptr};
}
