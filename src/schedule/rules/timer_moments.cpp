#include "schedule/rules/timer_moments.h"

#include <algorithm>

#include "panel/dimmer_fields.h"
#include "panel/time_values.h"

namespace {

constexpr int HoursOfDay = 24;
constexpr int MinutesOfHour = 60;
constexpr int LowByteOfKind = 0xFF;  ///< Of a kind of time: the rest means nothing.
constexpr int HolidayMask = 1 << HolidayBit;
/// An offset carries a timer into the day before or after.
constexpr int DaysAside = 1;

/// The timers that the slots of enabled dimmers name.
TimerSet TimersOfSlots(const DimmerBlockType& dimmers) {
  TimerSet timers;
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (!DimmerEnabled(dimmers, dev)) continue;
    for (int out = 0; out < DimmerOutputCount; ++out) {
      const DimmerOutput output(dimmers, dev, out);
      for (int slot = 0; slot < ControlSlotCount; ++slot) {
        const int number = output(dim::ControlNumber, slot);
        if (output(dim::ControlType, slot) == ControlTimer && number >= 0 && number < ItemCount)
          timers.set(static_cast<std::size_t>(number));
      }
    }
  }
  return timers;
}

bool SwitchesAnything(const PanelRecordType& panel, int timer) {
  const auto isOnOrOff = [](Int16 code) { return code == 1 || code == 2; };
  for (int target = 0; target < ItemCount; ++target) {
    if (isOnOrOff(panel.TimerRelayControl(timer, target)) ||
        isOnOrOff(panel.TimerGroupControl(timer, target)) ||
        panel.TimerPresetControl(timer, target) != 0) {
      return true;
    }
  }
  return false;
}

bool HasTime(const PanelRecordType& panel, int timer) {
  return (panel.TimerTimeType(timer) & LowByteOfKind) >= HoursOfDay ||
         panel.TimerTime(timer) < MinutesOfHour;
}

}  // namespace

TimerEvent EventOf(TimerTimeValue time) {
  const auto type = static_cast<Int16>(time.Type & LowByteOfKind);
  const TimeKind kind = KindOfTime(type);
  if (kind == TimeKind::Normal) return TimerEvent::Midnight;
  const bool second = EventOfTime(type) >= 2;
  if (kind == TimeKind::Astro) return second ? TimerEvent::Sunset : TimerEvent::Sunrise;
  return second ? TimerEvent::Close : TimerEvent::Open;
}

int MinutesFromEvent(TimerTimeValue time) {
  const TimerTimeValue sound{static_cast<Int16>(time.Type & LowByteOfKind), time.Time};
  if (EventOf(sound) == TimerEvent::Midnight) return sound.Type * MinutesOfHour + sound.Time;
  const int offset = OffsetOfTime(sound);
  const bool after = EventOfTime(sound.Type) % 2 != 0;
  return after ? offset : -offset;
}

TimerMoments::TimerMoments(const Project& project, Days days, const TimerSet& only)
    : panel_(project.Panel), kind_(days), days_(project.Panel) {
  const TimerSet ofSlots = TimersOfSlots(project.Dimmers);
  for (int timer = 0; timer < ItemCount; ++timer) {
    const auto at = static_cast<std::size_t>(timer);
    if (!only[at] || !HasTime(panel_, timer)) continue;
    // One that controls nothing has not been set up.
    if (ofSlots[at] || SwitchesAnything(panel_, timer)) timers_.push_back(Read(panel_, timer));
  }
}

TimerMoments::Timer TimerMoments::Read(const PanelRecordType& panel, int timer) {
  const TimerTimeValue time{panel.TimerTimeType(timer), panel.TimerTime(timer)};
  const Int16 days = panel.TimerDays(timer);
  return {timer,
          EventOf(time),
          MinutesFromEvent(time),
          days,
          (days & HolidayMask) != 0,
          panel.TimerHolidayMonth(timer),
          panel.TimerHolidayDate(timer)};
}

bool TimerMoments::RunsOn(const Timer& timer, QDate day) const {
  if (timer.Month != 0) return timer.Month == day.month() && timer.Date == day.day();
  const bool leftOut = (timer.DaysLeftOut >> day.dayOfWeek() % 7 & 1) != 0;
  return !leftOut && !(timer.RestsOnHolidays && days_.IsHoliday(day));
}

TimerMoments::Events TimerMoments::EventsOf(QDate day, bool sun) const {
  using enum TimerEvent;
  Events events;
  const auto at = [&](TimerEvent event) -> auto& {
    return events[static_cast<std::size_t>(event)];
  };
  const WallMinute midnight = FirstMinuteOf(day);
  at(Midnight) = midnight;
  at(Open) = days_.OpenTime(day);
  at(Close) = days_.CloseTime(day);
  if (kind_ == Days::Even) {
    at(Sunrise) = midnight + MinutesPerDay / 4;
    at(Sunset) = midnight + MinutesPerDay * 3 / 4;
  } else if (sun) {
    const PanelDays::Sun times = days_.SunOf(day);
    at(Sunrise) = times.Rise;
    at(Sunset) = times.Set;
  }
  return events;
}

WallMinute TimerMoments::AsItComes(WallMinute minute) const {
  return kind_ == Days::Real ? days_.AsItComes(minute) : minute;
}

std::vector<TimerMoment> TimerMoments::Between(QDate first, QDate last) const {
  const bool sun = std::any_of(timers_.begin(), timers_.end(),
                               [](const Timer& timer) { return IsOfSun(timer.From); });
  const WallMinute begin = FirstMinuteOf(first);
  const WallMinute end = FirstMinuteOf(last.addDays(1));
  std::vector<TimerMoment> moments;
  for (QDate day = first.addDays(-DaysAside); day <= last.addDays(DaysAside);
       day = day.addDays(1)) {
    const Events events = EventsOf(day, sun);
    for (const Timer& timer : timers_) {
      const auto& event = events[static_cast<std::size_t>(timer.From)];
      if (!event || !RunsOn(timer, day)) continue;
      const WallMinute at = AsItComes(*event + timer.Offset);
      if (at >= begin && at < end) moments.push_back({at, timer.Number});
    }
  }
  std::sort(moments.begin(), moments.end());
  return moments;
}

TimerSet TimerMoments::RunningOn(QDate day) const {
  TimerSet running;
  for (const Timer& timer : timers_) {
    if (RunsOn(timer, day)) running.set(static_cast<std::size_t>(timer.Number));
  }
  return running;
}

std::optional<TimerMoment> TimerMoments::Next(int timer, const QDateTime& after) const {
  constexpr int mostYears = 8;  // from one leap day to the next over 2100
  const auto found = std::find_if(timers_.begin(), timers_.end(),
                                  [timer](const Timer& one) { return one.Number == timer; });
  if (found == timers_.end()) return {};
  const WallMinute past =
      FirstMinuteOf(after.date()) + after.time().msecsSinceStartOfDay() / (MinutesOfHour * 1000);
  const QDate last = after.date().addYears(mostYears).addDays(DaysAside);
  for (QDate day = after.date().addDays(-DaysAside); day <= last; day = day.addDays(1)) {
    if (!RunsOn(*found, day)) continue;
    const auto event = EventsOf(day, IsOfSun(found->From))[static_cast<std::size_t>(found->From)];
    if (!event) continue;
    const WallMinute at = AsItComes(*event + found->Offset);
    if (at > past) return TimerMoment{at, timer};
  }
  return {};
}
