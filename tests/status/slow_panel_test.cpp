#include "link/panel_host.h"

using simulator::Panel;
using simulator::PanelThread;

class SlowPanelTest : public PanelHostTest {};

TEST_F(SlowPanelTest, PollsNeverStackWhenThePanelIsSlowerThanTheTimer) {
  const QString address = OwnAddress();
  PanelThread panel(TcpPanel(address));
  ConnectTo(address);
  panel.AddFault("late:40x*");
  Menu("mnuRelayStatus");
  auto* form = window->LoadedForm("frmT3RelayStatus");
  form->findChild<Timer*>("Timer1")->setInterval(5);
  Press("cmdAutoUpdate");

  int deepest = 0;
  QTimer sampler;
  QObject::connect(&sampler, &QTimer::timeout,
                   [&] { deepest = std::max(deepest, HandlerDepth()); });
  sampler.start(1);
  for (int relay = 0; relay < 8; ++relay) {
    Press(qPrintable(QStringLiteral("cmdTurnOn(%1)").arg(relay)));
    QTest::qWait(30);
  }
  QTest::qWait(200);
  Press("cmdAutoUpdate");
  QTest::qWait(100);

  // The sampler, the tick and its request; a poll inside a poll would add as many again.
  EXPECT_LE(deepest, 6);
  EXPECT_EQ(Connected, -1);
  EXPECT_TRUE(messages.size() <= 1 && LinkStatus() == "Connected");
  for (int relay = 0; relay < 16; ++relay) {
    EXPECT_EQ(Caption("lblRelayStatus", relay), relay < 8 ? "On" : "Off") << relay;
    EXPECT_EQ(panel.With([relay](Panel& p) { return p.Relay(relay); }), relay < 8);
  }
  const auto frames = panel.FramesFromHost();
  EXPECT_EQ(std::count_if(frames.begin(), frames.end(),
                          [](const auto& frame) { return frame.substr(3, 2) == "10"; }),
            8);
  EXPECT_TRUE(Find<QAction>("mnuEdit").isEnabled());
}
