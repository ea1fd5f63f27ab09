#include <algorithm>

#include "simulator/engine/engine.h"

// What the days bring: timers, open and close times, daylight saving, off-hours sweeps.

namespace simulator {

namespace {

template <typename Table>
auto& AtDate(Table& table, const Date& date) {
  return table[static_cast<std::size_t>(date.Month - 1)][static_cast<std::size_t>(date.Day - 1)];
}

}  // namespace

void Engine::PlanAnew() {
  Plan.clear();
  PlanHead = 0;
  const std::int64_t today = Today();
  // An offset carries a timer into the day before or after.
  for (std::int64_t day = today - 1; day <= today + 1; ++day) PlanDay(day);
  PlanMidnight(today + 1);
}

void Engine::PlanMidnight(std::int64_t day) {
  PlanAt(Settings->Days.FromWallMinute(day * DayMinutes), NewDay);
  std::sort(Plan.begin() + static_cast<std::ptrdiff_t>(PlanHead), Plan.end());
}

void Engine::PlanAt(Instant at, int order) {
  if (at >= std::max(Undone, Present)) Plan.push_back(at * OrdersAnInstant + order);
}

std::optional<std::int64_t> Engine::HourMinute(std::int64_t day, bool close) const {
  const Date date = DateOf(day);
  const int open = AtDate(Settings->DateOpenQuarter, date);
  const int closing = AtDate(Settings->DateCloseQuarter, date);
  const auto weekday = static_cast<std::size_t>(Weekday(day));
  int quarter = (close ? Settings->CloseQuarter : Settings->OpenQuarter)[weekday];
  if (open < NoEntry || closing < NoEntry) quarter = close ? closing : open;
  if (quarter > LastQuarter) return std::nullopt;
  return day * DayMinutes + std::int64_t{quarter} * QuarterMinutes;
}

Engine::DayEvents Engine::EventsOf(std::int64_t day, bool withSun) const {
  using enum TimerSetting::Event;
  DayEvents events;
  events[static_cast<std::size_t>(Clock)] = day * DayMinutes;
  events[static_cast<std::size_t>(Open)] = HourMinute(day, false);
  events[static_cast<std::size_t>(Close)] = HourMinute(day, true);
  if (withSun) {
    const SunTimes sun = Sky.Of(day);
    const auto wall = [this](std::optional<std::int64_t> universal) {
      if (universal) {
        const Instant at = (*universal - Settings->Days.StandardMinutesWest()) * MinuteMs;
        universal = Settings->Days.Wall(at) / MinuteMs;
      }
      return universal;
    };
    events[static_cast<std::size_t>(Sunrise)] = wall(sun.Rise);
    events[static_cast<std::size_t>(Sunset)] = wall(sun.Set);
  }
  return events;
}

void Engine::PlanDay(std::int64_t day) {
  const Calendar& calendar = Settings->Days;
  const Date date = DateOf(day);
  const int weekday = Weekday(day);
  const bool holiday = AtDate(Settings->Holiday, date);
  const DayEvents events = EventsOf(day, Settings->SunTimers);
  for (int i = 0; i < Items; ++i) {
    const TimerSetting& timer = Settings->Timers[static_cast<std::size_t>(i)];
    if (!timer.Used) continue;
    const bool runs = timer.Month != 0 ? timer.Month == date.Month && timer.Day == date.Day
                                       : (timer.DaysLeftOut >> weekday & 1) == 0 &&
                                             !(holiday && timer.RestsOnHolidays);
    const auto event = events[static_cast<std::size_t>(timer.What)];
    if (runs && event) PlanAt(calendar.FromWallMinute(*event + timer.Minutes), FirstTimer + i);
  }
  for (const bool close : {false, true}) {
    const auto hour = HourMinute(day, close);
    if (hour) PlanAt(calendar.FromWallMinute(*hour), close ? CloseEvent : OpenEvent);
  }
  const Calendar::Saving saving = calendar.SavingOf(date.Year);
  for (const Instant change : {saving.Start, saving.End}) {
    if (saving.Start != saving.End && change / DayMs == day) PlanAt(change, ClockChange);
  }
  for (const int number : Settings->LevelSwitches) {
    if (number >= Items) break;
    const auto at = static_cast<std::size_t>(number);
    if (Settings->EnableQuarter[at] == Settings->DisableQuarter[at]) continue;
    for (const int quarter : {Settings->EnableQuarter[at], Settings->DisableQuarter[at]}) {
      PlanAt(calendar.FromWallMinute(day * DayMinutes + std::int64_t{quarter} * QuarterMinutes),
             ActiveEdge);
    }
  }
}

void Engine::RunPlanned() {
  const int order = static_cast<int>(Plan[PlanHead++] % OrdersAnInstant);
  const Subject clock{Subject::Kind::Clock, 0, 0};
  switch (order) {
    case NewDay:
      Plan.erase(Plan.begin(), Plan.begin() + static_cast<std::ptrdiff_t>(PlanHead));
      PlanHead = 0;
      PlanDay(Today() + 1);
      PlanMidnight(Today() + 1);
      return;
    case ClockChange:
      TellFires(clock, Settings->Days.InSaving(Present) ? "daylight saving begins"
                                                        : "daylight saving ends");
      return;
    case OpenEvent:
      BuildingOpen = true;
      NextSweep.reset();
      return;
    case CloseEvent:
      BuildingOpen = false;
      if (Settings->Swept != 0) NextSweep = Present + reading::FirstSweepMs;
      return;
    case ActiveEdge:
      RunLevelSwitches(clock);
      return;
    default:
      break;
  }
  const int timer = order - FirstTimer;
  if (Has(TimersOff, timer)) return;
  const Subject cause{Subject::Kind::Timer, timer, 0};
  TellFires(cause, Settings->Timers[static_cast<std::size_t>(timer)].Words);
  RunTimer(timer, cause);
}

void Engine::RunTimer(int number, const Subject& cause) {
  const TimerSetting& timer = Settings->Timers[static_cast<std::size_t>(number)];
  TellRelays(timer.Relays.On, timer.Relays.Off, reading::OffByTimer);
  if (Has(Settings->SlotTimers, number)) RunSlots(DimmerSlot::Kind::Timer, number);
  EachBit(timer.Presets & Settings->SlotPresets,
          [this](int preset) { RunSlots(DimmerSlot::Kind::Preset, preset); });
  Settle(cause);
}

void Engine::StartHours() {
  constexpr int daysBack = 7;
  BuildingOpen = true;
  NextSweep.reset();
  const Calendar& calendar = Settings->Days;
  Instant last = -1;
  for (std::int64_t day = Today(); day >= Today() - daysBack && last < 0; --day) {
    for (const bool close : {false, true}) {
      const auto hour = HourMinute(day, close);
      const Instant at = hour ? calendar.FromWallMinute(*hour) : Undone;
      if (at >= Undone || at < last) continue;
      last = at;
      BuildingOpen = !close;
    }
  }
  if (BuildingOpen || Settings->Swept == 0) return;
  NextSweep =
      last + (Undone - last + Settings->SweepMs - 1) / Settings->SweepMs * Settings->SweepMs;
}

void Engine::Sweep() {
  *NextSweep += Settings->SweepMs;
  const Subject cause{Subject::Kind::Sweep, 0, 0};
  TellFires(cause, "off hours sweep");
  const Mask waiting = Waiting(Due::OverrideOver) | Waiting(Due::TimeOver) | Occupied();
  TellRelays(0, Settings->Swept & ~waiting, reading::OffBySweep);
  Settle(cause);
}

Engine::SunAndHours Engine::HoursOf(std::int64_t day) const {
  const DayEvents events = EventsOf(day, true);
  const auto at = [&](TimerSetting::Event event) {
    const auto minute = events[static_cast<std::size_t>(event)];
    return minute ? std::optional<Instant>(Settings->Days.FromWallMinute(*minute)) : std::nullopt;
  };
  using enum TimerSetting::Event;
  return {at(Sunrise), at(Sunset), at(Open), at(Close)};
}

}  // namespace simulator
