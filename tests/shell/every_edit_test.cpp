#include <QMetaProperty>
#include <QRegularExpression>
#include <set>

#include "panel/apply_difference.h"
#include "panel/difference.h"
#include "panel/dimmer_words.h"
#include "panel/live_dimmers.h"
#include "panel/project_codec.h"
#include "screen_test.h"
#include "shell/window/history.h"

// What every control stores, and whether it marks the project as changed.

namespace {

class EveryEditTest : public ScreenTest {
 public:
  using ScreenTest::Cell;
  using ScreenTest::Choose;
  using ScreenTest::ChooseDevice;
  using ScreenTest::ChooseInPlace;
  using ScreenTest::Click;
  using ScreenTest::Find;

  /// What the screen shows and did not then; empty when it shows the same.
  QString Unlike(const QStringList& then) {
    QStringList unlike;
    for (const QString& line : Look()) {
      if (!then.contains(line)) unlike << line;
    }
    return unlike.join(u'\n');
  }

  /// A step back or forth, or all of an edit that is several.
  void Step(Qt::Key key) {
    const QUndoStack& steps = window->Steps().Stack();
    while (key == Qt::Key_Z ? steps.canUndo() : steps.canRedo()) {
      QTest::keyClick(window.get(), key, Qt::ControlModifier);
    }
  }

  /// All that the screen shows, one control a line.
  QStringList Look() {
    QStringList look;
    for (const QWidget* control : window->centralWidget()->findChildren<QWidget*>()) {
      const QString name = control->objectName();
      if (name.isEmpty() || name.startsWith("qt_") || name.startsWith("lblPanelChar") ||
          name == "lblMark" || name == "cmdUndo" || name == "cmdRedo" || name == "lstSteps" ||
          name == "cmdSteps") {
        continue;  // Names are displayed as they are typed.
      }
      QString value = control->property("text").toString() +
                      control->metaObject()->userProperty().read(control).toString();
      if (const auto* label = qobject_cast<const Label*>(control)) {
        value = label->Caption() + QString::number(label->BackColor().value_or(1)) +
                QString::number(label->Checked());
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

std::unique_ptr<Project> DecodedProject(const std::string& bytes) {
  auto project = std::make_unique<Project>();
  (void)DecodeProject(bytes, *project);
  return project;
}

std::vector<DifferenceRow> RowsOf(const Project& one, const Project& other) {
  std::vector<DifferenceRow> rows;
  for (const Difference& d : CompareProjects(one, other, true)) {
    rows.push_back({d.Area, ItemCode(d.Where), d.Field, d.This, d.Other});
  }
  return rows;
}
void Unmark(EveryEditTest&) {
  DataChanged = 0;
}

struct Edit {
  Action Do;
  std::function<void()> Stored = {};
  Action Prepare = Nothing;  ///< Before the project is unmarked.
  Action Select = Nothing;   ///< Which item the screen shows.
  bool Marks = true;
};

struct EditsOfScreen {
  Text Entry;  ///< In the menu, or the screen's name where the entry leads to several.
  std::vector<Edit> Edits;
};

Edit Quiet(Action edit, std::function<void()> stored = {}) {
  return {std::move(edit), std::move(stored), Nothing, Nothing, false};
}

/// An edit of bus device 2, which is of a type.
Edit OnDevice(int type, const Action& edit, std::function<void()> stored,
              const Action& prepare = Nothing) {
  return {edit, std::move(stored), Both(Set(FennlinkRecords(2).DeviceType, type), prepare),
          [](EveryEditTest& t) { t.ChooseDevice(2); }};
}

/// An edit of the first output of an enabled dimmer, whose first slot is of a type.
Edit OnDimmer(Int16 slotType, const Action& edit, const std::function<int(Int16, Int16)>& field,
              int value) {
  const Action enabled = [=](EveryEditTest&) {
    DimSetEnabled(0, 1);
    DimSetCtlType(0, 0, 0, slotType);
  };
  return {edit, [=] { EXPECT_EQ(field(0, 0), value); }, enabled};
}
/// Of the slot.
Edit OnSlot(Int16 slotType, const Action& edit, Int16 (*field)(Int16, Int16, Int16), int value) {
  const auto first = [=](Int16 dev, Int16 out) { return field(dev, out, 0); };
  return OnDimmer(slotType, edit, first, value);
}

/// A cell's list opens, which marks, and of the choice alone.
Edit TakesFrom(Text cell, int index, Text list, int item, std::function<void()> stored) {
  return {Both(Open(cell, index), Both(Unmark, Take(list, item))), std::move(stored)};
}

std::vector<EditsOfScreen> Edits() {
  auto& p = PanelRecord;
  FennlinkRecord& d = FennlinkRecords(2);
  constexpr auto shift = Qt::ShiftModifier;
  const Action setpoint = [](EveryEditTest&) {
    DimSetEnabled(0, 1);
    DimSetTrackMode(0, 0, TrackSetpoint);
  };
  const auto relay = [](Int16 dev, Int16 out) { return DimGetRelay(dev, out, 1); };
  const Action port = [](EveryEditTest& t) {
    t.Find<OptionButton>("optComPort(4)").setEnabled(true);
    t.Find<OptionButton>("optComPort(4)").click();
  };
  return {
      {"mnuRelayOutputOptions",
       {{Pick("lblTimerType", 1, "cboNewTimerType", 3), Is(p.RelayTimerType(1), 3)},
        {Pick("lblPowerOnType", 2, "cboNewPowerOnType", 1), Is(p.RelayPowerOnType(2), 1)},
        {RightClick("lblRelayName(0)"), {}, Set(p.RelayTimerType(0), 6)},
        {RightClick("lblRelayName(0)", shift), Is(p.RelayTimerType(7), 6),
         Set(p.RelayTimerType(0), 6)}}},
      {"mnuRelayGrouping",
       {Quiet(Choose("cboGroup", 3)),
        {Open("lblInclude", 4), Is(p.GroupRelayInclude(2, 4), -1), Nothing, Choose("cboGroup", 2)},
        {RightClick("lblRelayName(1)")}}},
      {"mnuEditPresets",
       {{Open("lblRelayControl", 4), Is(p.PresetRelayControl(5, 4), 1), Nothing,
         Choose("cboPresetNumber", 5)},
        {RightClick("lblRelayName(0)", shift), Is(p.PresetRelayControl(0, 7), 2),
         Set(p.PresetRelayControl(0, 0), 2)}}},
      {"mnuOffHoursSweepRelays",
       {{Open("lblRelayInclude", 2), Is(p.OffHoursSweepRelay(2), -1),
         Set(p.OffHoursSweepRelay(2), 0)}}},
      {"mnuOffHoursSweepGroups",
       {{Open("lblGroupInclude", 47), Is(p.OffHoursSweepGroup(47), -1),
         Set(p.OffHoursSweepGroup(47), 0)}}},
      {"mnuOffHoursSweepInterval",
       {{Press("optOffHoursSweepInterval(2)"), Is(p.OffHoursSweepInterval, 2)}}},
      {"mnuConfigureTimedOn", {{Press("optTimedOnOperation(1)"), Is(p.TimedOnOperation, -1)}}},
      {"mnuInputOptions",
       {{Pick("lblInputType", 3, "cboNewType", 5), Is(p.InputType(3), 5)},
        {Pick("lblInputTimedOn", 3, "cboNewTime", 994), Is(p.InputTimedOnTime(3), 999),
         Set(p.InputType(3), 5)}}},
      {"mnuInputToRelayControl",
       {TakesFrom("lblControl", 2, "cboControl", 2, Is(p.InputRelayControl(0, 2), 2)),
        {Choose("cboPreset", 8), Is(p.InputPreset(4), 8), Set(p.InputType(4), 4),
         Choose("cboInput", 4)}}},
      {"mnuInputToGroupControl",
       {TakesFrom("lblControl", 40, "cboControl", 1, Is(p.InputGroupControl(0, 40), 1))}},
      {"mnuLocalInputPilots",
       {{Pick("lblPilotSource", 1, "cboNewSource", 2), Is(p.LocalPilot(1), 128),
         Set(p.LocalPilot(1), 64)},
        {Pick("lblPilotNumber", 1, "cboNewNumber", 5), Is(p.LocalPilot(1), 69),
         Set(p.LocalPilot(1), 64)}}},
      {"mnuConfigureFennlinkDevices",
       {OnDevice(1, Choose("cboFLinkType", 4), Is(d.DeviceType, 4)),
        OnDevice(7, Choose("cboInput7Type(1)", 2), Is(d.DeviceInputType(1), 2)),
        OnDevice(2, Pick("lblInput16TimedOn", 0, "cboInput16NewTime", 4),
                 Is(d.DeviceTimedOnTime(0), 9), Set(d.DeviceInputType(0), 3)),
        OnDevice(9, Slide("hsInputFOffLevel(2)", 77), Is(d.DeviceOffLevel(2), 77)),
        OnDevice(9, Slide("hsInputFOnLevel(2)", 78), Is(d.DeviceOnLevel(2), 78))}},
      {"mnuFennlinkInputToRelayControl",
       {OnDevice(4, Pick("lblControl", 3, "cboControl", 1), Is(d.DeviceRelayControl(0, 3), 1)),
        OnDevice(2, Choose("cboPreset", 47), Is(d.DevicePreset(0), 47),
                 Set(d.DeviceInputType(0), 1))}},
      {"mnuFennlinkInputToGroupControl",
       {OnDevice(4, Pick("lblControl", 3, "cboControl", 1), Is(d.DeviceGroupControl(0, 3), 1))}},
      {"mnuFennlinkPilots",
       {OnDevice(4, Pick("lblPilotSource", 1, "cboNewSource", 2), Is(d.DevicePilot(1), 128),
                 Set(d.DevicePilot(1), 64)),
        OnDevice(4, AutoMap, Is(d.DevicePilot(1), 64 + 3),
                 Both(Set(d.DevicePilot(2), 70), Set(d.DeviceRelayControl(1, 3), 1))),
        OnDevice(4, Pick("lblPilotNumber", 1, "cboNewNumber", 6), Is(d.DevicePilot(1), 70),
                 Set(d.DevicePilot(1), 64))}},
      {"mnuConfigureTimers",
       {{Choose("cboNormalTimeHour", 3), Is(p.TimerTimeType(0), 3)},
        {Choose("cboNormalTimeMinute", 31), Is(p.TimerTime(0), 31)},
        {Press("optTimeType(1)")},
        {Choose("cboMinuteFromAstro", 25), Is(p.TimerTime(0), 25), Press("optTimeType(1)")},
        {Press("optDaysType(1)"), Is(p.TimerHolidayMonth(0), 1)},
        {Choose("cboHolidayMonth", 6), Is(p.TimerHolidayMonth(0), 7), Press("optDaysType(1)")},
        {Choose("cboHolidayDate", 20), Is(p.TimerHolidayDate(0), 21), Press("optDaysType(1)")},
        Quiet(Press("chkDays(1)"))}},
      {"mnuTimerToRelayControl",
       {TakesFrom("lblControl", 6, "cboControl", 2, Is(p.TimerRelayControl(0, 6), 2))}},
      {"mnuTimerToGroupControl",
       {TakesFrom("lblControl", 6, "cboControl", 1, Is(p.TimerGroupControl(0, 6), 1))}},
      {"mnuTimerToPresetControl",
       {TakesFrom("lblControl", 6, "cboControl", 1, Is(p.TimerPresetControl(0, 6), 1))}},
      {"mnuBlinkAlertAndAlarmSettings",
       {{Choose("cboBlinkAlert", 3), Is(p.BlinkAlertMinutes, 5)},
        {Choose("cboOverRide", 30), Is(p.OverrideMinutes, 35)},
        {Choose("cboAlarm", 7), Is(p.AlarmSeconds, 8)}}},
      {"mnuDaylightSavingTime",
       {{Press("chkEnableDaylightSavingTime")},
        {Choose("cboDSTStartWeek", 3), Is(p.DSTStartWeek, 4)},
        {Choose("cboDSTStartMonth", 4), Is(p.DSTStartMonth, 5)},
        {Choose("cboDSTEndWeek", 2), Is(p.DSTEndWeek, 3)},
        {Choose("cboDSTEndMonth", 6), Is(p.DSTEndMonth, 7)}}},
      {"mnuAstroClockSettings",
       {{Choose("cboLatitude", 5), Is(p.Latitude, 25)},
        {Press("cmdAccept"), {}, Press("cmdFindLatLon")}}},
      {"mnuOpenCloseTimeNormalDays",
       {TakesFrom("lblOpenTime", 2, "cboNewTime", 30, Is(p.NormalOpenTime(2), 30))}},
      {"mnuSetup",
       {TakesFrom("lblIOCount", 1, "cboIOCount", 2, Is(p.IOCount(1), 2)),
        {Press("optAddOnModuleType(1)"), Is(p.AddOnModuleType, 1)}}},
      {"frmT3AddOnModuleDMX",
       {{Pick("lblDMXChan", 2, "cboNewDMX", 7), Is(p.DMXChannel(2), 7)},
        {Choose("cboOnLevel", 80), Is(p.DMXOnLevel, 81)},
        {Choose("cboOffLevel", 20), Is(p.DMXOffLevel, 21)},
        {Choose("cboFilter", 15), Is(p.DMXFilter, 15)},
        {Press("cmdAutoMap"), Is(p.DMXChannel(2), 512), Set(p.DMXChannel(0), 510)}}},
      {"frmT3AddOnModuleModBus",
       {{Choose("cboMode", 1), Is(p.ModBusMode, 1)},
        {Choose("cboBaud", 3), Is(p.ModBusBaud, 3)},
        {Choose("cboParity", 2), Is(p.ModBusParity, 2)}}},
      {"mnuEditRelayNames", {{Type("txtRelayName(2)", "ab"), Is(p.RelayName(2), "AB")}}},
      {"mnuEditPanelName",
       {{Both(Press("chkDefaultPanelName"), Type("txtPanelName", "ab")), Is(p.PanelName, "AB")},
        {Press("chkDefaultPanelName"), Is(p.PanelName, ""), Type("txtPanelName", "ab")}}},
      {"mnuConnect",
       {Quiet(Press("chkConnectionType(1)"), Is(ConnectionType(), 1)),
        {Type("txtTCPIP", "1"), Is(TcpAddress(), "1"), Press("chkConnectionType(2)")},
        {port, Is(p.ComPort, 5)},
        {Type("txtPhoneNumber", "1"), Is(PhoneNumber(), "1"), Press("chkConnectionType(1)")}}},
      {"mnuConfigureDimmers",
       {{Press("chkEnabled")},
        OnDimmer(0, Choose("cboPowerOnLevel", 40), DimGetPowerOn, 40),
        OnDimmer(0, Choose("cboMinLevel", 31), DimGetMin, 30),
        OnDimmer(0, Choose("cboMaxLevel", 61), DimGetMax, 60),
        OnDimmer(0, Choose("cboFadeRate", 9), DimGetFade, 9),
        OnDimmer(0, Choose("cboDMX", 512), DimGetDMX, 512),
        OnDimmer(0, Choose("cboPCTrack", 1), DimGetTrackMode, Track2Point),
        {Choose("cboTarget", 20), [] { EXPECT_EQ(DimGetTarget(0, 0), 20); }, setpoint},
        OnSlot(0, Choose("cboCOTyp", 3), DimGetCtlType, 3),
        OnSlot(ControlInput, Choose("cboCODev", 5), DimGetCtlDevice, 5),
        OnSlot(ControlInput, Choose("cboCOInp", 5), DimGetCtlNumber, 5),
        OnSlot(ControlInput, Choose("cboCOAct", 2), DimGetCtlAction, 2),
        OnSlot(ControlInput, Choose("cboCOFade", 1), DimGetCtlInstant, -1),
        OnSlot(ControlInput, Choose("cboCORevert", 1), DimGetCtlRevert, 1),
        OnSlot(ControlTimer, Choose("cboCOTmr", 5), DimGetCtlNumber, 5),
        OnSlot(ControlPreset, Choose("cboCOPrs", 6), DimGetCtlNumber, 6)}},
      {"mnuDimmerToRelayControl", {OnDimmer(0, Open("imgInclude", 1), relay, -1)}},
  };
}

/// A screen by its place in the table.
class EveryEditOf : public EveryEditTest, public testing::WithParamInterface<std::size_t> {};

TEST_P(EveryEditOf, StoresAndMarksAsTold) {
  const auto look = [&](const char* entry, const Edit& edit) {
    SCOPED_TRACE(entry);
    const auto open = [&] {
      window->UnloadAllForms();
      if (QByteArray(entry).startsWith("frm")) {
        window->ShowForm(ScreenNamed(entry));
      } else {
        Menu(entry);
      }
    };
    DataChanged = 0;
    ForgetUnsavedWork();  // Or About would read the copy of each row before.
    Menu("mnuNew");
    FennlinkRecords(2) = {};
    for (int node = 0; node < NodeCount; ++node) PanelRecord.IOCount(node) = node == 0 ? 8 : 0;
    open();
    edit.Prepare(*this);
    open();
    edit.Select(*this);
    DataChanged = 0;
    const QStringList before = Look();
    window->Steps().Begin();
    const std::string bytes = Bytes();
    edit.Do(*this);
    EXPECT_EQ(DataChanged, edit.Marks ? -1 : 0);
    if (!edit.Stored) return;
    edit.Stored();
    const QStringList after = Look();
    open();
    edit.Select(*this);
    const QStringList again = Look();
    for (const QString& line : again) {
      EXPECT_TRUE(after.contains(line)) << "the screen opened again shows " << line.toStdString();
    }
    EXPECT_TRUE(after != before) << "the edit shows nowhere";
    const std::string stored = Bytes();
    Project applied = *DecodedProject(bytes);
    EXPECT_TRUE(ApplyDifference(applied, RowsOf(applied, LiveProject)).empty());
    applied.Panel.PanelName = PanelRecord.PanelName;  // blanks behind it are not told
    EXPECT_TRUE(EncodeProject(applied) == stored) << "what is told is not what the editor stores";
    Step(Qt::Key_Z);
    EXPECT_TRUE(Bytes() == bytes) << "undone, it left something";
    EXPECT_EQ(Unlike(before), "");
    Step(Qt::Key_Y);
    EXPECT_TRUE(Bytes() == stored) << "redone, it is not what it was";
    EXPECT_EQ(Unlike(again), "");
  };
  const EditsOfScreen screen = Edits()[GetParam()];
  for (std::size_t row = 0; row < screen.Edits.size(); ++row) {
    SCOPED_TRACE("row " + std::to_string(row));
    look(screen.Entry, screen.Edits[row]);
  }
  EXPECT_TRUE(messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Screens, EveryEditOf, testing::Range(std::size_t{0}, Edits().size()));

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

TEST_F(EveryEditTest, OneListIsOpenAtATimeAClickBesideItClosesItAndOpeningMarksAsTold) {
  PanelRecord.IOCount(0) = 8;
  for (Int16 type = 1; type < 10; ++type) FennlinkRecords(type).DeviceType = type;
  PanelRecord.InputType.elements.fill(5);
  FennlinkRecords(2).DevicePilot(0) = PanelRecord.LocalPilot(0) = 64;
  const std::set<Screen> openingMarks = {Screen::InputToRelayControl,
                                         Screen::InputToGroupControl,
                                         Screen::FennlinkInputToRelayControl,
                                         Screen::FennlinkInputToGroupControl,
                                         Screen::TimerToRelayControl,
                                         Screen::TimerToGroupControl,
                                         Screen::TimerToPresetControl,
                                         Screen::OpenAndCloseTimeNormalDays,
                                         Screen::OpenAndCloseTimeSingleDates,
                                         Screen::InputActiveTimes,
                                         Screen::Setup};
  const auto openLists = [](ChildForm& form) {
    const auto all = form.findChildren<InPlaceList*>();
    return std::count_if(all.begin(), all.end(), [](auto* list) { return list->isVisible(); });
  };
  int lists = 0;
  OnEveryScreen([&](Screen screen, ChildForm& form) {
    ScreenTest::ChooseDevice(2);
    for (Label* cell : form.findChildren<Label*>(QRegularExpression("\\(0\\)$"))) {
      if (!Shown(*cell) || !cell->Click || cell->Act() != CellAct::OpensList) continue;
      SCOPED_TRACE(cell->objectName().toStdString());
      DataChanged = 0;
      Click(*cell);
      EXPECT_EQ(DataChanged, openingMarks.contains(screen) ? -1 : 0);
      EXPECT_EQ(openLists(form), 1);
      QTest::mouseClick(&form, Qt::LeftButton, {}, form.rect().bottomRight());
      EXPECT_EQ(openLists(form), 0);
      Click(*cell);
      ++lists;
    }
  });
  EXPECT_GE(lists, 20);
}

}  // namespace
