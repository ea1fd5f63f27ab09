#include <QAbstractItemView>
#include <QPointer>

#include "panel/dimmer_words.h"
#include "panel/live_dimmers.h"
#include "screen_test.h"
#include "shell/controls/row_grid.h"

// Where the focus is, and the keys that mean the same on every screen.

class ScreenKeysTest : public ScreenTest {
 protected:
  ScreenKeysTest() {
    PanelRecord.IOCount(0) = 8;
    for (int d = 1; d <= 10; ++d) FennlinkRecords(d).DeviceType = static_cast<Int16>(d % 10);
    for (Int16 dimmer = 0; dimmer < 5; ++dimmer) DimSetEnabled(dimmer, 1);
  }

  void Open(Screen screen) {
    window->UnloadAllForms();
    window->ShowForm(screen);
    QApplication::processEvents();
  }
  QWidget& InHand() { return *window->focusWidget(); }
  QString Focus() { return InHand().objectName(); }
  static void Key(QWidget& control, bool down) {
    QTest::keyClick(&control, down ? Qt::Key_PageDown : Qt::Key_PageUp, Qt::ControlModifier);
  }
  /// All that takes the focus at present.
  std::vector<QPointer<QWidget>> Stops() {
    std::vector<QPointer<QWidget>> stops;
    for (QWidget* control : window->centralWidget()->findChildren<QWidget*>()) {
      if (control->focusPolicy() & Qt::TabFocus && control->isVisible() && control->isEnabled()) {
        stops.emplace_back(control);
      }
    }
    return stops;
  }
};

TEST_F(ScreenKeysTest, ControlAndPageStepTheSelectorFromEveryControl) {
  struct Selection {
    const char* List;
    const char* Outer = nullptr;  ///< Of two, the one that has the other within.
  };
  const std::map<Screen, Selection> selectors = {
      {Screen::RelayGrouping, {"cboGroup"}},
      {Screen::EditPresets, {"cboPresetNumber"}},
      {Screen::InputToRelayControl, {"cboInput"}},
      {Screen::InputToGroupControl, {"cboInput"}},
      {Screen::ConfigureFennlinkDevices, {"cboFLinkDevice"}},
      {Screen::FennlinkInputToRelayControl, {"cboInput", "cboFennlinkDevice"}},
      {Screen::FennlinkInputToGroupControl, {"cboInput", "cboFennlinkDevice"}},
      {Screen::FennlinkPilots, {"cboFennlinkDevice"}},
      {Screen::TimersConfigure, {"cboTimerNumber"}},
      {Screen::TimerToRelayControl, {"cboTimer"}},
      {Screen::TimerToGroupControl, {"cboTimer"}},
      {Screen::TimerToPresetControl, {"cboTimer"}},
      {Screen::OpenAndCloseTimeSingleDates, {"optMonth"}},
      {Screen::DimmerOutput, {"cboDOut", "cboDDev"}},
      {Screen::DimmerRelayControl, {"cboDOut", "cboDDev"}},
  };
  const auto choose = [&](const Selection& by, int item) {
    if (by.List == std::string("optMonth")) {
      Find<OptionButton>(by.List, item).click();
    } else {
      Choose(by.List, item);
    }
  };
  const auto chosen = [&](const Selection& by) {
    if (by.List != std::string("optMonth")) return Find<ComboBox>(by.List).ListIndex();
    int month = 0;
    while (!Find<OptionButton>(by.List, month).Value()) ++month;
    return month;
  };
  FennlinkRecords(3).DeviceInputType(2) = 1;
  FennlinkRecords(5).DeviceInputType(0) = 2;
  PanelRecord.InputType(2) = 4;
  int pressed = 0;
  OnEveryScreen([&](Screen screen, ChildForm&) {
    const auto found = selectors.find(screen);
    if (found == selectors.end()) {
      const std::string before = Bytes();
      for (const auto& control : Stops()) {
        control->setFocus();
        for (const bool down : {true, false}) {
          Key(*control, down);
          ASSERT_TRUE(Bytes() == before) << control->objectName().toStdString();
        }
        ++pressed;
      }
      return;
    }
    const Selection& by = found->second;
    if (by.Outer) Choose(by.Outer, 4);
    std::map<int, std::string> bytes;  // As choosing the item in its selector leaves them.
    const int middle = by.Outer ? 2 : 4;
    for (const int item : {middle - 1, middle, middle + 1, middle - 1, middle}) {
      choose(by, item);
      bytes[item] = Bytes();
    }
    for (const auto& control : Stops()) {
      for (const bool open : {false, true}) {
        choose(by, middle);
        if (!control->isVisible()) continue;
        control->setFocus();
        auto* list = qobject_cast<ComboBox*>(control);
        auto* label = qobject_cast<Label*>(control);
        if (open && list) list->showPopup();
        if (open && label && label->Act() == CellAct::OpensList) label->Press();
        if (open && !list && (!label || label->Act() != CellAct::OpensList)) continue;
        for (const bool down : {true, false, false}) {
          const int item = chosen(by) + (down ? 1 : -1);
          QWidget* popup = QApplication::activePopupWidget();
          Key(popup ? *list->view() : InHand(), down);
          const std::string where = control->objectName().toStdString();
          EXPECT_EQ(chosen(by), item) << where;
          ASSERT_TRUE(Bytes() == bytes[item]) << where;
          EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << where;
          for (const auto* cells : window->findChildren<InPlaceList*>()) {
            EXPECT_FALSE(cells->isVisible()) << where;
          }
          ASSERT_TRUE(InHand().isVisible()) << where;
        }
        ++pressed;
      }
    }
    choose(by, 0);
    Key(InHand(), false);
    EXPECT_EQ(chosen(by), 0);
  });
  EXPECT_GT(pressed, 1500);
}

TEST_F(ScreenKeysTest, AScreenOpensOnWhatIsChosen) {
  PanelRecord.OffHoursSweepInterval = 2;
  PanelRecord.PhotocellFilter = -1;
  ConnectionType() = ConnectionTCP;
  const std::pair<Screen, const char*> screens[] = {
      {Screen::OffHoursSweepInterval, "optOffHoursSweepInterval(2)"},
      {Screen::PhotocellFilter, "optPhotocellFilter(1)"},
      {Screen::OpenAndCloseTimeSingleDates, "optMonth(0)"},
      {Screen::RelayOutputOptions, "lblTimerType(0)"},
      {Screen::RelayGrouping, "cboGroup"},
      {Screen::InputOptions, "lblInputType(0)"},
      {Screen::DimmerRelayControl, "cboDDev"},
      {Screen::EditRelayNames, "txtRelayName(0)"},
      {Screen::Connect, "cmdConnect"},
      {Screen::About, "lblStep(0)"},
  };
  for (const auto& [screen, focus] : screens) {
    SCOPED_TRACE(ScreenName(screen));
    Open(screen);
    EXPECT_EQ(Focus(), focus);
    const std::string before = Bytes();
    if (InHand().inherits("QRadioButton")) QTest::keyClick(&InHand(), Qt::Key_Space);
    EXPECT_TRUE(Bytes() == before);
  }

  PanelRecord.TimerTimeType(0) = 12 + 100;
  PanelRecord.TimerHolidayMonth(0) = 5;
  Open(Screen::TimersConfigure);
  QTest::keyClick(&InHand(), Qt::Key_Tab);
  EXPECT_EQ(Focus(), "optTimeType(1)");

  Open(Screen::RelayGrouping);
  QTest::keyClick(&InHand(), Qt::Key_Tab);
  QApplication::processEvents();
  EXPECT_EQ(Focus(), "lblInclude(0)");
}

TEST_F(ScreenKeysTest, AnInputWithoutRowsKeepsTheFocusAndSaysWhereItIsSet) {
  const std::tuple<::Screen, Int16, QString, const char*> inputs[] = {
      {Screen::InputToGroupControl, 4, "cboInput", "a preset, which is chosen in Input To Relay"},
      {Screen::InputToGroupControl, 12, "cboInput", "forces timers"},
      {Screen::InputToGroupControl, 10, "cboInput", "disables timers"},
      {Screen::InputToGroupControl, 9, "cboInput", "disables inputs"},
      {Screen::InputToRelayControl, 4, "cboPreset", ""},
      {Screen::InputToRelayControl, 9, "lblControl(0)", ""},
  };
  for (const auto& [screen, type, focus, line] : inputs) {
    SCOPED_TRACE(std::string(ScreenName(screen)) + std::to_string(type));
    PanelRecord.InputType(1) = type;
    Open(screen);
    Cell("lblControl", 0).setFocus();
    Key(InHand(), true);
    EXPECT_EQ(Focus(), focus);
    EXPECT_EQ(Shows("lblNoActions"), *line != '\0');
    EXPECT_TRUE(Text("lblNoActions").contains(line)) << Text("lblNoActions").toStdString();
    Key(InHand(), true);
    EXPECT_EQ(Focus(), focus == "cboInput" ? "cboInput" : "lblControl(0)");
  }
  FennlinkRecords(2).DeviceType = 0;
  for (const Screen screen : {Screen::FennlinkPilots, Screen::FennlinkInputToRelayControl}) {
    Open(screen);
    Choose("cboFennlinkDevice", 2);
    EXPECT_TRUE(Shows("lblChooseDevice")) << screen;
    EXPECT_TRUE(Text("lblChooseDevice").contains("Configure Fennlink Devices"));
  }
  Open(Screen::FennlinkPilots);
  Choose("cboFennlinkDevice", 1);
  Cell("lblPilotSource", 0).setFocus();
  Key(InHand(), true);
  EXPECT_EQ(Focus(), "cboFennlinkDevice");
}
