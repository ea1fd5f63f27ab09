#include "status/live_panel.h"

class SystemDiagnosticTest : public LivePanelTest {
 protected:
  SystemDiagnosticTest() {
    for (int device = 1; device <= 64; ++device) Drop(device);
  }
  void Drop(int device) { panel.SetPresence(device, simulator::Panel::Presence::Dropped); }
  void Bring(int device) { panel.SetPresence(device, simulator::Panel::Presence::Present); }

  std::optional<QRgb> ErrorColor(int device) {
    return Cell("lblFLComError", device - 1).BackColor();
  }
  std::optional<QRgb> NodeColor(int device) { return Cell("lblFLNode", device - 1).BackColor(); }
  QString Errors(int device) { return Caption("lblFLComError", device - 1); }
};

TEST_F(SystemDiagnosticTest, TenThousandCyclesWithDevicesThatComeAndGo) {
  Bring(1);
  Bring(2);
  Bring(64);
  ChildForm* form = Open(Screen::SystemDiagnostic);
  Timer& timer = *form->findChild<Timer*>("Timer1");
  EXPECT_EQ(NodeColor(64), Colors::White);
  EXPECT_EQ(NodeColor(3), Colors::LightGrey);
  EXPECT_FALSE(MenusOn() || Find<Button>("cmdClearTotals").isEnabled());

  Tick(form);
  EXPECT_EQ(commands, (std::vector<std::string>{"47", "46"}));
  EXPECT_EQ(ErrorColor(1), Colors::Green);
  Bring(3);
  for (int cycle = 1; cycle < 10'000; ++cycle) {
    cycle % 100 == 0 ? Drop(2) : Bring(2);
    if (cycle == 500) Drop(64);
    if (cycle == 700) panel.SetDeviceInput(1, 7, true);
    Tick(form);
  }
  EXPECT_EQ(Text("lblCycleCount"), "Cycle: 10000");
  EXPECT_EQ(Errors(1), "0");
  EXPECT_EQ(Errors(2), "99");
  EXPECT_EQ(ErrorColor(2), Colors::Yellow);
  EXPECT_EQ(Errors(64), ">99");
  EXPECT_EQ(ErrorColor(64), Colors::Red);
  EXPECT_EQ(NodeColor(1), Colors::Blue);
  EXPECT_EQ(ErrorColor(3), std::nullopt);
  EXPECT_TRUE(timer.Enabled());
  Tick(form);
  EXPECT_EQ(commands.size(), 20'000U);
  EXPECT_EQ(Text("lblCycleCount"), "Test Stopped");
  EXPECT_FALSE(timer.Enabled());
  Press("cmdStop");
  EXPECT_EQ(Find<Button>("cmdStop").Caption(), "Start");
  EXPECT_TRUE(MenusOn());
  Press("cmdClearTotals");
  Press("cmdClearFLChanges");
  EXPECT_EQ(Text("lblCycleCount"), "Cycle: ");
  EXPECT_EQ(Errors(64), "0");
  EXPECT_EQ(ErrorColor(64), std::nullopt);
  EXPECT_EQ(NodeColor(1), Colors::White);
  Click(Cell("lblFLNode", 2));
  Press("cmdStop");
  Click(Cell("lblFLNode", 0));
  EXPECT_EQ(NodeColor(1), Colors::White);
  Tick(form);
  EXPECT_EQ(Text("lblCycleCount"), "Cycle: 1");
  EXPECT_EQ(ErrorColor(3), Colors::Green);
}

TEST_F(SystemDiagnosticTest, TicksAndClicksInsideAWaitDoNoHarmAndALostLinkEndsTheTest) {
  Bring(9);
  ChildForm* form = Open(Screen::SystemDiagnostic);
  Timer& timer = *form->findChild<Timer*>("Timer1");
  whileWaiting = [&] {
    Tick(form);
    Click(Cell("lblFLNode", 8));
  };
  Tick(form);
  EXPECT_EQ(commands.size(), 2U);
  EXPECT_NE(NodeColor(9), Colors::LightGrey);
  whileWaiting = [&] { Press("cmdStop"); };
  Tick(form);
  EXPECT_FALSE(timer.Enabled());
  EXPECT_TRUE(MenusOn());
  Press("cmdStop");
  answer = [](const auto&) { return std::nullopt; };
  Tick(form);
  EXPECT_EQ(messages.back().Text, "Connection To Tamberloom 3 Panel Lost");
  EXPECT_TRUE(MenusOn());
  EXPECT_EQ(window->LoadedForm(Screen::SystemDiagnostic), nullptr);
}

TEST_F(SystemDiagnosticTest, TheButtonIsThereOnceTheDiagnosticsFileIsSaved) {
  Connected = 0;
  Menu("mnuConnect");
  auto& button = Find<Button>("cmdNetworkDiagnostics");
  const auto offered = [&] { return button.isVisibleTo(button.parentWidget()); };
  EXPECT_FALSE(offered());
  nextFileName = folder.path() + "/Orv Tamberloom 3/TAMBERLOOM 3 diagnostics.T3";
  Menu("mnuSaveAs");
  EXPECT_TRUE(offered());
  nextFileName = folder.path() + "/other.T3";
  Menu("mnuSaveAs");
  EXPECT_FALSE(offered());
}
