#include "screen_test.h"

// What every control stores, and whether it marks the project as changed.

namespace {

class EveryEditTest : public ScreenTest {
 public:
  using ScreenTest::Cell;
  using ScreenTest::Choose;
  using ScreenTest::ChooseInPlace;
  using ScreenTest::Click;
  using ScreenTest::Find;
};

using Action = std::function<void(EveryEditTest&)>;
using Text = const char*;

Action Open(Text cell, int index) {
  return [=](EveryEditTest& t) { t.Click(t.Cell(cell, index)); };
}
/// The choice alone, in a list that is open.
Action Take(Text list, int item) {
  return [=](EveryEditTest& t) { t.ChooseInPlace(list, item); };
}
Action Pick(Text cell, int index, Text list, int item) {
  return [=](EveryEditTest& t) {
    Open(cell, index)(t);
    Take(list, item)(t);
  };
}
Action Choose(Text list, int item) {
  return [=](EveryEditTest& t) { t.Choose(list, item); };
}
Action Press(Text button) {
  return [=](EveryEditTest& t) { t.Find<QAbstractButton>(button).click(); };
}
Action Slide(Text bar, int value) {
  return [=](EveryEditTest& t) { t.Find<ScrollBar>(bar).setValue(value); };
}
Action Type(Text box, Text text) {
  return [=](EveryEditTest& t) {
    t.Find<TextBox>(box).selectAll();
    QTest::keyClicks(&t.Find<TextBox>(box), text);
  };
}
Action RightClick(Text name, Qt::KeyboardModifiers held = {}) {
  return [=](EveryEditTest& t) { QTest::mouseClick(&t.Find<Label>(name), Qt::RightButton, held); };
}
template <typename Field, typename Value>
Action Set(Field& field, Value value) {
  return [&field, value](EveryEditTest&) { field = static_cast<Field>(value); };
}
Action Both(const Action& first, const Action& second) {
  return [=](EveryEditTest& t) {
    first(t);
    second(t);
  };
}
/// Bus device 2, of a type, chosen on the screen.
Action Device(Text list, int type) {
  return Both(Set(FennlinkRecords(2).DeviceType, type), Choose(list, 2));
}
template <typename Field, typename Value>
std::function<void()> Is(const Field& field, Value value) {
  return [&field, value] { EXPECT_EQ(field, value); };
}
void Nothing(EveryEditTest&) {}

constexpr bool Marks = true;
constexpr bool MarksNot = false;

struct Edit {
  Text Entry;      ///< The menu entry of the screen, or its name where the entry leads to several.
  Action Prepare;  ///< Before the project is unmarked.
  Action Do;
  bool Marks;
  std::function<void()> Stored = {};
};

std::vector<Edit> Edits() {
  auto& p = PanelRecord;
  FennlinkRecord& d = FennlinkRecords(2);
  constexpr auto shift = Qt::ShiftModifier;
  return {
      {"mnuRelayOutputOptions", Nothing, Open("lblTimerType", 1), MarksNot},
      {"mnuRelayOutputOptions", Nothing, Pick("lblTimerType", 1, "cboNewTimerType", 3), Marks,
       Is(p.RelayTimerType(1), 3)},
      {"mnuRelayOutputOptions", Nothing, Pick("lblPowerOnType", 2, "cboNewPowerOnType", 1), Marks,
       Is(p.RelayPowerOnType(2), 1)},
      {"mnuRelayOutputOptions", Set(p.RelayTimerType(0), 6), RightClick("lblRelayName(0)"), Marks,
       Is(p.RelayTimerType(5), 0)},
      {"mnuRelayOutputOptions", Set(p.RelayTimerType(0), 6), RightClick("lblRelayName(0)", shift),
       Marks, Is(p.RelayTimerType(7), 6)},
      {"mnuRelayGrouping", Nothing, Choose("cboGroup", 3), MarksNot},
      {"mnuRelayGrouping", Nothing, Open("lblInclude", 4), Marks,
       Is(p.GroupRelayInclude(0, 4), -1)},
      {"mnuRelayGrouping", Nothing, RightClick("lblRelayName(1)"), Marks},
      {"mnuEditPresets", Nothing, Open("lblRelayControl", 4), Marks,
       Is(p.PresetRelayControl(0, 4), 1)},
      {"mnuEditPresets", Set(p.PresetRelayControl(0, 0), 2), RightClick("lblRelayName(0)", shift),
       Marks, Is(p.PresetRelayControl(0, 7), 2)},
      {"mnuOffHoursSweepRelays", Set(p.OffHoursSweepRelay(2), 0), Open("lblRelayInclude", 2), Marks,
       Is(p.OffHoursSweepRelay(2), -1)},
      {"mnuOffHoursSweepGroups", Set(p.OffHoursSweepGroup(9), 0), Open("lblGroupInclude", 9), Marks,
       Is(p.OffHoursSweepGroup(9), -1)},
      {"mnuOffHoursSweepInterval", Nothing, Press("optOffHoursSweepInterval(2)"), Marks,
       Is(p.OffHoursSweepInterval, 2)},
      {"mnuConfigureTimedOn", Nothing, Press("optTimedOnOperation(1)"), Marks,
       Is(p.TimedOnOperation, -1)},
      {"mnuInputOptions", Nothing, Pick("lblInputType", 3, "cboNewType", 5), Marks,
       Is(p.InputType(3), 5)},
      {"mnuInputOptions", Pick("lblInputType", 3, "cboNewType", 5),
       Pick("lblInputTimedOn", 3, "cboNewTime", 2), Marks, Is(p.InputTimedOnTime(3), 7)},
      {"mnuInputToRelayControl", Nothing, Open("lblControl", 2), Marks},
      {"mnuInputToRelayControl", Open("lblControl", 2), Take("cboControl", 2), Marks,
       Is(p.InputRelayControl(0, 2), 2)},
      {"mnuInputToRelayControl", Both(Set(p.InputType(4), 4), Choose("cboInput", 4)),
       Choose("cboPreset", 8), Marks, Is(p.InputPreset(4), 8)},
      {"mnuInputToGroupControl", Open("lblControl", 40), Take("cboControl", 1), Marks,
       Is(p.InputGroupControl(0, 40), 1)},
      {"mnuLocalInputPilots", Set(p.LocalPilot(1), 64),
       Pick("lblPilotSource", 1, "cboNewSource", 2), Marks, Is(p.LocalPilot(1), 128)},
      {"mnuLocalInputPilots", Set(p.LocalPilot(1), 64),
       Pick("lblPilotNumber", 1, "cboNewNumber", 5), Marks, Is(p.LocalPilot(1), 69)},
      {"mnuConfigureFennlinkDevices", Device("cboFLinkDevice", 1), Choose("cboFLinkType", 4), Marks,
       Is(d.DeviceType, 4)},
      {"mnuConfigureFennlinkDevices", Device("cboFLinkDevice", 7), Choose("cboInput7Type(1)", 2),
       Marks, Is(d.DeviceInputType(1), 2)},
      {"mnuConfigureFennlinkDevices",
       Both(Set(d.DeviceInputType(0), 3), Device("cboFLinkDevice", 2)),
       Pick("lblInput16TimedOn", 0, "cboInput16NewTime", 4), Marks, Is(d.DeviceTimedOnTime(0), 9)},
      {"mnuConfigureFennlinkDevices", Device("cboFLinkDevice", 9), Slide("hsInputFOffLevel(2)", 77),
       Marks, Is(d.DeviceOffLevel(2), 77)},
      {"mnuConfigureFennlinkDevices", Device("cboFLinkDevice", 9), Slide("hsInputFOnLevel(2)", 78),
       Marks, Is(d.DeviceOnLevel(2), 78)},
      {"mnuFennlinkInputToRelayControl", Device("cboFennlinkDevice", 4),
       Pick("lblControl", 3, "cboControl", 1), Marks, Is(d.DeviceRelayControl(0, 3), 1)},
      {"mnuFennlinkInputToGroupControl", Device("cboFennlinkDevice", 4),
       Pick("lblControl", 3, "cboControl", 1), Marks, Is(d.DeviceGroupControl(0, 3), 1)},
      {"mnuFennlinkPilots", Both(Set(d.DevicePilot(1), 64), Device("cboFennlinkDevice", 4)),
       Pick("lblPilotSource", 1, "cboNewSource", 2), Marks, Is(d.DevicePilot(1), 128)},
      {"mnuFennlinkPilots", Both(Set(d.DevicePilot(1), 64), Device("cboFennlinkDevice", 4)),
       Pick("lblPilotNumber", 1, "cboNewNumber", 6), Marks, Is(d.DevicePilot(1), 70)},
      {"mnuConfigureTimers", Nothing, Choose("cboNormalTimeHour", 3), Marks,
       Is(p.TimerTimeType(0), 3)},
      {"mnuConfigureTimers", Nothing, Choose("cboNormalTimeMinute", 31), Marks,
       Is(p.TimerTime(0), 31)},
      {"mnuConfigureTimers", Nothing, Press("optTimeType(1)"), Marks},
      {"mnuConfigureTimers", Press("optTimeType(1)"), Choose("cboMinuteFromAstro", 25), Marks,
       Is(p.TimerTime(0), 25)},
      {"mnuConfigureTimers", Nothing, Press("optDaysType(1)"), Marks,
       Is(p.TimerHolidayMonth(0), 1)},
      {"mnuConfigureTimers", Press("optDaysType(1)"), Choose("cboHolidayMonth", 6), Marks,
       Is(p.TimerHolidayMonth(0), 7)},
      {"mnuConfigureTimers", Press("optDaysType(1)"), Choose("cboHolidayDate", 20), Marks,
       Is(p.TimerHolidayDate(0), 21)},
      {"mnuConfigureTimers", Nothing, Press("chkDays(1)"), MarksNot},
      {"mnuTimerToRelayControl", Nothing, Open("lblControl", 6), Marks},
      {"mnuTimerToRelayControl", Open("lblControl", 6), Take("cboControl", 2), Marks,
       Is(p.TimerRelayControl(0, 6), 2)},
      {"mnuTimerToGroupControl", Open("lblControl", 6), Take("cboControl", 1), Marks,
       Is(p.TimerGroupControl(0, 6), 1)},
      {"mnuTimerToPresetControl", Open("lblControl", 6), Take("cboControl", 1), Marks,
       Is(p.TimerPresetControl(0, 6), 1)},
      {"mnuBlinkAlertAndAlarmSettings", Nothing, Choose("cboBlinkAlert", 3), Marks,
       Is(p.BlinkAlertMinutes, 5)},
      {"mnuBlinkAlertAndAlarmSettings", Nothing, Choose("cboOverRide", 30), Marks,
       Is(p.OverrideMinutes, 35)},
      {"mnuBlinkAlertAndAlarmSettings", Nothing, Choose("cboAlarm", 7), Marks,
       Is(p.AlarmSeconds, 8)},
      {"mnuDaylightSavingTime", Nothing, Press("chkEnableDaylightSavingTime"), Marks},
      {"mnuDaylightSavingTime", Nothing, Choose("cboDSTStartWeek", 3), Marks,
       Is(p.DSTStartWeek, 4)},
      {"mnuDaylightSavingTime", Nothing, Choose("cboDSTStartMonth", 4), Marks,
       Is(p.DSTStartMonth, 5)},
      {"mnuDaylightSavingTime", Nothing, Choose("cboDSTEndWeek", 2), Marks, Is(p.DSTEndWeek, 3)},
      {"mnuDaylightSavingTime", Nothing, Choose("cboDSTEndMonth", 6), Marks, Is(p.DSTEndMonth, 7)},
      {"mnuAstroClockSettings", Nothing, Choose("cboLatitude", 5), Marks, Is(p.Latitude, 25)},
      {"mnuAstroClockSettings", Press("cmdFindLatLon"), Press("cmdAccept"), Marks},
      {"mnuOpenCloseTimeNormalDays", Nothing, Open("lblOpenTime", 2), Marks},
      {"mnuOpenCloseTimeNormalDays", Nothing, Pick("lblOpenTime", 2, "cboNewTime", 30), Marks,
       Is(p.NormalOpenTime(2), 30)},
      {"mnuSetup", Nothing, Open("lblIOCount", 1), Marks},
      {"mnuSetup", Open("lblIOCount", 1), Take("cboIOCount", 2), Marks, Is(p.IOCount(1), 2)},
      {"mnuSetup", Nothing, Press("optAddOnModuleType(1)"), Marks, Is(p.AddOnModuleType, 1)},
      {"frmT3AddOnModuleDMX", Nothing, Pick("lblDMXChan", 2, "cboNewDMX", 7), Marks,
       Is(p.DMXChannel(2), 7)},
      {"frmT3AddOnModuleDMX", Nothing, Choose("cboOnLevel", 80), Marks, Is(p.DMXOnLevel, 81)},
      {"frmT3AddOnModuleDMX", Nothing, Choose("cboOffLevel", 20), Marks, Is(p.DMXOffLevel, 21)},
      {"frmT3AddOnModuleDMX", Nothing, Choose("cboFilter", 15), Marks, Is(p.DMXFilter, 15)},
      {"frmT3AddOnModuleDMX", Set(p.DMXChannel(0), 510), Press("cmdAutoMap"), Marks,
       Is(p.DMXChannel(2), 512)},
      {"frmT3AddOnModuleModBus", Nothing, Choose("cboMode", 1), Marks, Is(p.ModBusMode, 1)},
      {"frmT3AddOnModuleModBus", Nothing, Choose("cboBaud", 3), Marks, Is(p.ModBusBaud, 3)},
      {"frmT3AddOnModuleModBus", Nothing, Choose("cboParity", 2), Marks, Is(p.ModBusParity, 2)},
      {"mnuEditRelayNames", Nothing, Type("txtRelayName(2)", "ab"), Marks,
       Is(p.RelayName(2), "AB")},
      {"mnuEditPanelName", Nothing, Type("txtPanelName", "ab"), Marks, Is(p.PanelName, "AB")},
      {"mnuEditPanelName", Type("txtPanelName", "ab"), Press("chkDefaultPanelName"), Marks,
       Is(p.PanelName, "")},
      {"mnuConnect", Nothing, Press("chkConnectionType(1)"), MarksNot, Is(ConnectionType(), 1)},
      {"mnuConnect", Press("chkConnectionType(2)"), Type("txtTCPIP", "1"), Marks,
       Is(TcpAddress(), "1")},
      {"mnuConnect", Press("chkConnectionType(1)"), Type("txtPhoneNumber", "1"), Marks,
       Is(PhoneNumber(), "1")},
      {"mnuConfigureDimmers", Nothing, Press("chkEnabled"), Marks},
  };
}

TEST_F(EveryEditTest, StoresAndMarksAsTold) {
  int row = 0;
  for (const Edit& edit : Edits()) {
    SCOPED_TRACE("row " + std::to_string(row++) + ", " + edit.Entry);
    Menu("mnuNew");
    FennlinkRecords(2) = {};
    for (int node = 0; node < NodeCount; ++node) PanelRecord.IOCount(node) = node == 0 ? 8 : 0;
    if (QByteArray(edit.Entry).startsWith("frm")) {
      window->ShowForm(edit.Entry);
    } else {
      Menu(edit.Entry);
    }
    edit.Prepare(*this);
    DataChanged = 0;
    edit.Do(*this);
    EXPECT_EQ(DataChanged, edit.Marks ? -1 : 0);
    if (edit.Stored) edit.Stored();
    DataChanged = 0;
  }
  EXPECT_TRUE(messages.empty());
}

}  // namespace
