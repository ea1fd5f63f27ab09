#include "config/blink_alert_form.h"

#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/controls/row_grid.h"

namespace {

/// Each number of a range, with its unit.
QStringList ItemsOf(const ListRange& range, const QString& unit) {
  return NumberItems(range.First, range.Last, {}, unit);
}

}  // namespace

frmT3BlinkAlertAndAlarmSettings::frmT3BlinkAlertAndAlarmSettings()
    : ChildForm(Screen::BlinkAlertAndAlarmSettings,
                QStringLiteral("Blink Alert And Alarm Settings")) {}

void frmT3BlinkAlertAndAlarmSettings::Form_Load() {
  constexpr int captionChars = 12;
  const QString minutes = QStringLiteral(" Minutes");
  cboBlinkAlert = AddList(AddRow(), "cboBlinkAlert", QStringLiteral("Blink Alert"), captionChars);
  cboBlinkAlert->SetItems(ItemsOf(BlinkAlertRange, minutes));
  cboBlinkAlert->Click = [this] { cboBlinkAlert_Click(); };
  cboOverRide = AddList(AddRow(), "cboOverRide", QStringLiteral("OverRide"), captionChars);
  cboOverRide->SetItems(ItemsOf(OverrideRange, minutes));
  cboOverRide->Click = [this] { cboOverRide_Click(); };
  cboAlarm = AddList(AddRow(), "cboAlarm", QStringLiteral("Alarm"), captionChars);
  cboAlarm->SetItems(ItemsOf(AlarmRange, QStringLiteral(" Seconds")));
  cboAlarm->Click = [this] { cboAlarm_Click(); };
}

void frmT3BlinkAlertAndAlarmSettings::Form_Activate() {
  cboBlinkAlert->SetListIndex(PanelRecord.BlinkAlertMinutes - BlinkAlertRange.First);
  cboOverRide->SetListIndex(PanelRecord.OverrideMinutes - OverrideRange.First);
  cboAlarm->SetListIndex(PanelRecord.AlarmSeconds - AlarmRange.First);
}

void frmT3BlinkAlertAndAlarmSettings::cboBlinkAlert_Click() {
  PanelRecord.BlinkAlertMinutes =
      static_cast<Int16>(cboBlinkAlert->ListIndex() + BlinkAlertRange.First);
  DataChanged = -1;
}

void frmT3BlinkAlertAndAlarmSettings::cboOverRide_Click() {
  PanelRecord.OverrideMinutes = static_cast<Int16>(cboOverRide->ListIndex() + OverrideRange.First);
  DataChanged = -1;
}

void frmT3BlinkAlertAndAlarmSettings::cboAlarm_Click() {
  PanelRecord.AlarmSeconds = static_cast<Int16>(cboAlarm->ListIndex() + AlarmRange.First);
  DataChanged = -1;
}
