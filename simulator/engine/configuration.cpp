#include "simulator/engine/configuration.h"

#include <algorithm>
#include <span>

#include "simulator/engine/readings.h"

namespace simulator {

namespace {

/// One row of a bit matrix.
Mask RowBits(const PanelMemory& memory, int address) {
  Mask bits = 0;
  for (int i = 5; i >= 0; --i) bits = bits << 8 | static_cast<Mask>(memory.Byte(address + i));
  return bits;
}

/// All rows of a plane set: for each row a mask of columns for each code.
template <std::size_t Codes>
std::vector<std::array<Mask, Codes>> RowsByCode(const PanelMemory& memory, const PlaneSet& set,
                                                int rows) {
  std::vector<std::array<Mask, Codes>> result(static_cast<std::size_t>(rows));
  for (int row = 0; row < rows; ++row) {
    std::array<Mask, 3> planes{};
    for (int plane = 0; plane < set.Planes; ++plane) {
      planes[static_cast<std::size_t>(plane)] =
          RowBits(memory, set.Address + plane * set.PlaneSize + row * 6);
    }
    for (std::size_t code = 1; code < Codes; ++code) {
      Mask match = AllItems;
      for (std::size_t plane = 0; plane < 3; ++plane) {
        match &= (code >> plane & 1) != 0 ? planes[plane] : ~planes[plane];
      }
      result[static_cast<std::size_t>(row)][code] = match;
    }
  }
  return result;
}

/// The rows of a table turned round: for each column a mask of rows for each code.
template <std::size_t Codes>
std::vector<std::array<Mask, Codes>> ColumnsByCode(const PanelMemory& memory, const PlaneSet& set) {
  std::vector<std::array<Mask, Codes>> result(Items);
  const auto rows = RowsByCode<Codes>(memory, set, Items);
  for (int row = 0; row < Items; ++row) {
    for (std::size_t code = 1; code < Codes; ++code) {
      EachBit(rows[static_cast<std::size_t>(row)][code],
              [&](int column) { result[static_cast<std::size_t>(column)][code] |= Bit(row); });
    }
  }
  return result;
}

std::string NameAt(const PanelMemory& memory, int address) {
  std::string name = memory.Text(address, map::NameLength);
  for (char& c : name) {
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  }
  name.erase(name.find_last_not_of(' ') + 1);
  return name;
}

/// The 8-bit characters of the panel in UTF-8.
std::string Utf8(const std::string& text) {
  static constexpr std::array<char16_t, 32> above127{
      0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const unsigned code = byte >= 0x80 && byte < 0xA0 ? above127[byte - 0x80U] : byte;
    if (code < 0x80) {
      result += c;
    } else if (code < 0x800) {
      result += static_cast<char>(0xC0 | code >> 6);
      result += static_cast<char>(0x80 | (code & 63));
    } else {
      result += static_cast<char>(0xE0 | code >> 12);
      result += static_cast<char>(0x80 | (code >> 6 & 63));
      result += static_cast<char>(0x80 | (code & 63));
    }
  }
  return result;
}

InputKind KindAt(std::span<const InputKind> kinds, int type) {
  const auto index = static_cast<std::size_t>(type);
  return index < kinds.size() ? kinds[index] : InputKind::None;
}

/// A group's code is that of all its relays; a relay's own code stands before it, and a group's
/// before that of a later one.
void MergeGroups(SwitchSetting& setting, const std::array<Mask, 5>& groups,
                 const std::array<Mask, Items>& groupRelays) {
  Mask taken = 0;
  for (std::size_t code = 1; code < 5; ++code) taken |= setting.Rows[code];
  for (int group = 0; group < Items; ++group) {
    for (std::size_t code = 1; code < 5; ++code) {
      if (!Has(groups[code], group)) continue;
      const Mask free = groupRelays[static_cast<std::size_t>(group)] & ~taken;
      setting.Rows[code] |= free;
      taken |= free;
    }
  }
}

std::string TimerWords(const TimerSetting& timer) {
  static constexpr std::array<const char*, 5> events{"", "sunrise", "sunset", "open", "close"};
  const std::string event = events[static_cast<std::size_t>(timer.What)];
  if (event.empty()) {
    const auto two = [](int value) {
      return std::string{static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
    };
    return "at " + two(timer.Minutes / 60) + ":" + two(timer.Minutes % 60);
  }
  if (timer.Minutes == 0) return "at " + event;
  return std::to_string(std::abs(timer.Minutes)) + " min " +
         (timer.Minutes < 0 ? "before " : "after ") + event;
}

}  // namespace

Configuration::Configuration(const PanelMemory& memory)
    : Days(memory),
      Latitude(memory.Byte(map::Latitude)),
      LongitudeWest(memory.Byte(map::Longitude)),
      BlinkAlertMs(memory.Byte(map::BlinkAlertMinutes) * MinuteMs),
      OverrideMs(memory.Word(map::OverrideMinutes) * MinuteMs),
      AlarmMs(memory.Byte(map::AlarmSeconds) * SecondMs),
      TimedOnFromClosing(memory.Byte(map::TimedOnOperation) == 1),
      PhotocellMs(reading::PhotocellMs(memory.Byte(map::PhotocellFilter) == 1)),
      SweepMs((memory.Byte(map::OffHoursSweepInterval) + 1) * HourMs) {
  ReadRelays(memory);
  ReadOpenAndClose(memory);
  ReadInputs(memory);
  ReadPilots(memory);
  ReadDimmers(memory);
  ReadTimers(memory);
  ReadNames(memory);
}

void Configuration::ReadRelays(const PanelMemory& memory) {
  Mask none = 0;
  const std::array<Mask*, 7> types{&none,    &Blinks,    &HIDDelay, &AlarmOff,
                                   &AlarmOn, &PulsedOff, &PulsedOn};
  for (int i = 0; i < Items; ++i) {
    const auto type = static_cast<std::size_t>(memory.Byte(map::RelayTimerType + i));
    if (type < types.size()) *types[type] |= Bit(i);
    if (reading::OnAfterPower(memory.Byte(map::RelayPowerOnType + i))) OnAfterPower |= Bit(i);
  }
  const auto members = ColumnsByCode<2>(memory, map::GroupRelayInclude);
  const auto presets = ColumnsByCode<3>(memory, map::PresetRelayControl);
  for (std::size_t i = 0; i < Items; ++i) {
    GroupRelays[i] = members[i][1];
    Presets[i] = {presets[i][1], presets[i][2]};
  }
  Swept = RowBits(memory, map::OffHoursSweepRelay);
  EachBit(RowBits(memory, map::OffHoursSweepGroup),
          [&](int group) { Swept |= GroupRelays[static_cast<std::size_t>(group)]; });
}

void Configuration::ReadOpenAndClose(const PanelMemory& memory) {
  constexpr int days = 31;
  constexpr int closeTimes = map::DateTimes + 12 * days;
  for (int day = 0; day < 7; ++day) {
    OpenQuarter[static_cast<std::size_t>(day)] = memory.Byte(map::NormalOpenTime + day);
    CloseQuarter[static_cast<std::size_t>(day)] = memory.Byte(map::NormalCloseTime + day);
  }
  for (int i = 0; i < 12 * days; ++i) {
    const auto month = static_cast<std::size_t>(i / days);
    const auto day = static_cast<std::size_t>(i % days);
    const int open = memory.Byte(map::DateTimes + i);
    const int close = memory.Byte(closeTimes + i);
    DateOpenQuarter[month][day] = open;
    DateCloseQuarter[month][day] = close;
    Holiday[month][day] = open < NoEntry || close < NoEntry;
  }
}

void Configuration::ReadTimers(const PanelMemory& memory) {
  const auto relays = ColumnsByCode<3>(memory, map::TimerRelayControl);
  const auto groups = ColumnsByCode<3>(memory, map::TimerGroupControl);
  const auto presets = ColumnsByCode<2>(memory, map::TimerPresetControl);
  for (int i = 0; i < Items; ++i) {
    const auto at = static_cast<std::size_t>(i);
    TimerSetting& timer = Timers[at];
    timer.Relays.Then(relays[at][1], relays[at][2]);
    for (int group = 0; group < Items; ++group) {
      const Mask members = GroupRelays[static_cast<std::size_t>(group)];
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
        Has(SlotTimers, i);
    timer.DaysLeftOut = memory.Byte(map::TimerDays + i) & 0x7F;
    timer.RestsOnHolidays = (memory.Byte(map::TimerDays + i) & 0x80) != 0;
    timer.Month = memory.Byte(map::TimerHolidayMonth + i);
    timer.Day = memory.Byte(map::TimerHolidayDate + i);
    if (timer.Month >= 1 && timer.Month <= 12 && timer.Day >= 1 && timer.Day <= 31) {
      Holiday[static_cast<std::size_t>(timer.Month - 1)][static_cast<std::size_t>(timer.Day - 1)] =
          true;
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
    timer.Words = TimerWords(timer);
  }
}

void Configuration::ReadInputs(const PanelMemory& memory) {
  using enum InputKind;
  static constexpr std::array local{
      MomentaryOnOff, MomentaryPB,    MaintainedOnOff, MaintainedMultiWay, SetPreset,
      TimedOn,        HIDBiLevel,     TwoStep,         FourStep,           InputDisable,
      TimerDisable,   OutputOverride, ForceTimer};
  const auto relays = ColumnsByCode<5>(memory, map::InputRelayControl);
  const auto groups = ColumnsByCode<5>(memory, map::InputGroupControl);
  for (int i = 0; i < Items; ++i) {
    const auto at = static_cast<std::size_t>(i);
    SwitchSetting& setting = Inputs[at];
    setting.Kind = KindAt(local, memory.Byte(map::InputType + i));
    setting.Rows = relays[at];
    const bool speaksOfRelays =
        setting.Kind != InputDisable && setting.Kind != TimerDisable && setting.Kind != ForceTimer;
    if (speaksOfRelays) MergeGroups(setting, groups[at], GroupRelays);
    setting.Preset = memory.Byte(map::InputPreset + i);
    setting.Minutes = memory.Word(map::InputTimedOnTime + 2 * i);
    EnableQuarter[at] = memory.Byte(map::InputEnableTime + i);
    DisableQuarter[at] = memory.Byte(map::InputDisableTime + i);
  }
  for (int device = 1; device <= Devices; ++device) {
    if (memory.Byte(map::DeviceBlock(device)) != 0) ReadDevice(memory, device);
  }
  for (int i = 0; i < Switches; ++i) {
    const InputKind kind = Inputs[static_cast<std::size_t>(i)].Kind;
    if (kind == InputDisable || kind == TimerDisable || kind == OutputOverride) {
      LevelSwitches.push_back(i);
    }
  }
}

void Configuration::ReadDevice(const PanelMemory& memory, int device) {
  using enum InputKind;
  static constexpr std::array buttons{MomentaryPB, SetPreset, TimedOn, TwoStep, FourStep};
  static constexpr std::array fourInput{MomentaryOnOff, MomentaryPB,   MaintainedOnOff, SetPreset,
                                        TimedOn,        HIDBiLevel,    TwoStep,         FourStep,
                                        TimerDisable,   OutputOverride};
  static constexpr std::array eightInput{MaintainedOnOff, SetPreset, TimedOn, TwoStep, FourStep};
  static constexpr std::array photocell{MaintainedOnOff};
  constexpr std::array<std::span<const InputKind>, 10> kinds{std::span<const InputKind>{},
                                                             buttons,
                                                             buttons,
                                                             buttons,
                                                             buttons,
                                                             buttons,
                                                             buttons,
                                                             fourInput,
                                                             eightInput,
                                                             photocell};
  constexpr std::array counts{0, 1, 2, 3, 4, 5, 8, 4, 8, 8};
  constexpr int photocellType = 9;
  const int block = map::DeviceBlock(device);
  const auto type = static_cast<std::size_t>(memory.Byte(block));
  if (type >= kinds.size()) return;
  IsPhotocell[static_cast<std::size_t>(device)] = type == photocellType;
  const auto relays = RowsByCode<5>(memory, map::DeviceRelayControl(device), DeviceInputs);
  const auto groups = RowsByCode<5>(memory, map::DeviceGroupControl(device), DeviceInputs);
  for (int i = 0; i < counts[type]; ++i) {
    const auto at = static_cast<std::size_t>(i);
    SwitchSetting& setting = Inputs[static_cast<std::size_t>(SwitchOf(device, i))];
    const int inputType = memory.Byte(block + map::DeviceInputType + i);
    setting.Kind = KindAt(kinds[type], type == photocellType ? 0 : inputType);
    setting.Rows = relays[at];
    if (setting.Kind != TimerDisable) MergeGroups(setting, groups[at], GroupRelays);
    setting.Preset = memory.Byte(map::DevicePreset(device) + i);
    setting.Minutes = memory.Word(block + map::DeviceTimedOnTime + 2 * i);
    setting.OffLevel = memory.Byte(block + map::DeviceOffLevel + i);
    setting.OnLevel = memory.Byte(block + map::DeviceOnLevel + i);
  }
}

void Configuration::ReadPilots(const PanelMemory& memory) {
  using Kind = PilotSetting::Kind;
  const auto add = [&](int input, int kind, int value) {
    const int number = value & 63;
    const auto what = static_cast<Kind>(kind);
    if (kind <= static_cast<int>(Kind::Preset) && number < Items) {
      Pilots.push_back({what, what == Kind::Static ? value & 1 : number, input});
    }
  };
  for (int i = 0; i < memory.Points(); ++i) {
    const int value = memory.Byte(map::LocalPilot + i);
    add(i, value / 64 + 1, value);
  }
  constexpr std::array counts{0, 1, 2, 3, 4, 5, 8, 4, 8, 0};
  for (int device = 1; device <= Devices; ++device) {
    const auto type = static_cast<std::size_t>(memory.Byte(map::DeviceBlock(device)));
    const int count = type < counts.size() ? counts[type] : 0;
    for (int i = 0; i < count; ++i) {
      const int value = memory.Byte(map::DeviceBlock(device) + map::DevicePilot + i);
      add(SwitchOf(device, i), value / 64, value);
    }
  }
}

void Configuration::ReadNames(const PanelMemory& memory) {
  const auto read = [&](std::array<std::string, Items>& names, int address) {
    for (int i = 0; i < Items; ++i) {
      names[static_cast<std::size_t>(i)] = Utf8(NameAt(memory, address + i * map::NameLength));
    }
  };
  read(RelayNames, map::RelayName);
  read(GroupNames, map::GroupName);
  read(InputNames, map::InputName);
  read(TimerNames, map::TimerName);
  read(PresetNames, map::PresetName);
  for (int device = 1; device <= Devices; ++device) {
    DeviceNames[static_cast<std::size_t>(device)] =
        Utf8(NameAt(memory, map::DeviceBlock(device) + map::DeviceName));
  }
}

}  // namespace simulator
