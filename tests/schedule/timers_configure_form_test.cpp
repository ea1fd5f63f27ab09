#include "panel/live_project.h"
#include "screen_test.h"

class TimersTest : public ScreenTest {
 protected:
  struct Timer {
    Int16 Type, Time, Days, Month, Date;
    bool operator==(const Timer&) const = default;
  };
  static Timer Stored(int timer) {
    const auto& panel = PanelRecord;
    return {panel.TimerTimeType(timer), panel.TimerTime(timer), panel.TimerDays(timer),
            panel.TimerHolidayMonth(timer), panel.TimerHolidayDate(timer)};
  }
  static void Set(int timer, const Timer& value) {
    PanelRecord.TimerTimeType(timer) = value.Type;
    PanelRecord.TimerTime(timer) = value.Time;
    PanelRecord.TimerDays(timer) = value.Days;
    PanelRecord.TimerHolidayMonth(timer) = value.Month;
    PanelRecord.TimerHolidayDate(timer) = value.Date;
  }
  int Index(const char* list) { return Find<ComboBox>(list).ListIndex(); }
  QString Words() { return Find<Label>("lblTimerInWords").Caption(); }
  void ClickOption(const char* name, int index) {
    Find<OptionButton>(QStringLiteral("%1(%2)").arg(name).arg(index)).click();
  }
};

TEST_F(TimersTest, ANormalTimeIsBuiltFromItsThreeLists) {
  PanelRecord.TimerName(48) = "555 1234";
  Menu("mnuConfigureTimers");
  EXPECT_EQ(Find<ComboBox>("cboTimerNumber").count(), 48);
  EXPECT_EQ(DataChanged, 0);
  EXPECT_EQ(Words(), "12:00 AM, every day");

  Choose("cboNormalTimeAmPm", 1);
  EXPECT_EQ(Stored(0), (Timer{12, 0, 0, 0, 1}));
  Choose("cboNormalTimeHour", 11);
  Choose("cboNormalTimeMinute", 59);
  EXPECT_EQ(DataChanged, -1);
  Choose("cboTimerNumber", 1);
  EXPECT_EQ(Stored(1), (Timer{0, 0, 0, 0, 1}));
  EXPECT_EQ(Stored(0), (Timer{23, 59, 0, 0, 1}));
}

TEST_F(TimersTest, ARelativeTimeKeepsEventAndOffsetApart) {
  Set(2, {216, 40, 0, 0, 1});
  Menu("mnuConfigureTimers");
  ClickOption("optTimeType", 1);
  EXPECT_EQ(Stored(0).Type, 24);
  Choose("cboAstroType", 2);
  Choose("cboMinuteFromAstro", 999);
  EXPECT_EQ(Stored(0), (Timer{91, 231, 0, 0, 1}));
  EXPECT_EQ(Words(), "999 min before sunset, every day");
  Choose("cboAstroType", 3);
  EXPECT_EQ(Stored(0), (Timer{123, 231, 0, 0, 1}));
  ClickOption("optTimeType", 1);
  EXPECT_EQ(Stored(0), (Timer{123, 231, 0, 0, 1}));

  ClickOption("optTimeType", 2);
  EXPECT_EQ(Stored(0), (Timer{152, 0, 0, 0, 1}));
  EXPECT_FALSE(Shown(Find<ComboBox>("cboAstroType")));
  EXPECT_TRUE(Shown(Find<ComboBox>("cboMinuteFromOpenClose")));
  ClickOption("optTimeType", 1);
  EXPECT_EQ(Stored(0), (Timer{24, 0, 0, 0, 1}));

  DataChanged = 0;
  Choose("cboTimerNumber", 2);
  EXPECT_TRUE(Shown(Find<ComboBox>("cboOpenCloseType")));
  EXPECT_EQ(Find<ComboBox>("cboOpenCloseType").currentText(), "Before Close");
  EXPECT_EQ(Find<ComboBox>("cboMinuteFromOpenClose").currentText(), "40 Min");
  EXPECT_EQ(Stored(2), (Timer{216, 40, 0, 0, 1}));
  EXPECT_EQ(DataChanged, -1);
}

TEST_F(TimersTest, DaysAreLeftOutWithoutMarkingTheData) {
  Menu("mnuConfigureTimers");
  for (const int day : {0, 6, 7}) {
    Find<CheckBox>(QStringLiteral("chkDays(%1)").arg(day)).click();
  }
  EXPECT_EQ(PanelRecord.TimerDays(0), 0xC1);
  EXPECT_EQ(DataChanged, 0);
  EXPECT_EQ(Words(), "12:00 AM, Mon to Fri, not on holidays");
  Find<CheckBox>("chkDays(6)").click();
  EXPECT_EQ(PanelRecord.TimerDays(0), 0x81);

  ClickOption("optDaysType", 1);
  EXPECT_EQ(Stored(0), (Timer{0, 0, 0x81, 1, 1}));
  EXPECT_FALSE(Shown(Find<CheckBox>("chkDays(0)")));
  Choose("cboHolidayMonth", 1);
  Choose("cboHolidayDate", 30);
  EXPECT_EQ(Stored(0), (Timer{0, 0, 0x81, 2, 31}));
  EXPECT_EQ(DataChanged, -1);
  ClickOption("optDaysType", 0);
  EXPECT_EQ(Stored(0), (Timer{0, 0, 0x81, 0, 31}));
}

TEST_F(TimersTest, DamagedTimersShowNoSelectionAndStayAsTheyAre) {
  const Timer damaged[] = {
      {-5, 75, 0, 13, 0}, {5, -1, 0, -1, 32}, {24, 1000, 0, 12, 31}, {-32768, 32767, 0, 32767, -1}};
  for (int i = 0; i < 4; ++i) Set(i + 1, damaged[i]);
  Menu("mnuConfigureTimers");
  for (int i = 1; i < 4; ++i) {
    QTest::keyClick(&Find<ComboBox>("cboTimerNumber"), Qt::Key_Down);
    EXPECT_EQ(Index("cboTimerNumber"), i);
    if (i != 3) {
      EXPECT_EQ(Index("cboNormalTimeMinute"), -1);
      EXPECT_EQ(Index("cboHolidayDate"), -1);
      EXPECT_EQ(Stored(i), damaged[i - 1]);
    }
  }
  EXPECT_EQ(Index("cboMinuteFromAstro"), -1);
  EXPECT_EQ(Stored(3), damaged[2]);
  EXPECT_EQ(Words(), "at an unknown time, on December 31");
  Choose("cboTimerNumber", 4);
  EXPECT_EQ(Stored(4), damaged[3]);
  EXPECT_EQ(Index("cboNormalTimeAmPm"), -1);

  Choose("cboTimerNumber", 1);
  Choose("cboNormalTimeAmPm", 0);
  Choose("cboNormalTimeHour", 3);
  EXPECT_EQ(PanelRecord.TimerTimeType(1), 3);
}
