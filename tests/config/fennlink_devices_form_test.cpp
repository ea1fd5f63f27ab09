#include "screen_test.h"

class FennlinkDevicesTest : public ScreenTest {
 protected:
  void Select(int device) {
    DataChanged = 0;
    Find<ComboBox>("cboFLinkDevice").SetListIndex(device);
  }
  void Open(int device) {
    Menu("mnuConfigureFennlinkDevices");
    Select(device);
  }
  /// The suffix of the frame on show.
  QString Frame() {
    QString shown;
    for (const char* family : {"16", "7", "8", "F"}) {
      if (Shows(QStringLiteral("fraConfigFLinkDevice") + family)) shown += family;
    }
    return shown;
  }
};

TEST_F(FennlinkDevicesTest, TheTypeChoosesTheFrameItsRowsAndTheInputTypes) {
  Open(0);
  EXPECT_EQ(Frame(), "");
  EXPECT_FALSE(Shows("cboFLinkType"));
  Select(5);
  const std::tuple<int, int, QString> cases[] = {
      {3, 2, "16"}, {6, 7, "16"}, {7, 3, "7"}, {8, 7, "8"}, {9, 7, "F"}};
  for (const auto& [type, lastRow, frame] : cases) {
    Choose("cboFLinkType", type);
    ASSERT_EQ(Frame(), frame);
    EXPECT_TRUE(Shows("lblInput" + frame + "Number", lastRow)) << type;
    EXPECT_FALSE(type == 3 && Shows("lblInput16Number", 3));
  }
}

TEST_F(FennlinkDevicesTest, ATimedOnInputShowsItsTimeAndKeepsIt) {
  FennlinkRecord& device = FennlinkRecords(64);
  device.DeviceType = 7;
  device.DeviceInputType(3) = 4;
  Open(64);
  Pick("lblInput7TimedOn", 3, "cboInput7NewTime", 40);
  Choose("cboInput7Type(3)", 2);
  EXPECT_FALSE(Shows("lblInput7TimedOn", 3));
  Choose("cboInput7Type(3)", 4);
  EXPECT_EQ(Caption("lblInput7TimedOn", 3), " 45 Minutes");
  device.DeviceTimedOnTime(3) = std::numeric_limits<Int32>::min();
  Click(Cell("lblInput7TimedOn", 3));
  EXPECT_EQ(Offered("cboInput7NewTime"), -1);
  Select(0);
  EXPECT_FALSE(Shows("cboInput7NewTime"));
}

TEST_F(FennlinkDevicesTest, LookingStoresNothingNewEvenWhenItMarksTheData) {
  constexpr Int16 types[] = {0, 8, 2, 9, 10, -1};
  for (int d = 1; d < 6; ++d) FennlinkRecords(d).DeviceType = types[d];
  FennlinkRecords(1).DeviceInputType(0) = 3;
  FennlinkRecords(2).DeviceInputType(0) = 8;
  FennlinkRecords(2).DeviceInputType(1) = -4;
  FennlinkRecords(3).DeviceOffLevel(0) = 200;
  FennlinkRecords(3).DeviceOffLevel(6) = -300;
  FennlinkRecords(3).DeviceOnLevel(6) = 32767;
  Open(0);
  const std::string before = EncodeProject(LiveProject);
  constexpr std::pair<int, int> visits[] = {{1, -1}, {0, 0}, {1, 0}, {2, -1},
                                            {3, -1}, {4, 0}, {5, 0}};
  for (const auto& [device, marks] : visits) {
    Select(device);
    EXPECT_EQ(DataChanged, marks) << device;
  }
  EXPECT_TRUE(EncodeProject(LiveProject) == before);
  EXPECT_EQ(Chosen("cboInput16Type(0)"), -1);
  EXPECT_EQ(Find<ScrollBar>("hsInputFOnLevel(6)").Value(), 255);
  EXPECT_EQ(Caption("lblInputFOffLevel", 6), " Off -300/255 (-118%)");
}
