#include <QRegularExpression>

#include "panel/dimmer_words.h"
#include "panel/live_dimmers.h"
#include "panel/live_project.h"
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

  /// All that the screen shows, one control a line.
  QStringList Look() {
    QStringList look;
    for (const QWidget* control : window->centralWidget()->findChildren<QWidget*>()) {
      const QString name = control->objectName();
      if (name.isEmpty() || name.startsWith("qt_") || name.startsWith("lblPanelChar") ||
          name == "lblMark") {
        continue;  // Names are displayed as they are typed.
      }
      QString value;
      if (const auto* label = qobject_cast<const Label*>(control)) {
        value = label->Caption() + QString::number(label->BackColor().value_or(1)) +
                QString::number(label->Checked());
      } else if (const auto* list = qobject_cast<const ComboBox*>(control)) {
        value = list->currentText();
      } else if (const auto* button = qobject_cast<const QAbstractButton*>(control)) {
        value = button->text() + QString::number(button->isChecked());
      } else if (const auto* box = qobject_cast<const TextBox*>(control)) {
        value = box->Text();
      } else if (const auto* bar = qobject_cast<const ScrollBar*>(control)) {
        value = QString::number(bar->Value());
      }
      const bool shown = control->isVisibleTo(window.get());
      look << name + (shown ? ": " : ", hidden: ") + (shown ? value : QString());
    }
    return look;
  }
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
template <typename Field, typename Value>
std::function<void()> Is(const Field& field, Value value) {
  return [&field, value] { EXPECT_EQ(field, value); };
}
/// Marks what the button does not mark.
void AutoMap(EveryEditTest& t) {
  t.Find<QAbstractButton>("cmdAutoMapThisFL").click();
  EXPECT_EQ(DataChanged, 0);
  DataChanged = -1;
}
void Nothing(EveryEditTest&) {}
void Unmark(EveryEditTest&) {
  DataChanged = 0;
}

constexpr bool Marks = true;
constexpr bool MarksNot = false;

struct Edit {
  Text Entry;      ///< The menu entry of the screen, or its name where the entry leads to several.
  Action Prepare;  ///< Before the project is unmarked.
  Action Do;
  bool Marks;
  std::function<void()> Stored = {};
  Action Select = Nothing;  ///< Which item the screen shows.
};

/// An edit of bus device 2, which is of a type.
Edit OnDevice(Text entry, Text list, int type, const Action& edit, std::function<void()> stored,
              const Action& prepare = Nothing) {
  return {entry,
          Both(Set(FennlinkRecords(2).DeviceType, type), prepare),
          edit,
          Marks,
          std::move(stored),
          Choose(list, 2)};
}

/// An edit of the first output of an enabled dimmer, whose first slot is of a type.
Edit OnDimmer(Int16 slotType, const Action& edit, std::function<int()> field, int value) {
  const Action enabled = [=](EveryEditTest&) {
    DimSetEnabled(0, 1);
    DimSetCtlType(0, 0, 0, slotType);
  };
  return {"mnuConfigureDimmers", enabled, edit, Marks,
          [=, field = std::move(field)] { EXPECT_EQ(field(), value); }};
}

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
      {"mnuRelayOutputOptions", Set(p.RelayTimerType(0), 6), RightClick("lblRelayName(0)"), Marks},
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
      {"mnuInputToRelayControl", Nothing,
       Both(Open("lblControl", 2), Both(Unmark, Take("cboControl", 2))), Marks,
       Is(p.InputRelayControl(0, 2), 2)},
      {"mnuInputToRelayControl", Set(p.InputType(4), 4), Choose("cboPreset", 8), Marks,
       Is(p.InputPreset(4), 8), Choose("cboInput", 4)},
      {"mnuInputToGroupControl", Nothing,
       Both(Open("lblControl", 40), Both(Unmark, Take("cboControl", 1))), Marks,
       Is(p.InputGroupControl(0, 40), 1)},
      {"mnuLocalInputPilots", Set(p.LocalPilot(1), 64),
       Pick("lblPilotSource", 1, "cboNewSource", 2), Marks, Is(p.LocalPilot(1), 128)},
      {"mnuLocalInputPilots", Set(p.LocalPilot(1), 64),
       Pick("lblPilotNumber", 1, "cboNewNumber", 5), Marks, Is(p.LocalPilot(1), 69)},
      OnDevice("mnuConfigureFennlinkDevices", "cboFLinkDevice", 1, Choose("cboFLinkType", 4),
               Is(d.DeviceType, 4)),
      OnDevice("mnuConfigureFennlinkDevices", "cboFLinkDevice", 7, Choose("cboInput7Type(1)", 2),
               Is(d.DeviceInputType(1), 2)),
      OnDevice("mnuConfigureFennlinkDevices", "cboFLinkDevice", 2,
               Pick("lblInput16TimedOn", 0, "cboInput16NewTime", 4), Is(d.DeviceTimedOnTime(0), 9),
               Set(d.DeviceInputType(0), 3)),
      OnDevice("mnuConfigureFennlinkDevices", "cboFLinkDevice", 9, Slide("hsInputFOffLevel(2)", 77),
               Is(d.DeviceOffLevel(2), 77)),
      OnDevice("mnuConfigureFennlinkDevices", "cboFLinkDevice", 9, Slide("hsInputFOnLevel(2)", 78),
               Is(d.DeviceOnLevel(2), 78)),
      OnDevice("mnuFennlinkInputToRelayControl", "cboFennlinkDevice", 4,
               Pick("lblControl", 3, "cboControl", 1), Is(d.DeviceRelayControl(0, 3), 1)),
      OnDevice("mnuFennlinkInputToGroupControl", "cboFennlinkDevice", 4,
               Pick("lblControl", 3, "cboControl", 1), Is(d.DeviceGroupControl(0, 3), 1)),
      OnDevice("mnuFennlinkPilots", "cboFennlinkDevice", 4,
               Pick("lblPilotSource", 1, "cboNewSource", 2), Is(d.DevicePilot(1), 128),
               Set(d.DevicePilot(1), 64)),
      OnDevice("mnuFennlinkPilots", "cboFennlinkDevice", 4, AutoMap, Is(d.DevicePilot(1), 64 + 3),
               Both(Set(d.DevicePilot(2), 70), Set(d.DeviceRelayControl(1, 3), 1))),
      OnDevice("mnuFennlinkPilots", "cboFennlinkDevice", 4,
               Pick("lblPilotNumber", 1, "cboNewNumber", 6), Is(d.DevicePilot(1), 70),
               Set(d.DevicePilot(1), 64)),
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
      {"mnuTimerToRelayControl", Nothing,
       Both(Open("lblControl", 6), Both(Unmark, Take("cboControl", 2))), Marks,
       Is(p.TimerRelayControl(0, 6), 2)},
      {"mnuTimerToGroupControl", Nothing,
       Both(Open("lblControl", 6), Both(Unmark, Take("cboControl", 1))), Marks,
       Is(p.TimerGroupControl(0, 6), 1)},
      {"mnuTimerToPresetControl", Nothing,
       Both(Open("lblControl", 6), Both(Unmark, Take("cboControl", 1))), Marks,
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
      {"mnuSetup", Nothing, Both(Open("lblIOCount", 1), Both(Unmark, Take("cboIOCount", 2))), Marks,
       Is(p.IOCount(1), 2)},
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
      {"mnuEditPanelName", Nothing, Both(Press("chkDefaultPanelName"), Type("txtPanelName", "ab")),
       Marks, Is(p.PanelName, "AB")},
      {"mnuEditPanelName", Type("txtPanelName", "ab"), Press("chkDefaultPanelName"), Marks,
       Is(p.PanelName, "")},
      {"mnuConnect", Nothing, Press("chkConnectionType(1)"), MarksNot, Is(ConnectionType(), 1)},
      {"mnuConnect", Press("chkConnectionType(2)"), Type("txtTCPIP", "1"), Marks,
       Is(TcpAddress(), "1")},
      {"mnuConnect", Nothing,
       [](EveryEditTest& t) {
         auto& port = t.Find<OptionButton>("optComPort(4)");
         port.setEnabled(true);
         port.click();
       },
       Marks, Is(p.ComPort, 5)},
      {"mnuConnect", Press("chkConnectionType(1)"), Type("txtPhoneNumber", "1"), Marks,
       Is(PhoneNumber(), "1")},
      {"mnuConfigureDimmers", Nothing, Press("chkEnabled"), Marks},
      OnDimmer(
          0, Choose("cboPowerOnLevel", 40), [] { return DimGetPowerOn(0, 0); }, 40),
      OnDimmer(
          0, Choose("cboMinLevel", 31), [] { return DimGetMin(0, 0); }, 30),
      OnDimmer(
          0, Choose("cboMaxLevel", 61), [] { return DimGetMax(0, 0); }, 60),
      OnDimmer(
          0, Choose("cboFadeRate", 9), [] { return DimGetFade(0, 0); }, 9),
      OnDimmer(
          0, Choose("cboDMX", 99), [] { return DimGetDMX(0, 0); }, 99),
      OnDimmer(
          0, Choose("cboPCTrack", 1), [] { return DimGetTrackMode(0, 0); }, Track2Point),
      OnDimmer(
          0, Choose("cboCOTyp", 3), [] { return DimGetCtlType(0, 0, 0); }, 3),
      OnDimmer(
          ControlInput, Choose("cboCODev", 5), [] { return DimGetCtlDevice(0, 0, 0); }, 5),
      OnDimmer(
          ControlInput, Choose("cboCOInp", 5), [] { return DimGetCtlNumber(0, 0, 0); }, 5),
      OnDimmer(
          ControlInput, Choose("cboCOAct", 2), [] { return DimGetCtlAction(0, 0, 0); }, 2),
      OnDimmer(
          ControlInput, Choose("cboCOFade", 1), [] { return DimGetCtlInstant(0, 0, 0); }, -1),
      OnDimmer(
          ControlInput, Choose("cboCORevert", 1), [] { return DimGetCtlRevert(0, 0, 0); }, 1),
      {"mnuConfigureDimmers",
       [](EveryEditTest&) {
         DimSetEnabled(0, 1);
         DimSetTrackMode(0, 0, TrackSetpoint);
       },
       Choose("cboTarget", 20), Marks, [] { EXPECT_EQ(DimGetTarget(0, 0), 20); }},
      OnDimmer(
          ControlTimer, Choose("cboCOTmr", 5), [] { return DimGetCtlNumber(0, 0, 0); }, 5),
      OnDimmer(
          ControlPreset, Choose("cboCOPrs", 6), [] { return DimGetCtlNumber(0, 0, 0); }, 6),
      {"mnuDimmerToRelayControl", [](EveryEditTest&) { DimSetEnabled(0, 1); },
       Open("imgInclude", 1), Marks, [] { EXPECT_EQ(DimGetRelay(0, 0, 1), -1); }},
  };
}

TEST_F(EveryEditTest, StoresAndMarksAsTold) {
  const auto open = [&](const Edit& edit) {
    window->UnloadAllForms();
    if (QByteArray(edit.Entry).startsWith("frm")) {
      window->ShowForm(ScreenNamed(edit.Entry));
    } else {
      Menu(edit.Entry);
    }
  };
  int row = 0;
  for (const Edit& edit : Edits()) {
    SCOPED_TRACE("row " + std::to_string(row++) + ", " + edit.Entry);
    DataChanged = 0;
    ForgetUnsavedWork();  // Or About would read the copy of each row before.
    Menu("mnuNew");
    FennlinkRecords(2) = {};
    for (int node = 0; node < NodeCount; ++node) PanelRecord.IOCount(node) = node == 0 ? 8 : 0;
    open(edit);
    edit.Prepare(*this);
    open(edit);
    edit.Select(*this);
    DataChanged = 0;
    const QStringList before = Look();
    edit.Do(*this);
    EXPECT_EQ(DataChanged, edit.Marks ? -1 : 0);
    if (!edit.Stored) continue;
    edit.Stored();
    const QStringList after = Look();
    open(edit);
    edit.Select(*this);
    const QStringList again = Look();
    for (const QString& line : again) {
      EXPECT_TRUE(after.contains(line)) << "the screen opened again shows " << line.toStdString();
    }
    EXPECT_TRUE(after != before) << "the edit shows nowhere";
  }
  EXPECT_TRUE(messages.empty());
}

TEST_F(EveryEditTest, ItemsGoByTheirNamesOnEveryScreen) {
  const std::pair<NameArray PanelRecordType::*, std::vector<const char*>> screens[] = {
      {&PanelRecordType::RelayName,
       {"RelayOutputOptions", "RelayGrouping", "InputToRelayControl", "TimerToRelayControl",
        "EditPresets", "OffHoursSweepRelays", "AddOnModuleDMX", "DimmerRelayControl"}},
      {&PanelRecordType::GroupName,
       {"InputToGroupControl", "TimerToGroupControl", "OffHoursSweepGroups"}},
      {&PanelRecordType::InputName, {"InputOptions", "LocalInputPilots", "InputActiveTimes"}},
      {&PanelRecordType::PresetName, {"TimerToPresetControl"}}};
  PanelRecord.IOCount(0) = 8;
  DimSetEnabled(0, 1);
  for (const auto& [names, forms] : screens) {
    (PanelRecord.*names)(31) = "NAMED";
    for (const char* form : forms) {
      ChildForm* screen = window->ShowForm(ScreenNamed(std::string("frmT3") + form));
      const auto labels = screen->findChildren<Label*>();
      EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [&](Label* label) {
        return label->Caption().trimmed() == "NAMED" && Shown(*label);
      })) << form;
    }
    window->UnloadAllForms();
  }
}

TEST_F(EveryEditTest, OneListIsOpenAtATimeAndAClickBesideItClosesIt) {
  PanelRecord.IOCount(0) = 8;
  for (Int16 type = 1; type < 10; ++type) FennlinkRecords(type).DeviceType = type;
  PanelRecord.InputType.elements.fill(5);
  FennlinkRecords(2).DevicePilot(0) = PanelRecord.LocalPilot(0) = 64;
  const auto openLists = [&](ChildForm* form) {
    int open = 0;
    for (const auto* list : form->findChildren<InPlaceList*>()) open += list->isVisible() ? 1 : 0;
    return open;
  };
  int lists = 0;
  for (const ScreenEntry& entry : ScreenTable()) {
    if (!entry.Create) continue;
    window->UnloadAllForms();
    ChildForm* form = window->ShowForm(entry.Name);
    for (const char* device : {"cboFLinkDevice", "cboFennlinkDevice"}) {
      if (form->findChild<ComboBox*>(device)) ScreenTest::Choose(device, 2);
    }
    QApplication::processEvents();
    for (Label* cell : form->findChildren<Label*>(QRegularExpression("\\(0\\)$"))) {
      if (!Shown(*cell) || !cell->Click || cell->Act() != CellAct::OpensList) continue;
      SCOPED_TRACE(ScreenName(entry.Name) + cell->objectName().toStdString());
      Click(*cell);
      EXPECT_EQ(openLists(form), 1);
      QTest::mouseClick(form, Qt::LeftButton, {}, form->rect().bottomRight());
      EXPECT_EQ(openLists(form), 0);
      Click(*cell);
      ++lists;
    }
  }
  EXPECT_GE(lists, 20);
}

}  // namespace
