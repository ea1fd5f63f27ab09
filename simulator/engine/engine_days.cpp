#include "simulator/engine/engine_days.h"

#include <algorithm>

#include "simulator/engine/engine_inputs.h"
#include "simulator/engine/engine_relays.h"
#include "simulator/engine/engine_settle.h"
#include "simulator/engine/sun.h"

namespace simulator {

namespace {

// What is planned for one instant goes by this order.
constexpr std::int64_t OrdersAnInstant = 128;
enum PlanOrder { NewDay, ClockChange, OpenEvent, CloseEvent, ActiveEdge, FirstTimer = 16 };

template <typename Table>
auto& AtDate(Table& table, const Date& date) {
  return table[static_cast<std::size_t>(date.Month - 1)][static_cast<std::size_t>(date.Day - 1)];
}

std::int64_t TodayOf(const EngineState& state) {
  return state.Wall() / DayMs;
}

std::int64_t MinuteOf(std::int64_t day, int quarter) {
  return day * DayMinutes + std::int64_t{quarter} * QuarterMinutes;
}

std::optional<std::int64_t> HourMinute(const EngineState& state, std::int64_t day, bool close) {
  const HoursSettings& hours = state.Settings->Hours;
  const Date date = DateOf(day);
  const int open = AtDate(hours.DateOpenQuarter, date);
  const int closing = AtDate(hours.DateCloseQuarter, date);
  const auto weekday = static_cast<std::size_t>(PanelWeekday(state, day));
  int quarter = (close ? hours.CloseQuarter : hours.OpenQuarter)[weekday];
  if (open < NoEntry || closing < NoEntry) quarter = close ? closing : open;
  if (quarter > LastQuarter) return std::nullopt;
  return MinuteOf(day, quarter);
}

/// Wall minutes since 1970 of the events of a day that timers count from.
using DayEvents = std::array<std::optional<std::int64_t>, 5>;

DayEvents EventsOf(const EngineState& state, std::int64_t day, bool withSun) {
  using enum TimerSetting::Event;
  const Configuration& settings = *state.Settings;
  DayEvents events;
  events[static_cast<std::size_t>(Clock)] = day * DayMinutes;
  events[static_cast<std::size_t>(Open)] = HourMinute(state, day, false);
  events[static_cast<std::size_t>(Close)] = HourMinute(state, day, true);
  if (withSun) {
    const SunTimes sun = Sun(settings.Latitude, settings.LongitudeWest).Of(day);
    const auto wall = [&](std::optional<std::int64_t> universal) {
      if (universal) {
        const Instant at = (*universal - settings.Days.StandardMinutesWest()) * MinuteMs;
        universal = settings.Days.Wall(at) / MinuteMs;
      }
      return universal;
    };
    events[static_cast<std::size_t>(Sunrise)] = wall(sun.Rise);
    events[static_cast<std::size_t>(Sunset)] = wall(sun.Set);
  }
  return events;
}

void PlanAt(EngineState& state, Instant at, int order) {
  if (at < std::max(state.Days.Undone, state.Now)) return;
  state.Days.Plan.push_back(at * OrdersAnInstant + order);
}

void PlanDay(EngineState& state, std::int64_t day) {
  const Configuration& settings = *state.Settings;
  const Calendar& calendar = settings.Days;
  const auto planAt = [&](std::int64_t wallMinute, int order) {
    PlanAt(state, calendar.FromWallMinute(wallMinute), order);
  };
  const Date date = DateOf(day);
  const int weekday = PanelWeekday(state, day);
  const bool holiday = AtDate(settings.Hours.Holiday, date);
  const DayEvents events = EventsOf(state, day, settings.SunTimers);
  for (int i = 0; i < Items; ++i) {
    const TimerSetting& timer = settings.Timers[static_cast<std::size_t>(i)];
    if (!timer.Used) continue;
    const bool runs = timer.Month != 0 ? timer.Month == date.Month && timer.Day == date.Day
                                       : (timer.DaysLeftOut >> weekday & 1) == 0 &&
                                             !(holiday && timer.RestsOnHolidays);
    const auto event = events[static_cast<std::size_t>(timer.What)];
    if (runs && event) planAt(*event + timer.Minutes, FirstTimer + i);
  }
  const auto open = HourMinute(state, day, false);
  const auto close = HourMinute(state, day, true);
  if (open && open != close) planAt(*open, OpenEvent);
  if (close) planAt(*close, CloseEvent);
  const Calendar::Saving saving = calendar.SavingOf(date.Year);
  for (const Instant change : {saving.Start, saving.End}) {
    if (saving.Start != saving.End && change / DayMs == day) PlanAt(state, change, ClockChange);
  }
  for (const int number : settings.Inputs.LevelSwitches) {
    if (number >= Items) break;
    const auto at = static_cast<std::size_t>(number);
    const int enable = settings.Inputs.EnableQuarter[at];
    const int disable = settings.Inputs.DisableQuarter[at];
    if (enable == disable) continue;
    for (const int quarter : {enable, disable}) planAt(MinuteOf(day, quarter), ActiveEdge);
  }
}

void PlanMidnight(EngineState& state, std::int64_t day) {
  std::vector<std::int64_t>& plan = state.Days.Plan;
  PlanAt(state, state.Settings->Days.FromWallMinute(day * DayMinutes), NewDay);
  std::sort(plan.begin() + static_cast<std::ptrdiff_t>(state.Days.PlanHead), plan.end());
}

void PlanAnew(EngineState& state) {
  state.Days.Plan.clear();
  state.Days.PlanHead = 0;
  const std::int64_t today = TodayOf(state);
  // An offset carries a timer into the day before or after.
  for (std::int64_t day = today - 1; day <= today + 1; ++day) PlanDay(state, day);
  PlanMidnight(state, today + 1);
}

void PlanTomorrow(EngineState& state) {
  DayState& days = state.Days;
  days.Plan.erase(days.Plan.begin(),
                  days.Plan.begin() + static_cast<std::ptrdiff_t>(days.PlanHead));
  days.PlanHead = 0;
  PlanDay(state, TodayOf(state) + 1);
  PlanMidnight(state, TodayOf(state) + 1);
}

void OpenBuilding(EngineState& state) {
  state.Days.IsOpen = true;
  state.Days.NextSweep.reset();
  state.Coming.Forget(Due::OverrideOver, 0);
}

/// Whether the building is open, by what came last, and the sweep that goes on.
void StartHours(EngineState& state) {
  constexpr int daysBack = 7;
  DayState& days = state.Days;
  bool isOpen = true;
  Instant last = -1;
  const std::int64_t today = TodayOf(state);
  for (std::int64_t day = today; day >= today - daysBack && last < 0; --day) {
    for (const bool close : {false, true}) {
      const auto hour = HourMinute(state, day, close);
      const Instant at = hour ? state.Settings->Days.FromWallMinute(*hour) : days.Undone;
      if (at >= days.Undone || at < last) continue;
      last = at;
      isOpen = !close;
    }
  }
  if (isOpen) return OpenBuilding(state);
  days.IsOpen = false;
  days.NextSweep.reset();
  const HoursSettings& hours = state.Settings->Hours;
  if (hours.Swept == 0) return;
  days.NextSweep = last + (days.Undone - last + hours.SweepMs - 1) / hours.SweepMs * hours.SweepMs;
}

void FireTimer(EngineState& state, int timer) {
  if (Has(state.Days.DisabledTimers, timer)) return;
  const Subject cause{Subject::Kind::Timer, timer, 0};
  state.Begin(cause);
  state.TellFires(cause, state.Settings->Timers[static_cast<std::size_t>(timer)].NamedWords);
  RunTimer(state, timer, cause);
}

}  // namespace

std::optional<Instant> NextPlanned(const EngineState& state) {
  const DayState& days = state.Days;
  if (days.PlanHead == days.Plan.size()) return std::nullopt;
  return days.Plan[days.PlanHead] / OrdersAnInstant;
}

void RunPlanned(EngineState& state) {
  DayState& days = state.Days;
  const int order = static_cast<int>(days.Plan[days.PlanHead++] % OrdersAnInstant);
  const Subject clock{Subject::Kind::Clock, 0, 0};
  switch (order) {
    case NewDay:
      PlanTomorrow(state);
      break;
    case ClockChange:
      state.TellFires(clock, state.Settings->Days.InSaving(state.Now) ? "daylight saving begins"
                                                                      : "daylight saving ends");
      break;
    case OpenEvent:
      OpenBuilding(state);
      break;
    case CloseEvent:
      days.IsOpen = false;
      if (state.Settings->Hours.Swept != 0) days.NextSweep = state.Now + reading::FirstSweepMs;
      break;
    case ActiveEdge:
      state.Begin(clock);
      RunLevelSwitches(state, clock);
      break;
    default:
      FireTimer(state, order - FirstTimer);
  }
}

void RunSweep(EngineState& state) {
  const HoursSettings& hours = state.Settings->Hours;
  *state.Days.NextSweep += hours.SweepMs;
  const Subject cause{Subject::Kind::Sweep, 0, 0};
  state.Begin(cause);
  state.TellFires(cause, "off hours sweep");
  const Mask waiting = state.Coming.RelaysWaiting(Due::OverrideOver) |
                       state.Coming.RelaysWaiting(Due::TimeOver) | OccupiedRelays(state);
  TellRelays(state, 0, hours.Swept & ~waiting, reading::OffBySweep);
  Settle(state, cause);
}

void StartDays(EngineState& state) {
  StartHours(state);
  PlanAnew(state);
}

int PanelWeekday(const EngineState& state, std::int64_t day) {
  return (WeekdayOf(day) + state.Days.WeekdayShift) % 7;
}

SunAndHours HoursOf(const EngineState& state, std::int64_t day) {
  const DayEvents events = EventsOf(state, day, true);
  const auto at = [&](TimerSetting::Event event) {
    const auto minute = events[static_cast<std::size_t>(event)];
    return minute ? std::optional<Instant>(state.Settings->Days.FromWallMinute(*minute))
                  : std::nullopt;
  };
  using enum TimerSetting::Event;
  return {at(Sunrise), at(Sunset), at(Open), at(Close)};
}

}  // namespace simulator
