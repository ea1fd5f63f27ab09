#include "simulator/engine/configuration.h"

#include <cstdlib>

#include "simulator/engine/readings.h"
#include "simulator/memory/digits.h"

namespace simulator {

namespace {

std::string TimerWords(const TimerSetting& timer) {
  static constexpr std::array<const char*, 5> events{"", "sunrise", "sunset", "open", "close"};
  const std::string event = events[static_cast<std::size_t>(timer.What)];
  if (event.empty()) {
    return "at " + TwoDigits(timer.Minutes / 60) + ":" + TwoDigits(timer.Minutes % 60);
  }
  if (timer.Minutes == 0) return "at " + event;
  return std::to_string(std::abs(timer.Minutes)) + " min " +
         (timer.Minutes < 0 ? "before " : "after ") + event;
}

GroupMembers MembersOfGroups(const PanelMemory& memory) {
  GroupMembers members{};
  const auto columns = ColumnsByCode(memory, map::GroupRelayInclude);
  for (std::size_t i = 0; i < members.size(); ++i) members[i] = columns[i][1];
  return members;
}

}  // namespace

RelaySettings::RelaySettings(const PanelMemory& memory)
    : BlinkAlertMs(memory.Byte(map::BlinkAlertMinutes) * MinuteMs),
      AlarmMs(memory.Byte(map::AlarmSeconds) * SecondMs) {
  Mask none = 0;
  const std::array<Mask*, 7> types{&none,    &Blinks,    &HIDDelay, &AlarmOff,
                                   &AlarmOn, &PulsedOff, &PulsedOn};
  for (int i = 0; i < Items; ++i) {
    const auto type = static_cast<std::size_t>(memory.Byte(map::RelayTimerType + i));
    if (type < types.size()) *types[type] |= Bit(i);
    const int powerOn = memory.Byte(map::RelayPowerOnType + i);
    if (reading::OnAfterPower(powerOn)) OnAfterPower |= Bit(i);
    if (powerOn == reading::OnWithInput1Type) OnWithInput1 |= Bit(i);
    if (powerOn == reading::LastStateType) LastState |= Bit(i);
  }
}

HoursSettings::HoursSettings(const PanelMemory& memory, const GroupMembers& groups)
    : Swept(RowBits(memory, map::OffHoursSweepRelay)),
      SweepMs((memory.Byte(map::OffHoursSweepInterval) + 1) * HourMs),
      OverrideMs(memory.Word(map::OverrideMinutes) * MinuteMs) {
  for (int day = 0; day < 7; ++day) {
    OpenQuarter[static_cast<std::size_t>(day)] = memory.Byte(map::NormalOpenTime + day);
    CloseQuarter[static_cast<std::size_t>(day)] = memory.Byte(map::NormalCloseTime + day);
  }
  for (int i = 0; i < map::DatesAYear; ++i) {
    constexpr int days = 31;
    const auto month = static_cast<std::size_t>(i / days);
    const auto day = static_cast<std::size_t>(i % days);
    const int open = memory.Byte(map::DateTimes + i);
    const int close = memory.Byte(map::DateTimes + map::DatesAYear + i);
    DateOpenQuarter[month][day] = open;
    DateCloseQuarter[month][day] = close;
    Holiday[month][day] = open < NoEntry || close < NoEntry;
  }
  EachBit(RowBits(memory, map::OffHoursSweepGroup),
          [&](int group) { Swept |= groups[static_cast<std::size_t>(group)]; });
}

Configuration::Configuration(const PanelMemory& memory)
    : Days(memory),
      Latitude(memory.Byte(map::Latitude)),
      LongitudeWest(memory.Byte(map::Longitude)),
      Groups(MembersOfGroups(memory)),
      Relays(memory),
      Hours(memory, Groups),
      Inputs(memory, Groups),
      Dimmers(memory),
      Names(memory) {
  const auto presets = ColumnsByCode(memory, map::PresetRelayControl);
  for (std::size_t i = 0; i < Presets.size(); ++i) Presets[i] = {presets[i][1], presets[i][2]};
  ReadTimers(memory);
}

void Configuration::ReadTimers(const PanelMemory& memory) {
  const auto relays = ColumnsByCode(memory, map::TimerRelayControl);
  const auto groups = ColumnsByCode(memory, map::TimerGroupControl);
  const auto presets = ColumnsByCode(memory, map::TimerPresetControl);
  for (int i = 0; i < Items; ++i) {
    const auto at = static_cast<std::size_t>(i);
    TimerSetting& timer = Timers[at];
    timer.Relays.Then(relays[at][1], relays[at][2]);
    for (int group = 0; group < Items; ++group) {
      const Mask members = Groups[static_cast<std::size_t>(group)];
      timer.Relays.Then(Has(groups[at][1], group) ? members : 0,
                        Has(groups[at][2], group) ? members : 0);
    }
    timer.Presets = presets[at][1];
    EachBit(timer.Presets, [&](int preset) {
      const Outcome& wanted = Presets[static_cast<std::size_t>(preset)];
      timer.Relays.Then(wanted.On, wanted.Off);
    });
    timer.Used =
        (relays[at][1] | relays[at][2] | groups[at][1] | groups[at][2] | timer.Presets) != 0 ||
        Has(Dimmers.SlotTimers, i);
    timer.DaysLeftOut = memory.Byte(map::TimerDays + i) & 0x7F;
    timer.RestsOnHolidays = (memory.Byte(map::TimerDays + i) & 0x80) != 0;
    timer.Month = memory.Byte(map::TimerHolidayMonth + i);
    timer.Day = memory.Byte(map::TimerHolidayDate + i);
    if (timer.Month >= 1 && timer.Month <= 12 && timer.Day >= 1 && timer.Day <= 31) {
      Hours.Holiday[static_cast<std::size_t>(timer.Month - 1)]
                   [static_cast<std::size_t>(timer.Day - 1)] = true;
    }

    constexpr int hours = 24;
    const int type = memory.Byte(map::TimerTimeType + i);
    const int time = memory.Byte(map::TimerTime + i);
    if (type < hours) {
      timer.Minutes = type * 60 + time;
      if (time >= 60) timer.Used = false;
    } else {
      using enum TimerSetting::Event;
      const bool afterEvent = (type & 0x20) != 0;
      const bool second = (type & 0x40) != 0;
      timer.What = (type & 0x80) != 0 ? (second ? Close : Open) : (second ? Sunset : Sunrise);
      const int offset = (type & 3) * 256 + time;
      timer.Minutes = afterEvent ? offset : -offset;
    }
    SunTimers = SunTimers || (timer.Used && (timer.What == TimerSetting::Event::Sunrise ||
                                             timer.What == TimerSetting::Event::Sunset));
    timer.Words = timer.NamedWords = TimerWords(timer);
    const std::string& name = Names.Timer[at];
    const bool own = !name.empty() && name != "TIMER " + TwoDigits(i + 1);
    if (own) timer.NamedWords = name + " (" + timer.Words + ")";
  }
}

}  // namespace simulator
