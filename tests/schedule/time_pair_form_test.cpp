#include "panel/live_project.h"
#include "screen_test.h"

class TimePairTest : public ScreenTest {
 protected:
  void ChooseMonth(int month) {
    Find<OptionButton>(QStringLiteral("optMonth(%1)").arg(month)).click();
  }
  void Set(const char* label, int row, int item) {
    Click(Cell(label, row));
    ChooseInPlace("cboNewTime", item);
  }
};

TEST_F(TimePairTest, WeekdaysHaveAnOpenAndACloseTime) {
  PanelRecord.NormalCloseTime(2) = 100;
  Menu("mnuOpenCloseTimeNormalDays");
  EXPECT_EQ(Caption("lblCloseTime", 2), "1:00A");
  EXPECT_EQ(DataChanged, 0);
  Click(Cell("lblCloseTime", 2));
  EXPECT_EQ(Find<InPlaceList>("cboNewTime").ListIndex(), -1);
  EXPECT_EQ(DataChanged, -1);
  DataChanged = 0;
  ChooseInPlace("cboNewTime", 95);
  EXPECT_EQ(PanelRecord.NormalCloseTime(2), 95);
  EXPECT_EQ(Caption("lblCloseTime", 2), "11:45P");
  EXPECT_EQ(DataChanged, -1);
}

TEST_F(TimePairTest, ADateHasBothTimesOrNone) {
  PanelRecord.DateOpenTime(0, 4) = 98;
  PanelRecord.DateCloseTime(0, 4) = 101;
  Menu("mnuOpenCloseTimeSingleDates");
  EXPECT_EQ(Caption("lblOpenTime", 4), "12:30A");
  EXPECT_EQ(Caption("lblCloseTime", 4), "--:--");

  Set("lblOpenTime", 0, 33);
  EXPECT_EQ(PanelRecord.DateOpenTime(0, 0), 32);
  EXPECT_EQ(PanelRecord.DateCloseTime(0, 0), 0);
  EXPECT_EQ(Caption("lblCloseTime", 0), "12:00A");
  Set("lblCloseTime", 0, 96);
  EXPECT_EQ(PanelRecord.DateOpenTime(0, 0), 32);
  EXPECT_EQ(PanelRecord.DateCloseTime(0, 0), 95);
  Set("lblOpenTime", 4, 1);
  EXPECT_EQ(PanelRecord.DateCloseTime(0, 4), 101);
  Click(Cell("lblCloseTime", 0));
  EXPECT_EQ(Find<InPlaceList>("cboNewTime").ListIndex(), 96);
  ChooseInPlace("cboNewTime", 0);
  EXPECT_EQ(PanelRecord.DateOpenTime(0, 0), 100);
  EXPECT_EQ(PanelRecord.DateCloseTime(0, 0), 100);
}

TEST_F(TimePairTest, MonthsShowTheirOwnDates) {
  PanelRecord.DateOpenTime(1, 30) = 40;
  Menu("mnuOpenCloseTimeSingleDates");
  Click(Cell("lblOpenTime", 30));
  ChooseMonth(1);
  EXPECT_FALSE(Find<InPlaceList>("cboNewTime").isVisible());
  EXPECT_TRUE(Shown(Cell("lblDate", 28)));
  EXPECT_FALSE(Shown(Cell("lblOpenTime", 29)));
  EXPECT_EQ(Caption("lblDate", 28), "Feb 29");
  Set("lblOpenTime", 28, 1);
  EXPECT_EQ(PanelRecord.DateOpenTime(1, 28), 0);
  EXPECT_EQ(PanelRecord.DateOpenTime(1, 30), 40);
  ChooseMonth(11);
  EXPECT_EQ(Caption("lblDate", 30), "Dec 31");
  EXPECT_TRUE(Shown(Cell("lblCloseTime", 30)));
}

TEST_F(TimePairTest, InputsShowTheInstalledPoints) {
  PanelRecord.IOCount(0) = 2;
  PanelRecord.InputEnableTime(3) = -1;
  Menu("mnuInputActiveTimes");
  EXPECT_FALSE(Shown(Cell("lblInputName", 8)));
  EXPECT_EQ(Caption("lblInputEnableTime", 3), "12:15A");
  Set("lblInputDisableTime", 7, 48);
  EXPECT_EQ(PanelRecord.InputDisableTime(7), 48);
  PanelRecord.IOCount(0) = -1;
  Menu("mnuInputActiveTimes");
  EXPECT_FALSE(Shown(Cell("lblInputName", 0)));
  EXPECT_TRUE(messages.empty());
}
