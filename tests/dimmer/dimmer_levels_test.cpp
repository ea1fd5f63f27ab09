#include "line/panel_transact.h"
#include "line/scripted_transport.h"
#include "panel/live_dimmers.h"
#include "screen_test.h"

class DimmerLevelsTest : public ScreenTest {
 protected:
  void Open(Int16 connectionType) {
    for (const Int16 dev : {Int16{0}, Int16{11}}) DimSetEnabled(dev, 1);
    ConnectionType() = connectionType;
    Connected = -1;
    Menu("mnuConfigureDimmers");
  }

  /// Levels of which the first and the last device have some.
  static std::string Reply() { return PanelFrame("017FFF" + std::string(80, '8') + "33CCFE00"); }

  static long Requests(const ScriptedLine& line) {
    return std::count(line.Steps.begin(), line.Steps.end(), "send " + PanelFrame("49"));
  }

  QString Levels() { return Captions("lblShowLevels", {0, 1, 2, 3}); }

  Timer& Status() { return Find<Timer>("tmrStatus"); }

  ScriptedTransports lines;
};

TEST_F(DimmerLevelsTest, OverTcpTheTimerReadsTheLevelsOfTheDevice) {
  Open(2);
  EXPECT_TRUE(Status().Enabled());
  EXPECT_FALSE(Find<Button>("cmdUpdate").isEnabled());
  lines.Socket.Replies = {{Reply()}, {Reply()}};
  lines.Socket.WhileWaiting = [this] { Status().Tick(); };
  Status().Tick();
  EXPECT_EQ(Levels(), "0%|0%|50%|100%");
  EXPECT_EQ(Requests(lines.Socket), 1) << "a tick in the wait passes over";

  Choose("cboDDev", 11);
  EXPECT_EQ(Levels(), "|||");
  Status().Tick();
  EXPECT_EQ(Levels(), "20%|80%|100%|0%");

  Choose("cboDDev", 1);
  EXPECT_FALSE(Status().Enabled());
  EXPECT_FALSE(Shows("lblHdrLev", 0));
  Status().Tick();
  EXPECT_EQ(Requests(lines.Socket), 2) << "a device that is off has no levels";
}

TEST_F(DimmerLevelsTest, OnSerialTheTimerRunsOnlyUntilTheFirstChoice) {
  Open(0);
  EXPECT_TRUE(Status().Enabled());
  Choose("cboDOut", 1);
  EXPECT_FALSE(Status().Enabled());
  lines.Serial.Replies = {{Reply()}};
  Press("cmdUpdate");
  EXPECT_EQ(Levels(), "0%|0%|50%|100%");
}

TEST_F(DimmerLevelsTest, ASilentPanelEndsTheConnection) {
  Open(2);
  Status().Tick();
  EXPECT_EQ(Requests(lines.Socket), 3);
  EXPECT_EQ(OnlyMessage(), "Connection To Tamberloom 3 Panel Lost");
  EXPECT_EQ(window->LoadedForm(Screen::DimmerOutput), nullptr);
}
