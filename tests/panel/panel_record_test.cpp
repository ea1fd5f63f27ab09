#include "panel/checked_arithmetic.h"
#include "panel/document_fixture.h"

using PanelRecordTest = DocumentTest;

TEST_F(PanelRecordTest, InstalledPointsAreCappedAndOverflowFails) {
  PanelRecord.IOCount(12) = PanelRecord.IOCount(11) = 10;
  EXPECT_EQ(PanelIOCount(), 44);
  PanelRecord.IOCount(5) = 2;
  EXPECT_EQ(PanelIOCount(), 48);
  for (const Int16 damaged : {Int16{8192}, Int16{8191}}) {
    PanelRecord.IOCount(0) = damaged;
    EXPECT_THROW(PanelIOCount(), RunTimeFailure) << damaged;
  }
  EXPECT_EQ(FloorDiv(-1, 256), -1);
  EXPECT_EQ(FloorDiv(-256, 256), -1);
  EXPECT_EQ(FloorDiv(std::numeric_limits<int>::min(), 256), -8388608);
}

TEST_F(PanelRecordTest, IndexOutsideAnArrayNeverReachesANeighbour) {
  EXPECT_EQ(&PanelRecord.InputRelayControl(3, 5), &PanelRecord.InputRelayControl.elements[248]);
  for (const int outside : {-1, 49}) {
    EXPECT_THROW(PanelRecord.TimerName(outside), RunTimeFailure);
    EXPECT_THROW(PanelRecord.InputRelayControl(outside, 0), RunTimeFailure);
    EXPECT_THROW(PanelRecord.InputRelayControl(0, outside), RunTimeFailure);
  }
  EXPECT_THROW(PanelRecord.DateOpenTime(13, 0), RunTimeFailure);
  EXPECT_THROW(PanelRecord.IOCount(0, 1), RunTimeFailure);
}
