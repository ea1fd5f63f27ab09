#include "panel/fennlink_types.h"
#include "panel/field_facts.h"
#include "panel/input_actions.h"
#include "panel/time_values.h"

// Which numbers the lists of the editors have.

namespace {

bool IsPreset(Int32 number) {
  return number >= 0 && number < ItemCount;
}

bool IsTimedOnMinutes(Int32 minutes) {
  return minutes >= ShortestTimedOn && minutes <= LongestTimedOn;
}

std::optional<InputKind> KindOfDeviceInput(const Project& project, const Place& place) {
  const FennlinkRecord& device = project.Devices(place.Device);
  const bool used = place.First < FennlinkDevice(device.DeviceType).InputCount;
  return used ? FennlinkInputKind(device.DeviceType, device.DeviceInputType(place.First))
              : std::nullopt;
}

bool GoesByTheSun(const Project& project) {
  for (int timer = 0; timer < ItemCount; ++timer) {
    const int event = RelativeEventOf(project.Panel.TimerTimeType(timer));
    if (event >= 0 && event < AstroEventCount) return true;
  }
  return false;
}

}  // namespace

namespace told {

bool IsAnything(const Project&, const Place&, Int32) {
  return true;
}

bool IsAction(const Project&, const Place&, Int32 value) {
  return value >= 0;
}

bool IsPresetOfInput(const Project& project, const Place& place, Int32 value) {
  return LocalInputKind(project.Panel.InputType(place.First)) != InputKind::SetPreset ||
         IsPreset(value);
}

bool IsPresetOfDeviceInput(const Project& project, const Place& place, Int32 value) {
  return KindOfDeviceInput(project, place) != InputKind::SetPreset || IsPreset(value);
}

bool IsQuarter(const Project&, const Place&, Int32 value) {
  return value >= 0 && value < QuarterHoursPerDay;
}

bool IsQuarterOrNone(const Project& project, const Place& place, Int32 value) {
  return value == NoEntry || IsQuarter(project, place, value);
}

bool IsTimedOn(const Project& project, const Place& place, Int32 value) {
  return LocalInputKind(project.Panel.InputType(place.First)) != InputKind::TimedOn ||
         IsTimedOnMinutes(value);
}

bool IsDeviceTimedOn(const Project& project, const Place& place, Int32 value) {
  return KindOfDeviceInput(project, place) != InputKind::TimedOn || IsTimedOnMinutes(value);
}

bool IsKindOfTime(const Project&, const Place&, Int32 value) {
  const auto type = static_cast<Int16>(value);
  return KindOfTime(type) == TimeKind::Normal ? type >= 0 : RelativeEventOf(type) >= 0;
}

bool IsTimeOfTimer(const Project& project, const Place& place, Int32 value) {
  const Int16 type = project.Panel.TimerTimeType(place.First);
  if (KindOfTime(type) == TimeKind::Normal) return value >= 0 && value < 60;
  return value >= 0 && OffsetOfTime({type, static_cast<Int16>(value)}) <= LargestTimerOffset;
}

bool IsWeek(const Project& project, const Place&, Int32 value) {
  return project.Panel.DSTEnabled == 0 || !Word(DSTWeeks, value - 1).empty();
}

bool IsMonth(const Project& project, const Place&, Int32 value) {
  return project.Panel.DSTEnabled == 0 || !Word(MonthNames, value - 1).empty();
}

bool IsAddOnModule(const Project&, const Place&, Int32 value) {
  return !AddOnModuleOf(value).OptionText.empty();
}

bool IsDeviceType(const Project&, const Place&, Int32 value) {
  return value >= 0 && static_cast<std::size_t>(value) < FennlinkDeviceTypes.size();
}

bool IsTimerMonth(const Project&, const Place&, Int32 value) {
  return value == 0 || !Word(MonthNames, value - 1).empty();
}

bool IsTimerDate(const Project& project, const Place& place, Int32 value) {
  constexpr int lastDate = 31;
  return project.Panel.TimerHolidayMonth(place.First) == 0 || (value >= 1 && value <= lastDate);
}

bool IsLatitude(const Project& project, const Place& place, Int32 value) {
  return !GoesByTheSun(project) || IsWithin<LatitudeRange>(project, place, value);
}

bool IsLongitude(const Project& project, const Place& place, Int32 value) {
  return !GoesByTheSun(project) || IsWithin<LongitudeRange>(project, place, value);
}

bool IsDeviceInputType(const Project& project, const Place& place, Int32 value) {
  const Int16 type = project.Devices(place.Device).DeviceType;
  const bool chosen =
      place.First < FennlinkDevice(type).InputCount && !FennlinkInputKinds(type).empty();
  return !chosen || FennlinkInputKind(type, value).has_value();
}

}  // namespace told
