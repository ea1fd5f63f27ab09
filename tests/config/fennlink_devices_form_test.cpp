#include "panel/live_project.h"
#include "panel/project_codec.h"
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
      if (Shown(Find<QGroupBox>(QStringLiteral("fraConfigFLinkDevice") + family))) shown += family;
    }
    return shown;
  }
};

TEST_F(FennlinkDevicesTest, TheTypeChoosesTheFrameItsRowsAndTheInputTypes) {
  Open(0);
  EXPECT_EQ(Frame(), "");
  EXPECT_FALSE(Shown(Find<ComboBox>("cboFLinkType")));
  Select(5);
  const struct {
    int Type, LastRow;
    QString Frame;
  } cases[] = {{3, 2, "16"}, {6, 7, "16"}, {7, 3, "7"}, {8, 7, "8"}, {9, 7, "F"}};
  for (const auto& [type, lastRow, frame] : cases) {
    Choose("cboFLinkType", type);
    ASSERT_EQ(Frame(), frame);
    EXPECT_TRUE(Shown(Cell("lblInput" + frame + "Number", lastRow))) << type;
    EXPECT_FALSE(type == 3 && Shown(Cell("lblInput16Number", 3)));
  }
}

TEST_F(FennlinkDevicesTest, ATimedOnInputShowsItsTimeAndKeepsIt) {
  FennlinkRecord& device = FennlinkRecords(64);
  device.DeviceType = 7;
  device.DeviceInputType(3) = 4;
  Open(64);
  DataChanged = 0;
  Click(Cell("lblInput7TimedOn", 3));
  EXPECT_EQ(DataChanged, 0);
  ChooseInPlace("cboInput7NewTime", 40);
  EXPECT_EQ(DataChanged, -1);
  Choose("cboInput7Type(3)", 2);
  EXPECT_FALSE(Shown(Cell("lblInput7TimedOn", 3)));
  Choose("cboInput7Type(3)", 4);
  EXPECT_EQ(Caption("lblInput7TimedOn", 3), " 45 Minutes");
  device.DeviceTimedOnTime(3) = std::numeric_limits<Int32>::min();
  Click(Cell("lblInput7TimedOn", 3));
  EXPECT_EQ(Find<InPlaceList>("cboInput7NewTime").ListIndex(), -1);
  Select(0);
  EXPECT_FALSE(Find<InPlaceList>("cboInput7NewTime").isVisible());
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
  constexpr int visits[] = {1, 0, 1, 2, 3, 4, 5};
  constexpr int marks[] = {-1, 0, 0, -1, -1, 0, 0};
  for (int i = 0; i < 7; ++i) {
    Select(visits[i]);
    EXPECT_EQ(DataChanged, marks[i]) << i;
  }
  EXPECT_TRUE(EncodeProject(LiveProject) == before);
  EXPECT_EQ(Find<ComboBox>("cboInput16Type(0)").ListIndex(), -1);
  EXPECT_EQ(Find<ScrollBar>("hsInputFOnLevel(6)").Value(), 255);
  EXPECT_EQ(Caption("lblInputFOffLevel", 6), " Off -300/255 (-118%)");
}
