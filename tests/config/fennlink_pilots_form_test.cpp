#include "screen_test.h"

class FennlinkPilotsTest : public ScreenTest {
 protected:
  void Open(int device, Int16 type) {
    FennlinkRecords(device).DeviceType = type;
    Menu("mnuFennlinkPilots");
    Find<ComboBox>("cboFennlinkDevice").SetListIndex(device);
    DataChanged = 0;
  }
};

TEST_F(FennlinkPilotsTest, TheTypeDecidesTheRowsAndAnyCodeIsTold) {
  constexpr Int16 codes[] = {0, 3, 69, 128, 195, 256, -1, 0};
  const QString texts[] = {"Static  Off",     "Static  On", "On If Relay  6", "On If Group  1",
                           "On If Preset  4", "  1",        "  64",           "Static  Off"};
  constexpr int rowsOfType[] = {0, 1, 2, 3, 4, 5, 8, 4, 8, 0, 0};
  for (int i = 0; i < 8; ++i) FennlinkRecords(33).DevicePilot(i) = codes[i];
  for (int type = 0; type <= 10; ++type) {
    Open(33, static_cast<Int16>(type));
    for (int i = 0; i < 8; ++i) {
      EXPECT_EQ(Shows("lblPilotSource", i), i < rowsOfType[type]) << type;
      EXPECT_EQ(Caption("lblPilotSource", i) + Caption("lblPilotNumber", i), texts[i]);
    }
    EXPECT_EQ(Shows("cmdAutoMapAllFL"), rowsOfType[type] > 0);
  }
}

TEST_F(FennlinkPilotsTest, ChoicesMarkTheDataAndTheStaticToggleDoesNot) {
  DeviceInputArray& pilot = FennlinkRecords(1).DevicePilot;
  pilot(0) = 6;
  pilot(1) = 256 + 64 + 9;
  Open(1, 2);
  Click(Cell("lblPilotNumber", 1));
  EXPECT_EQ(Offered("cboNewNumber"), 9);
  for (const int toggled : {0, 1}) {
    Click(Cell("lblPilotNumber", 0));
    EXPECT_EQ(pilot(0), toggled);
  }
  EXPECT_EQ(DataChanged, 0);

  Pick("lblPilotSource", 0, "cboNewSource", 2);
  EXPECT_EQ(pilot(0), 128 + 1);
  Pick("lblPilotNumber", 1, "cboNewNumber", 3);
  EXPECT_EQ(pilot(1), 64 + 3);
}

TEST_F(FennlinkPilotsTest, MappingOneDeviceFollowsWhatItsInputsControl) {
  FennlinkRecord& device = FennlinkRecords(12);
  device.DeviceRelayControl(1, 5) = 2;
  device.DeviceGroupControl(1, 2) = 1;
  device.DeviceGroupControl(2, 47) = -7;
  device.DeviceInputType(3) = 3;
  device.DevicePreset(3) = 3;
  device.DeviceRelayControl(3, 0) = 1;
  device.DeviceRelayControl(7, 10) = 1;
  device.DeviceOffLevel(7) = 9;
  device.DeviceOnLevel(7) = 9;
  Open(12, 7);
  Press("cmdAutoMapThisFL");
  EXPECT_EQ(device.DevicePilot.elements, (std::array<Int16, 9>{0, 69, 175, 195, 0, 0, 0, 74, 0}));
  EXPECT_EQ(device.DeviceOffLevel(7), 0);
  EXPECT_EQ(device.DeviceOnLevel(7), 9);

  device.DeviceType = 6;
  Press("cmdAutoMapThisFL");
  EXPECT_EQ(device.DevicePilot(3), 64);
  device.DeviceInputType(3) = 1;
  device.DevicePreset(3) = 32767;
  Press("cmdAutoMapThisFL");
  EXPECT_EQ(messages.size(), 1U);
  EXPECT_NE(window->cursor().shape(), Qt::WaitCursor);
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(FennlinkPilotsTest, MappingAllAsksFirstAndLeavesPhotocellsAlone) {
  const auto mapped = [](int d) { return FennlinkRecords(d).DevicePilot(7) == 64 + 3; };
  for (int d = 0; d <= 64; ++d) FennlinkRecords(d).DeviceRelayControl(7, 3) = 1;
  FennlinkRecords(1).DeviceType = 9;
  FennlinkRecords(3).DeviceType = -1;
  FennlinkRecords(64).DeviceType = 8;
  Open(4, 1);
  answers = {MsgAnswer::No};
  Press("cmdAutoMapAllFL");
  EXPECT_FALSE(mapped(4));
  Press("cmdAutoMapAllFL");
  ASSERT_EQ(messages.size(), 4U);
  EXPECT_EQ(messages[0].Text, "This Will Auto Map The Pilots For ALL Fennlink Devices.\nContinue?");
  EXPECT_EQ(messages[1].Text, "Auto Map Canceled");
  EXPECT_EQ(messages[3].Text, "Auto Map Complete");
  for (int d = 0; d <= 64; ++d) EXPECT_EQ(mapped(d), d == 4 || d == 64) << d;
  EXPECT_EQ(DataChanged, 0);
  EXPECT_FALSE(Find<Label>("lblNoPilots").isVisible());
  Choose("cboFennlinkDevice", 1);
  EXPECT_TRUE(Find<Label>("lblNoPilots").isVisible()) << "in place of an empty screen";
}
