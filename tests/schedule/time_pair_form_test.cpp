#include <QTreeWidget>

#include "screen_test.h"

class TimePairTest : public ScreenTest {
 protected:
  void ChooseMonth(int month) { Find<OptionButton>("optMonth", month).click(); }
  void Set(const char* label, int row, int item) { Pick(label, row, "cboNewTime", item); }
};

TEST_F(TimePairTest, ADateHasBothTimesOrNone) {
  PanelRecord.DateOpenTime(0, 4) = 98;
  PanelRecord.DateCloseTime(0, 4) = 101;
  Menu("mnuOpenCloseTimeSingleDates");
  EXPECT_EQ(Caption("lblOpenTime", 4) + Caption("lblCloseTime", 4), "12:30A--:--");
  const auto times = [](int row) {
    return std::pair<int, int>(PanelRecord.DateOpenTime(0, row), PanelRecord.DateCloseTime(0, row));
  };
  Set("lblOpenTime", 0, 33);
  EXPECT_EQ(times(0), std::pair(32, 0));
  EXPECT_EQ(Caption("lblCloseTime", 0), "12:00A");
  Set("lblCloseTime", 0, 96);
  EXPECT_EQ(times(0), std::pair(32, 95));
  Set("lblOpenTime", 4, 1);
  EXPECT_EQ(times(4), std::pair(0, 101));
  Click(Cell("lblCloseTime", 0));
  EXPECT_EQ(Offered("cboNewTime"), 96);
  ChooseInPlace("cboNewTime", 0);
  EXPECT_EQ(times(0), std::pair(100, 100));
}

TEST_F(TimePairTest, MonthsShowTheirOwnDates) {
  PanelRecord.DateOpenTime(1, 30) = 40;
  Menu("mnuOpenCloseTimeSingleDates");
  Click(Cell("lblOpenTime", 30));
  ChooseMonth(1);
  EXPECT_FALSE(Shows("cboNewTime"));
  EXPECT_TRUE(Shows("lblDate", 28));
  EXPECT_FALSE(Shows("lblOpenTime", 29));
  EXPECT_EQ(Caption("lblDate", 28), "Feb 29");
  Set("lblOpenTime", 28, 1);
  EXPECT_EQ(PanelRecord.DateOpenTime(1, 28), 0);
  EXPECT_EQ(PanelRecord.DateOpenTime(1, 30), 40);
  ChooseMonth(11);
  EXPECT_EQ(Caption("lblDate", 30), "Dec 31");
  EXPECT_TRUE(Shows("lblCloseTime", 30));
}

TEST_F(TimePairTest, MonthsWithDatesStandOutAndTheYearsDatesAreOnOneSheet) {
  PanelRecord.DateOpenTime(6, 3) = PanelRecord.DateCloseTime(6, 3) = 48;
  PanelRecord.DateOpenTime(11, 23) = 32;
  PanelRecord.DateOpenTime(1, 30) = 40;  // no date
  Menu("mnuOpenCloseTimeSingleDates");
  const auto told = [&](int month) {
    return Find<OptionButton>("optMonth", month).accessibleName();
  };
  EXPECT_EQ(told(6), "July - 1 date");
  EXPECT_EQ(told(1), "February");
  EXPECT_TRUE(Find<OptionButton>("optMonth", 11).font().bold());
  ChooseMonth(6);
  Set("lblOpenTime", 4, 3);
  EXPECT_EQ(told(6), "July - 2 dates");
  Set("lblOpenTime", 4, 0);
  Press("cmdAllDates");
  auto& dates = Find<QTreeWidget>("lstDates");
  ASSERT_EQ(dates.topLevelItemCount(), 2);
  EXPECT_EQ(dates.topLevelItem(0)->text(0) + dates.topLevelItem(0)->text(1), "July 412:00P");
  EXPECT_EQ(dates.topLevelItem(1)->text(2), "--:--");
  Key(Qt::Key_Down);
  Key(Qt::Key_Return);
  EXPECT_TRUE(Cell("lblOpenTime", 23).hasFocus());
  EXPECT_TRUE(Find<OptionButton>("optMonth", 11).Value());
}

TEST_F(TimePairTest, TimesBeyondTheDayAreShownAndInputsOfTheInstalledPoints) {
  PanelRecord.NormalCloseTime(2) = 100;
  Menu("mnuOpenCloseTimeNormalDays");
  EXPECT_EQ(Caption("lblCloseTime", 2), "1:00A");
  Click(Cell("lblCloseTime", 2));
  EXPECT_EQ(Offered("cboNewTime"), -1);
  ChooseInPlace("cboNewTime", 95);
  EXPECT_EQ(Caption("lblCloseTime", 2), "11:45P");

  PanelRecord.IOCount(0) = 2;
  PanelRecord.InputEnableTime(3) = -1;
  Menu("mnuInputActiveTimes");
  EXPECT_FALSE(Shows("lblInputName", 8));
  EXPECT_EQ(Caption("lblInputEnableTime", 3), "12:15A");
  Set("lblInputDisableTime", 7, 48);
  EXPECT_EQ(PanelRecord.InputDisableTime(7), 48);
  PanelRecord.IOCount(0) = -1;
  Menu("mnuInputActiveTimes");
  EXPECT_FALSE(Shows("lblInputName", 0));
  EXPECT_TRUE(messages.empty());
}
