#include "dimmer/dimmer_relay_control_form.h"

#include "panel/live_dimmers.h"
#include "screen_test.h"

class DimmerRelayControlTest : public ScreenTest {
 protected:
  void Open() {
    PanelRecord.IOCount(0) = 8;
    PanelRecord.IOCount(1) = 4;
    DimSetEnabled(0, 1);
    Menu("mnuDimmerToRelayControl");
  }

  /// The relays of device 1, output 1, from 1 on.
  std::vector<int> Relays() {
    std::vector<int> relays;
    for (Int16 relay = 0; relay < 48; ++relay) {
      EXPECT_EQ(Picture(relay).Lit(), DimGetRelay(0, 0, relay) != 0) << relay;
      if (DimGetRelay(0, 0, relay) != 0) relays.push_back(relay + 1);
    }
    return relays;
  }

  IncludePicture& Picture(int relay) {
    return static_cast<IncludePicture&>(Cell("imgInclude", relay));
  }
};

using Numbers = std::vector<int>;

TEST_F(DimmerRelayControlTest, AClickTurnsARelayAndShiftGivesARangeTheLastValue) {
  Open();
  Click(Cell("imgInclude", 40));
  Click(Cell("lblRelayName", 9));
  EXPECT_EQ(Relays(), (Numbers{10, 41}));
  QTest::mouseClick(&Cell("lblRelayName", 6), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_EQ(Relays(), (Numbers{7, 8, 9, 10, 41}));

  Click(Cell("imgInclude", 8));
  QTest::mouseClick(&Cell("imgInclude", 47), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_EQ(Relays(), (Numbers{7, 8})) << "the last value was clear";
  QTest::mouseDClick(&Cell("imgInclude", 47), Qt::LeftButton);
  EXPECT_EQ(Relays(), (Numbers{7, 8})) << "a fast pair counts twice";
}

TEST_F(DimmerRelayControlTest, TheKeyboardTurnsRelaysAndRangesToo) {
  Open();
  Cell("imgInclude", 0).setFocus();
  Key(Qt::Key_Space);
  Key(Qt::Key_Right);
  EXPECT_EQ(QApplication::focusWidget(), &Cell("imgInclude", 16));
  Key(Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(Relays().size(), 17U);
  Key(Qt::Key_Return);
  EXPECT_EQ(Relays().size(), 16U);
}

TEST_F(DimmerRelayControlTest, EachOutputHasItsOwnLevelsAndRelays) {
  PanelRecord.RelayName(4) = "Lobby";
  DimSetRelay(0, 1, 47, -1);
  Open();
  EXPECT_EQ(Caption("lblRelayName", 4), "Lobby ");
  EXPECT_EQ(Cell("lblRelayName", 4).toolTip(), "Relay 05 : Lobby");
  Choose("cboOnLevel", 75);
  Choose("cboDOut", 1);
  EXPECT_TRUE(Picture(47).Lit());
  Choose("cboOffLevel", 5);
  EXPECT_EQ(DimGetOnLevel(0, 0), 75);
  EXPECT_EQ(DimGetOnLevel(0, 1), 0);
  EXPECT_EQ(DimGetOffLevel(0, 1), 5);
  Choose("cboDDev", 1);
  for (const char* name : {"frmConfig", "cboOnLevel", "cboOffLevel"}) EXPECT_FALSE(Shows(name));
  EXPECT_TRUE(Shows("lblNotEnabled"));
}

TEST_F(DimmerRelayControlTest, ALampStandsAtItsName) {
  Open();
  for (const int relay : {0, 47}) {
    const int gap = Cell("lblRelayName", relay).x() - Picture(relay).geometry().right();
    EXPECT_LT(gap, 8) << relay;
    EXPECT_LT(Picture(relay).width(), 40) << relay;
  }
}

TEST_F(DimmerRelayControlTest, ShowingStoresWhatIsShownAndAnOverflowIsToldOnce) {
  DimmerBlock(112) = -32768;
  DimmerBlock(113) = 3;
  DimSetRelay(0, 0, 3, -1);
  Open();
  EXPECT_EQ(messages.size(), 1U);
  EXPECT_EQ(Chosen("cboOnLevel"), -1);
  EXPECT_EQ(Chosen("cboOffLevel"), 1);
  EXPECT_EQ(Relays(), Numbers{4});
  EXPECT_EQ(DimmerBlock(112), -32768);
  EXPECT_EQ(DimmerBlock(113), 2) << "the byte of 1 %";
}
