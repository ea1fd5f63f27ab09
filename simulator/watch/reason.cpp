#include "simulator/watch/reason.h"

#include <algorithm>
#include <cctype>

#include "simulator/memory/digits.h"

namespace simulator {

namespace {

const std::string* NameOf(const Subject& subject, const ItemNames& names) {
  const auto at = static_cast<std::size_t>(subject.Number);
  switch (subject.What) {
    case Subject::Kind::Timer:
      return &names.Timer.at(at);
    case Subject::Kind::Relay:
      return &names.Relay.at(at);
    case Subject::Kind::Group:
      return &names.Group.at(at);
    case Subject::Kind::Preset:
      return &names.Preset.at(at);
    case Subject::Kind::Input:
    case Subject::Kind::Pilot:
      return &names.Input.at(at);
    case Subject::Kind::Photocell:
    case Subject::Kind::DeviceInput:
    case Subject::Kind::DevicePilot:
      return &names.Device.at(at);
    default:
      return nullptr;
  }
}

/// What an item is called in a new panel.
std::string UsualName(const Subject& subject) {
  using enum Subject::Kind;
  const bool onDevice =
      subject.What == Photocell || subject.What == DeviceInput || subject.What == DevicePilot;
  if (onDevice) return "FLINK " + Hex(static_cast<unsigned>(subject.Number), 2);
  return Text(subject.What == Pilot ? Subject{Input, subject.Number, 0} : subject);
}

std::string WordsOf(const Row& row, const Configuration& settings, const std::string& firing,
                    const Subject& fired) {
  using enum Subject::Kind;
  std::string name = NamedText(row.Cause, settings);
  const std::string inBrackets = firing.empty() ? "" : " (" + firing + ")";
  switch (row.Cause.What) {
    case Timer:
      return name + " (" + settings.Timers[static_cast<std::size_t>(row.Cause.Number)].Words + ")";
    case Relay:
    case Dimmer:
      if (row.Begun.Who.What == None) return firing;
      return firing + " (" + NamedText(row.Begun.Who, settings) + " of " +
             ShortTime(row.Begun.Since, row.Time, settings.Days) + ")";
    case Sweep:
      return name;
    default:
      if (fired.What != None) return name + ", " + NamedText(fired, settings);
      return name + inBrackets;
  }
}

}  // namespace

std::string OwnName(const Subject& subject, const Configuration& settings) {
  const std::string* name = NameOf(subject, settings.Names);
  if (name == nullptr) return {};
  const std::string usual = UsualName(subject);
  const bool same =
      std::equal(name->begin(), name->end(), usual.begin(), usual.end(),
                 [](char a, char b) { return std::toupper(static_cast<unsigned char>(a)) == b; });
  return same ? std::string() : *name;
}

std::string NamedText(const Subject& subject, const Configuration& settings) {
  const std::string name = OwnName(subject, settings);
  std::string text = Text(subject);
  if (name.empty()) return text;
  // Behind kind and number, before what is a part of it.
  text.insert(std::min(text.find(' ', text.find(' ') + 1), text.size()), " " + name);
  return text;
}

std::string RelayList(Mask relays, const Configuration& settings) {
  std::string list;
  EachBit(relays, [&](int relay) {
    const Subject item{Subject::Kind::Relay, relay, 0};
    const std::string name = OwnName(item, settings);
    list += (list.empty() ? "" : ", ") + (name.empty() ? Text(item) : name);
  });
  return list;
}

std::string Capitalized(std::string text) {
  if (!text.empty()) text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  return text;
}

std::string ShortTime(Instant at, Instant today, const Calendar& days) {
  const std::int64_t wall = days.Wall(at);
  const auto seconds = static_cast<int>(wall % DayMs / SecondMs);
  std::string text = TwoDigits(seconds / 3600) + ":" + TwoDigits(seconds / 60 % 60);
  if (seconds % 60 != 0) text += ":" + TwoDigits(seconds % 60);
  const std::int64_t way = wall / DayMs - days.Wall(today) / DayMs;
  if (way == 0) return text;
  constexpr std::int64_t week = 7;
  const std::string weekday = WeekdayNames.at(static_cast<std::size_t>(WeekdayOf(wall / DayMs)));
  if (way > -week && way < week) return weekday + " " + text;
  const Date date = DateOf(wall / DayMs);
  return std::to_string(date.Year) + "-" + TwoDigits(date.Month) + "-" + TwoDigits(date.Day) + " " +
         text;
}

const SharedReason& ReasonKeeper::Take(const Row& row, const Configuration& settings) {
  const bool fires = row.What == Change::Fires;
  const bool same = Known && Known->At == row.Time && Known->Cause == row.Cause;
  // A switch that opens after it has set something does not do so in that thing's name.
  const bool itself = row.Item == row.Cause && row.Cause.What != Subject::Kind::Relay;
  if (same && !fires && !(itself && Fired.What != Subject::Kind::None)) return Known;
  if (Known && Known->At != row.Time) RanOut.clear();
  // A group follows after all its relays, in the name of the first.
  if (const auto known = RanOut.find(row.Cause); !fires && known != RanOut.end()) {
    return Known = known->second;
  }
  Firing = fires && row.Item.What == Subject::Kind::None ? std::string(row.Words) : std::string();
  Fired = fires ? row.Item : Subject{};
  Known = std::make_shared<const Reason>(
      Reason{row.Time, row.Cause, WordsOf(row, settings, Firing, Fired)});
  if (fires && !Known->HasDoer()) RanOut[row.Cause] = Known;
  return Known;
}

std::string ChangeText(const Subject& item, const Happening& happening) {
  const bool on = happening.What == Change::On;
  if (on || happening.What == Change::Off) {
    if (item.What == Subject::Kind::Preset) return on ? "set" : "not set";
    const bool isSwitch =
        item.What == Subject::Kind::Input || item.What == Subject::Kind::DeviceInput;
    if (isSwitch) return on ? "closes" : "opens";
  }
  return Text(happening.What, happening.Level);
}

void LastChanges::Take(const Row& row, const Configuration& settings) {
  Last = Reasons.Take(row, settings);
  // As power comes anew, all begins anew.
  if (row.Cause.What == Subject::Kind::Power && row.What == Change::Fires) Known.clear();
  if (AboutWhat(row).What != Subject::Kind::None)
    Known[AboutWhat(row)] = {row.Time, row.What, row.Level, Last};
}

const Happening* LastChanges::Of(const Subject& item) const {
  const auto found = Known.find(item);
  return found == Known.end() ? nullptr : &found->second;
}

}  // namespace simulator
