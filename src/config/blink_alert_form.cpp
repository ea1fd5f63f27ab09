#include "config/blink_alert_form.h"

#include "panel/live_project.h"
#include "panel/program_state.h"
#include "shell/controls/row_grid.h"

namespace {

constexpr int LeastBlinkAlertMinutes = 2;
constexpr int LeastOverrideMinutes = 5;
constexpr int LeastAlarmSeconds = 1;

}  // namespace

frmT3BlinkAlertAndAlarmSettings::frmT3BlinkAlertAndAlarmSettings()
    : ChildForm(Screen::BlinkAlertAndAlarmSettings,
                QStringLiteral("Blink Alert And Alarm Settings")) {}

void frmT3BlinkAlertAndAlarmSettings::Form_Load() {
  constexpr int captionChars = 12;
  const QString minutes = QStringLiteral(" Minutes");
  cboBlinkAlert = AddList(AddRow(), "cboBlinkAlert", QStringLiteral("Blink Alert"), captionChars);
  cboBlinkAlert->SetItems(NumberItems(LeastBlinkAlertMinutes, 99, {}, minutes));
  cboBlinkAlert->Click = [this] { cboBlinkAlert_Click(); };
  cboOverRide = AddList(AddRow(), "cboOverRide", QStringLiteral("OverRide"), captionChars);
  cboOverRide->SetItems(NumberItems(LeastOverrideMinutes, 999, {}, minutes));
  cboOverRide->Click = [this] { cboOverRide_Click(); };
  cboAlarm = AddList(AddRow(), "cboAlarm", QStringLiteral("Alarm"), captionChars);
  cboAlarm->SetItems(NumberItems(LeastAlarmSeconds, 99, {}, QStringLiteral(" Seconds")));
  cboAlarm->Click = [this] { cboAlarm_Click(); };
}

void frmT3BlinkAlertAndAlarmSettings::Form_Activate() {
  cboBlinkAlert->SetListIndex(PanelRecord.BlinkAlertMinutes - LeastBlinkAlertMinutes);
  cboOverRide->SetListIndex(PanelRecord.OverrideMinutes - LeastOverrideMinutes);
  cboAlarm->SetListIndex(PanelRecord.AlarmSeconds - LeastAlarmSeconds);
}

void frmT3BlinkAlertAndAlarmSettings::cboBlinkAlert_Click() {
  PanelRecord.BlinkAlertMinutes =
      static_cast<Int16>(cboBlinkAlert->ListIndex() + LeastBlinkAlertMinutes);
  DataChanged = -1;
}

void frmT3BlinkAlertAndAlarmSettings::cboOverRide_Click() {
  PanelRecord.OverrideMinutes = static_cast<Int16>(cboOverRide->ListIndex() + LeastOverrideMinutes);
  DataChanged = -1;
}

void frmT3BlinkAlertAndAlarmSettings::cboAlarm_Click() {
  PanelRecord.AlarmSeconds = static_cast<Int16>(cboAlarm->ListIndex() + LeastAlarmSeconds);
  DataChanged = -1;
}
