#include "line/scripted_transport.h"
#include "link/panel_host.h"
#include "panel/live_project.h"
#include "simulator/line/frame.h"

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
