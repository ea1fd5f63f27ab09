#include "document/rules/text/doc_sections.h"
#include "panel/panel_record.h"
#include "panel/time_values.h"
#include "panel/words.h"

namespace {

constexpr Int16 SwitchOn = 1;
constexpr Int16 SwitchOff = 2;

/// The numbers, below `count`, of the targets that `source` switches with `code`, in one cell.
void SwitchedCell(DocumentText& text, const ItemTable& table, int source, int count, Int16 code) {
  text.Cell().Items(
      "", count, [&](int target) { return table(source, target) == code; }, 1);
}

void TimeCell(DocumentText& text, TimerTimeValue time) {
  text.Cell();
  if (time.Type >= 0 && KindOfTime(time.Type) == TimeKind::Normal) {
    text.Time(time.Type * 60 + time.Time);
    return;
  }
  const std::string_view event = Word(RelativeEvents, RelativeEventOf(time.Type));
  if (!event.empty()) text.Number(OffsetOfTime(time), 3).Text(" ").Text(event);
}

void DaysCell(DocumentText& text, const PanelRecordType& panel, int timer) {
  const Int16 month = panel.TimerHolidayMonth(timer);
  if (month != 0) {
    text.Cell(month, 2).Text("/").Number(panel.TimerHolidayDate(timer), 2);
  } else {
    text.Cell(DayMaskText(panel.TimerDays(timer)));
  }
}

void SweepBlock(DocumentText& text, std::string_view item, int count, const NameArray& names,
                const ItemArray& swept) {
  const std::string word(item);
  text.Title("Off Hours Sweeps " + word + " Schedule");
  text.Header({word + " Number", word + " Name", "Include In Off Hours Sweeps"});
  for (int i = 0; i < count; ++i) {
    text.Cell(i + 1, 2).Cell(names(i)).Cell(swept(i) != 0 ? "Yes" : "No").EndRow();
  }
}

void OpenCloseMonth(DocumentText& text, const PanelRecordType& panel, std::string_view name,
                    int month, int days) {
  /// From here on an open time stands for none; the editor draws the line at 100.
  constexpr Int16 noEntry = 97;
  for (int date = 0; date < days; ++date) {
    const Int16 open = panel.DateOpenTime(month, date);
    text.Cell(name).Text(" ").Number(date + 1, 2);
    if (open < noEntry) {
      text.Cell().QuarterHours(open).Cell().QuarterHours(panel.DateCloseTime(month, date));
    } else {
      text.Cell("--:--").Cell("--:--");
    }
    text.EndRow();
  }
}

}  // namespace

void DocTimerSchedule(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  text.Title("Timer Relay/Group/Preset Schedule");
  text.Header({"Timer Number", "Timer Name", "Time", "Days", "Off Relays", "On Relays",
               "Off Groups", "On Groups", "Presets"},
              "Timer Schedule");
  const int ioCount = PanelIOCount(project.Panel);
  for (int timer = 0; timer < ItemCount; ++timer) {
    text.Cell(timer + 1, 2).Cell(panel.TimerName(timer));
    TimeCell(text, {panel.TimerTimeType(timer), panel.TimerTime(timer)});
    DaysCell(text, panel, timer);
    SwitchedCell(text, panel.TimerRelayControl, timer, ioCount, SwitchOff);
    SwitchedCell(text, panel.TimerRelayControl, timer, ioCount, SwitchOn);
    SwitchedCell(text, panel.TimerGroupControl, timer, ItemCount, SwitchOff);
    SwitchedCell(text, panel.TimerGroupControl, timer, ItemCount, SwitchOn);
    text.Cell().Items(
        "", ItemCount, [&](int preset) { return panel.TimerPresetControl(timer, preset) != 0; }, 1);
    text.EndRow();
  }
}

void DocPresetSchedule(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  text.Title("Preset Schedule");
  text.Header({"Preset Number", "Preset Name", "Off Relays", "On Relays"});
  const int ioCount = PanelIOCount(project.Panel);
  for (int preset = 0; preset < ItemCount; ++preset) {
    text.Cell(preset + 1, 2).Cell(panel.PresetName(preset));
    SwitchedCell(text, panel.PresetRelayControl, preset, ioCount, SwitchOff);
    SwitchedCell(text, panel.PresetRelayControl, preset, ioCount, SwitchOn);
    text.EndRow();
  }
}

void DocOffHoursSweepsSchedule(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  SweepBlock(text, "Relay", PanelIOCount(project.Panel), panel.RelayName, panel.OffHoursSweepRelay);
  SweepBlock(text, "Group", ItemCount, panel.GroupName, panel.OffHoursSweepGroup);
}

void DocOpenCloseTimesSchedule(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  text.Title("Open Close Times Schedule");
  text.Header({"Day Of Week", "Open Time", "Close Time"});
  int day = 0;
  for (const std::string_view name : WeekdayNames) {
    text.Cell(name).Cell().QuarterHours(panel.NormalOpenTime(day));
    text.Cell().QuarterHours(panel.NormalCloseTime(day)).EndRow();
    ++day;
  }
  text.Header({"Date Of Year", "Open Time", "Close Time"}, "Open Close Dates");
  for (std::size_t month = 0; month < MonthNames.size(); ++month) {
    OpenCloseMonth(text, panel, ShortName(MonthNames[month]), static_cast<int>(month),
                   MonthDays[month]);
  }
}
