#include "screen_test.h"

class FennlinkPilotsTest : public ScreenTest {
 protected:
  void Open(int device, Int16 type) {
    FennlinkRecords(device).DeviceType = type;
    Menu("mnuFennlinkPilots");
    Find<ComboBox>("cboFennlinkDevice").SetListIndex(device);
    DataChanged = 0;
  }

  void ClickButton(const char* name) { Click(Find<Button>(QString::fromLatin1(name))); }
};

TEST_F(FennlinkPilotsTest, TheTypeDecidesTheRowsAndWhetherThereIsAMap) {
  constexpr int rowsOfType[] = {0, 1, 2, 3, 4, 5, 8, 4, 8, 0, 0};
  for (int type = 0; type <= 10; ++type) {
    Open(33, static_cast<Int16>(type));
    for (int row = 0; row < 8; ++row) {
      EXPECT_EQ(Shown(Cell("lblPilotSource", row)), row < rowsOfType[type]) << type;
    }
    EXPECT_EQ(Shown(Find<Button>("cmdAutoMapThisFL")), rowsOfType[type] > 0);
    EXPECT_EQ(Shown(Find<Button>("cmdAutoMapAllFL")), rowsOfType[type] > 0);
  }
  window->ShowForm("frmT3FennlinkPilots");
  EXPECT_EQ(Find<ComboBox>("cboFennlinkDevice").ListIndex(), 33);
}

TEST_F(FennlinkPilotsTest, AStoredCodeIsToldAsSourceAndNumber) {
  constexpr Int16 codes[] = {0, 3, 69, 128, 195, 255, 256, -1};
  const QString sources[] = {
      "Static ", "Static ", "On If Relay ", "On If Group ", "On If Preset ", "On If Preset ",
      " ",       " "};
  const QString numbers[] = {" Off", " On", " 6", " 1", " 4", " 64", " 1", " 64"};
  for (int i = 0; i < 8; ++i) FennlinkRecords(10).DevicePilot(i) = codes[i];
  FennlinkRecords(10).DeviceName = "A%1%2";
  Open(10, 8);
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(Caption("lblPilotSource", i), sources[i]) << codes[i];
    EXPECT_EQ(Caption("lblPilotNumber", i), numbers[i]) << codes[i];
    EXPECT_EQ(FennlinkRecords(10).DevicePilot(i), codes[i]);
  }
  EXPECT_EQ(Caption("lblInputName", 2), " A%1%2.3");
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(FennlinkPilotsTest, SourceAndNumberAreChosenApart) {
  FennlinkRecords(1).DevicePilot(0) = 5;
  FennlinkRecords(1).DevicePilot(1) = 256 + 64 + 9;
  Open(1, 2);
  Click(Cell("lblPilotSource", 0));
  EXPECT_EQ(Find<InPlaceList>("cboNewSource").ListIndex(), 0);
  EXPECT_EQ(DataChanged, 0);
  ChooseInPlace("cboNewSource", 2);
  EXPECT_EQ(FennlinkRecords(1).DevicePilot(0), 128 + 5);
  EXPECT_EQ(DataChanged, -1);

  DataChanged = 0;
  Click(Cell("lblPilotNumber", 0));
  EXPECT_EQ(Find<InPlaceList>("cboNewNumber").ListIndex(), 5);
  ChooseInPlace("cboNewNumber", 47);
  EXPECT_EQ(FennlinkRecords(1).DevicePilot(0), 128 + 47);
  EXPECT_EQ(Caption("lblPilotNumber", 0), " 48");
  EXPECT_EQ(DataChanged, -1);

  Click(Cell("lblPilotNumber", 1));
  ChooseInPlace("cboNewNumber", 3);
  EXPECT_EQ(FennlinkRecords(1).DevicePilot(1), 64 + 3);
}

TEST_F(FennlinkPilotsTest, AStaticPilotTogglesWithoutMarkingTheData) {
  FennlinkRecords(1).DevicePilot(1) = 6;
  FennlinkRecords(1).DevicePilot(2) = 64;
  Open(1, 3);
  Click(Cell("lblPilotNumber", 0));
  EXPECT_EQ(FennlinkRecords(1).DevicePilot(0), 1);
  EXPECT_EQ(Caption("lblPilotNumber", 0), " On");
  QTest::mouseDClick(&Cell("lblPilotNumber", 0), Qt::LeftButton);
  EXPECT_EQ(FennlinkRecords(1).DevicePilot(0), 1);

  Click(Cell("lblPilotNumber", 2));
  EXPECT_TRUE(Find<InPlaceList>("cboNewNumber").isVisible());
  Click(Cell("lblPilotNumber", 1));
  EXPECT_EQ(FennlinkRecords(1).DevicePilot(1), 0);
  EXPECT_FALSE(Find<InPlaceList>("cboNewNumber").isVisible());
  EXPECT_EQ(DataChanged, 0);
}

TEST_F(FennlinkPilotsTest, MappingOneDeviceFollowsWhatItsInputsControl) {
  FennlinkRecord& device = FennlinkRecords(12);
  device.DeviceRelayControl(1, 5) = 2;
  device.DeviceRelayControl(1, 47) = 1;
  device.DeviceGroupControl(1, 2) = 1;
  device.DeviceGroupControl(2, 47) = -7;
  device.DeviceInputType(3) = 3;
  device.DevicePreset(3) = 3;
  device.DeviceRelayControl(3, 0) = 1;
  device.DeviceRelayControl(7, 10) = 1;
  for (int input = 0; input < 8; ++input) device.DeviceOffLevel(input) = 9;
  device.DeviceOnLevel(0) = 9;
  device.DevicePilot(0) = 77;
  Open(12, 7);
  ClickButton("cmdAutoMapThisFL");
  EXPECT_EQ(device.DevicePilot.elements, (std::array<Int16, 9>{0, 69, 175, 195, 0, 0, 0, 74, 0}));
  EXPECT_EQ(device.DeviceOffLevel(7), 0);
  EXPECT_EQ(device.DeviceOnLevel(0), 9);
  EXPECT_EQ(Caption("lblPilotNumber", 1), " 6");
  EXPECT_EQ(DataChanged, 0);
  EXPECT_TRUE(messages.empty());

  device.DeviceType = 6;
  ClickButton("cmdAutoMapThisFL");
  EXPECT_EQ(device.DevicePilot(3), 64);
  device.DeviceInputType(3) = 1;
  device.DevicePreset(3) = 32767;
  ClickButton("cmdAutoMapThisFL");
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].Icon, MsgIcon::Critical);
  EXPECT_NE(window->cursor().shape(), Qt::WaitCursor);
}

TEST_F(FennlinkPilotsTest, MappingAllAsksFirstAndLeavesPhotocellsAlone) {
  const auto mapped = [](int d) { return FennlinkRecords(d).DevicePilot(7) == 64 + 3; };
  for (int d = 0; d <= 64; ++d) FennlinkRecords(d).DeviceRelayControl(7, 3) = 1;
  FennlinkRecords(1).DeviceType = 9;
  FennlinkRecords(2).DeviceType = 10;
  FennlinkRecords(3).DeviceType = -1;
  FennlinkRecords(64).DeviceType = 8;
  Open(4, 1);
  answers = {MsgAnswer::No};
  ClickButton("cmdAutoMapAllFL");
  EXPECT_FALSE(mapped(4));
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_EQ(messages[0].Text, "This Will Auto Map The Pilots For ALL Fennlink Devices.\nContinue?");
  EXPECT_EQ(messages[0].Title, "Auto Map Verify");
  EXPECT_EQ(messages[0].Icon, MsgIcon::Question);
  EXPECT_EQ(messages[1].Text, "Auto Map Canceled");

  ClickButton("cmdAutoMapAllFL");
  ASSERT_EQ(messages.size(), 4U);
  EXPECT_EQ(messages[3].Text, "Auto Map Complete");
  EXPECT_EQ(messages[3].Title, "Auto Map");
  EXPECT_EQ(messages[3].Icon, MsgIcon::None);
  for (int d = 0; d <= 64; ++d) EXPECT_EQ(mapped(d), d == 4 || d == 64) << d;
  EXPECT_EQ(DataChanged, 0);
}
