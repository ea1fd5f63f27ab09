#include <QFile>
#include <QLabel>
#include <QTreeWidget>

#include "panel/tested_items.h"
#include "status/live_panel.h"

/// A walk through the simulated panel's building, by keys and clicks.
class WalkTest : public LivePanelTest {
 protected:
  ChildForm* OpenWalk(int walk) {
    ChildForm* form = Open(Screen::WalkTest);
    Find<ComboBox>("cboWalk").Choose(walk);
    return form;
  }
  void SaveAs(const char* name) {
    nextFileName = folder.filePath(QString::fromLatin1(name));
    Menu("mnuSaveAs");
  }
  void Type(const char* keys) { QTest::keyClicks(&Find<TextBox>("txtName"), QLatin1String(keys)); }
  void Enter() { QTest::keyClick(&Find<TextBox>("txtName"), Qt::Key_Return); }
  std::string Ticked() {
    std::string items;
    for (const TestedItem& one : ReadTested(CurrentFileName)) items += one.Item.toStdString() + ";";
    return items;
  }
  void WalkUntil(const std::function<void()>& end) {
    OpenWalk(1);
    Press("cmdWalk");
    EXPECT_TRUE(panel.Relay(0));
    commands.clear();
    end();
    EXPECT_TRUE(Switched().starts_with("10000"));
    EXPECT_FALSE(panel.Relay(0));
  }
  /// "10021 10020": what was switched since the last look.
  std::string Switched() {
    std::string told;
    for (const std::string& command : std::exchange(commands, {})) {
      if (command.starts_with("10")) told += (told.empty() ? "" : " ") + command;
      EXPECT_TRUE(command.starts_with("10") || command == "20FF" || command == "23FF" ||
                  command == "46" || command == "47")
          << command;
    }
    return told;
  }
};

TEST_F(WalkTest, APressedSwitchComesToTheFrontAndIsNamedAndTicked) {
  SaveAs("walk.T3");
  ChildForm* form = OpenWalk(0);
  panel.SetContact(1, simulator::Contact::On, true);
  Press("cmdWalk");
  EXPECT_FALSE(MenusOn());
  EXPECT_EQ(Text("lblFront"), "Press a switch.") << "what is closed already was not pressed";
  panel.SetContact(6, simulator::Contact::On, true);
  Tick(form);
  EXPECT_EQ(Text("lblFront"), "INPUT 07 closed");
  DataChanged = 0;
  Type("hall 1");
  EXPECT_EQ(PanelRecord.InputName(6), "HALL 1");
  EXPECT_NE(DataChanged, 0);
  // Another one, while the name is being typed, waits for its turn.
  panel.SetContact(2, simulator::Contact::Off, true);
  Tick(form);
  EXPECT_EQ(Text("lblFront"), "INPUT 07 closed");
  Enter();
  EXPECT_EQ(Text("lblFront"), "INPUT 03 Off contact closed");
  panel.SetContact(2, simulator::Contact::Off, false);
  Tick(form);
  EXPECT_EQ(Text("lblFront"), "INPUT 03 open") << "a released switch stays in front";
  EXPECT_EQ(Ticked(), "INPUT 07;");
  for (const int input : {3, 4}) panel.SetContact(input, simulator::Contact::On, true);
  Tick(form);
  EXPECT_EQ(Text("lblFront"), "INPUT 05 closed");
  panel.SetContact(8, simulator::Contact::On, true);
  Tick(form);
  EXPECT_EQ(Text("lblFront"), "INPUT 09 closed") << "what is pressed now, not what waits";
  Press("cmdWalk");
  EXPECT_TRUE(MenusOn());
  EXPECT_EQ(Switched(), "");
  // The ticks go along with the project, and can be taken back.
  SaveAs("copy.T3");
  EXPECT_EQ(Ticked(), "INPUT 07;");
  auto& list = Find<QTreeWidget>("lstItems");
  list.setCurrentItem(list.topLevelItem(6));
  QTest::keyClick(&list, Qt::Key_Return);
  EXPECT_NE(Text("lblTold"), "");
  Press("cmdUntick");
  EXPECT_EQ(Text("lblTold"), "");
  EXPECT_FALSE(QFile::exists(CurrentFileName + ".tested"));
}

TEST_F(WalkTest, ButtonsOfStationsComeToTheFrontAlsoWhereNoneIsConfigured) {
  FennlinkRecords(0x1A).DeviceType = 3;
  panel.SetPresence(0x1A, simulator::Panel::Presence::Present);
  panel.SetPresence(0x20, simulator::Panel::Presence::Present);
  ChildForm* form = OpenWalk(2);
  EXPECT_EQ(Find<QTreeWidget>("lstItems").topLevelItemCount(), 3);
  Press("cmdWalk");
  panel.SetDeviceInput(0x1A, 1, true);
  Tick(form);
  EXPECT_EQ(Text("lblFront"), "FL 1A INPUT 2 on");
  Type("lobby");
  EXPECT_EQ(FennlinkRecords(0x1A).DeviceName, "LOBBY");
  Enter();
  EXPECT_EQ(Text("lblFront"), "FL 1A INPUT 2 on") << "without a file there are names, no ticks";
  panel.SetDeviceInput(0x20, 0, true);
  Tick(form);
  EXPECT_EQ(Text("lblFront"), "FL 20 INPUT 1 on");
}

TEST_F(WalkTest, RelaysAreSteppedAndLeftAsTheyWereFound) {
  SaveAs("walk.T3");
  PanelRecord.RelayTimerType(2) = 6;
  panel.SetRelay(1, true);
  ChildForm* form = OpenWalk(1);
  auto& list = Find<QTreeWidget>("lstItems");
  list.setCurrentItem(list.topLevelItem(11));
  EXPECT_EQ(Text("lblFront"), "Begin, and RELAY 12 goes on first.");
  list.setCurrentItem(list.topLevelItem(0));
  answers = {MsgAnswer::No};
  Press("cmdWalk");
  EXPECT_EQ(Switched(), "") << "not before the answer";
  EXPECT_TRUE(MenusOn());
  EXPECT_TRUE(messages.back().Detail.contains("Pulsed On: RELAY 03."));
  EXPECT_TRUE(messages.back().Detail.contains("off for its turn: RELAY 02."));

  Press("cmdWalk");
  EXPECT_EQ(Text("lblFront"), "RELAY 01 on");
  Type("hall");
  Enter();
  EXPECT_EQ(PanelRecord.RelayName(0), "HALL");
  EXPECT_EQ(Text("lblTold"), "RELAY 01 HALL is ticked without a name: Tested By is empty.");
  EXPECT_EQ(Text("lblFront"), "RELAY 02 off") << "it was found on";
  Press("cmdSkip");
  EXPECT_EQ(Switched(), "10001 10000 10010 10011 10021");
  // A key that is held down does not run through the relays.
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
  QApplication::sendEvent(&Find<TextBox>("txtName"), &held);
  EXPECT_EQ(Switched(), "");
  Tick(form);
  Press("cmdWalk");
  EXPECT_EQ(Switched(), "10020");
  EXPECT_TRUE(Text("lblTold").startsWith("Every relay is as it was found. 1 of 16"));
  EXPECT_EQ(Ticked(), "RELAY 01;");
  // Coming back, the walk goes on behind what is ticked.
  window->UnloadAllForms();
  form = OpenWalk(1);
  EXPECT_EQ(Text("lblFront"), "Begin, and RELAY 02 goes on first.");
  PanelRecord.RelayTimerType(2) = 5;
  Press("cmdWalk");
  EXPECT_EQ(Text("lblTold"), "") << "not what the last walk left";
  Press("cmdSkip");
  Tick(form);
  Press("cmdWalk");
  EXPECT_TRUE(Text("lblTold").contains("Put off, and on again by itself after a while: RELAY 03."));
}

TEST_F(WalkTest, AScreenThatIsClosedPutsTheRelayBack) {
  WalkUntil([this] { window->UnloadAllForms(); });
  EXPECT_TRUE(MenusOn());
}

TEST_F(WalkTest, AProgramThatIsClosedPutsTheRelayBack) {
  WalkUntil([this] { window->close(); });
}

TEST_F(WalkTest, ADesktopThatEndsPutsTheRelayBack) {
  WalkUntil([this] { window->EndKeepingWork(); });
}

/// A reading over TCP delivers events. Its answer, which comes first, is none to the switching.
TEST_F(WalkTest, AProgramThatIsClosedInTheMiddleOfAReadingPutsTheRelayBack) {
  WalkUntil([this] {
    whileWaiting = [this] { window->close(); };
    Tick(window->LoadedForm(Screen::WalkTest));
  });
}

TEST_F(WalkTest, ALostLineTellsWhichRelayStayedOn) {
  ChildForm* form = OpenWalk(1);
  Press("cmdWalk");
  commands.clear();
  answer = [](const auto&) { return std::nullopt; };
  Tick(form);
  EXPECT_EQ(messages.back().Text, "Connection To Tamberloom 3 Panel Lost");
  EXPECT_EQ(Switched(), "");
  Click(Find<CheckBox>("chkConnectionType", 0));
  EXPECT_TRUE(Shows("lblLeft"));
  EXPECT_EQ(Find<QLabel>("lblLeft").text(),
            "The walk test could not put RELAY 01 back: it may have stayed on.");
}

TEST_F(WalkTest, ADamagedListOfTicksIsToldAndStays) {
  SaveAs("walk.T3");
  QFile file(CurrentFileName + ".tested");
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const QByteArray nonsense = "Item\tTested\tBy\tDate\nINPUT 01\tperhaps\t\t2026-01-01\n";
  file.write(nonsense);
  file.close();
  ChildForm* form = OpenWalk(0);
  EXPECT_TRUE(Text("lblTold").contains("see line 2"));
  Press("cmdWalk");
  panel.SetContact(0, simulator::Contact::On, true);
  Tick(form);
  Enter();
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), nonsense);
}
