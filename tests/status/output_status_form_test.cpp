#include <QTimer>

#include "link/panel_host.h"
#include "link/scripted_transport.h"
#include "panel/panel_record.h"
#include "simulator/frame.h"

using simulator::FrameReply;
using simulator::Panel;
using simulator::PanelThread;

class OutputStatusTest : public PanelHostTest {
 protected:
  ~OutputStatusTest() override { Connected = 0; }
};

TEST_F(OutputStatusTest, RelaysAreShownAndSwitched) {
  const QString address = OwnAddress();
  PanelThread panel(TcpPanel(address));
  ConnectTo(address);
  panel.With([](Panel& p) { p.SetRelay(3, true); });
  PanelRecord.RelayName(3) = "STAIRS";
  Menu("mnuRelayStatus");
  EXPECT_FALSE(Shown(Find<Label>("lblNoConnection")));
  EXPECT_EQ(Caption("lblRelayName", 3), "STAIRS");
  EXPECT_EQ(Caption("lblRelayStatus", 3), "On");
  EXPECT_EQ(Cell("lblRelayStatus", 3).BackColor(), Colors::White);
  EXPECT_EQ(Caption("lblRelayStatus", 2), "Off");
  EXPECT_EQ(Cell("lblRelayStatus", 2).BackColor(), Colors::Grey);
  EXPECT_TRUE(Shown(Cell("lblRelayStatus", 15)));
  EXPECT_FALSE(Shown(Cell("lblRelayStatus", 16)));

  Press("cmdTurnOn(2)");
  Press("cmdTurnOff(3)");
  EXPECT_EQ(Caption("lblRelayStatus", 2), "Off") << "the next update shows it";
  Press("cmdUpdateStatus");
  EXPECT_EQ(Caption("lblRelayStatus", 2), "On");
  EXPECT_EQ(Caption("lblRelayStatus", 3), "Off");
  Press("cmdAllRelaysOn");
  EXPECT_EQ(panel.FramesFromHost().back(), simulator::FrameCommand("10FF1"));
  EXPECT_TRUE(Find<Button>("cmdAllRelaysOn").isEnabled());

  Menu("mnuGroupStatus");
  EXPECT_EQ(Caption("lblGroupStatus", 0), "On");
  EXPECT_TRUE(Shown(Cell("lblGroupName", 47)));
  Press("cmdTurnOff(0)");
  EXPECT_FALSE(panel.With([](Panel& p) { return p.Relay(0); }));
  EXPECT_EQ(panel.FramesFromHost().back(), simulator::FrameCommand("11000"));
}

TEST_F(OutputStatusTest, AutomaticUpdatesLockTheMenusUntilTheyEnd) {
  const QString address = OwnAddress();
  PanelThread panel(TcpPanel(address));
  ConnectTo(address);
  Menu("mnuRelayStatus");
  auto& timer = Find<ChildForm>("frmT3RelayStatus").findChildren<Timer*>("Timer1").first()[0];
  Press("cmdAutoUpdate");
  EXPECT_EQ(Find<Button>("cmdAutoUpdate").Caption(), "Disable Auto Updates");
  EXPECT_EQ(Text("lblAutoUpdate"), "Updates Enabled");
  EXPECT_EQ(Find<Label>("lblAutoUpdate").BackColor(), Colors::LightGreen);
  EXPECT_FALSE(Find<QAction>("mnuFile").isEnabled());
  EXPECT_FALSE(Find<Button>("cmdUpdateStatus").isEnabled());
  EXPECT_FALSE(Find<Button>("cmdAllRelaysOff").isEnabled());
  EXPECT_TRUE(timer.Enabled());

  // A tick and two clicks while a slow poll waits: one after the other, none lost, none inside.
  panel.AddFault("late:50x*");
  const std::size_t before = panel.FramesFromHost().size();
  QTimer::singleShot(10, window.get(), [&] {
    EXPECT_FALSE(timer.Enabled()) << "the timer rests while it polls";
    timer.Tick();
    Press("cmdTurnOn(4)");
    Press("cmdTurnOn(5)");
  });
  timer.Tick();
  const auto frames = panel.FramesFromHost();
  ASSERT_EQ(frames.size(), before + 3);
  EXPECT_EQ(frames.back(), simulator::FrameCommand("10051"));
  EXPECT_TRUE(timer.Enabled());
  panel.ClearFaults();
  timer.Tick();
  EXPECT_EQ(Caption("lblRelayStatus", 5), "On");

  Press("cmdAutoUpdate");
  EXPECT_EQ(Text("lblAutoUpdate"), "Updates Disabled");
  EXPECT_TRUE(Find<QAction>("mnuFile").isEnabled());
  EXPECT_TRUE(Find<Button>("cmdAllRelaysOff").isEnabled());
  EXPECT_FALSE(timer.Enabled());

  // A connection lost while the menus are locked must not leave them so.
  Press("cmdAutoUpdate");
  panel.AddFault("drop");
  timer.Tick();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(LastMessage(), "Connection To Tamberloom 3 Panel Lost");
  EXPECT_EQ(window->LoadedForm("frmT3RelayStatus"), nullptr);
  EXPECT_TRUE(Find<QAction>("mnuFile").isEnabled());
  EXPECT_TRUE(Shown(Find<Button>("cmdConnect")));
}

TEST_F(OutputStatusTest, AnyCharacterButZeroIsOnAndAFailedSwitchIsIgnored) {
  ScriptedTransports lines;
  Connected = -1;
  PanelRecord.IOCount(0) = 1;
  lines.Serial.Replies = {{FrameReply("0x2" + std::string(45, '0'))}};
  Menu("mnuRelayStatus");
  EXPECT_EQ(Caption("lblRelayStatus", 0), "Off");
  EXPECT_EQ(Caption("lblRelayStatus", 1), "On");
  EXPECT_EQ(Caption("lblRelayStatus", 2), "On");
  Press("cmdTurnOn(1)");
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(Connected, -1);
  Press("cmdUpdateStatus");
  EXPECT_EQ(LastMessage(), "Connection To Tamberloom 3 Panel Lost");
}
