#include "panel/stopwatch.h"
#include "screen_test.h"

class TimersTest : public ScreenTest {
 protected:
  /// Type, time, days, month and date.
  using Timer = std::tuple<Int16, Int16, Int16, Int16, Int16>;
  static auto Stored(int timer) {
    auto& panel = PanelRecord;
    return std::tie(panel.TimerTimeType(timer), panel.TimerTime(timer), panel.TimerDays(timer),
                    panel.TimerHolidayMonth(timer), panel.TimerHolidayDate(timer));
  }
  QString Words() { return Text("lblTimerInWords"); }
  void ClickOption(const char* name, int index) { Find<OptionButton>(name, index).click(); }
};

TEST_F(TimersTest, ANormalTimeIsBuiltFromItsThreeLists) {
  PanelRecord.TimerName(48) = "555 1234";
  Menu("mnuConfigureTimers");
  EXPECT_EQ(Find<ComboBox>("cboTimerNumber").count(), 48);
  EXPECT_EQ(Words(), "12:00 AM, every day");
  Choose("cboNormalTimeAmPm", 1);
  EXPECT_EQ(Stored(0), (Timer{12, 0, 0, 0, 1}));
  Choose("cboNormalTimeHour", 11);
  Choose("cboNormalTimeMinute", 59);
  for (const int timer : {1, 0}) {
    Choose("cboTimerNumber", timer);
    EXPECT_EQ(Stored(timer), (timer == 0 ? Timer{23, 59, 0, 0, 1} : Timer{0, 0, 0, 0, 1}));
  }
}

TEST_F(TimersTest, ARelativeTimeKeepsEventAndOffsetApart) {
  Stored(2) = Timer{216, 40, 0, 0, 1};
  Menu("mnuConfigureTimers");
  ClickOption("optTimeType", 1);
  EXPECT_EQ(PanelRecord.TimerTimeType(0), 24);
  Choose("cboAstroType", 2);
  Choose("cboMinuteFromAstro", 999);
  EXPECT_EQ(Stored(0), (Timer{91, 231, 0, 0, 1}));
  EXPECT_EQ(Words(), "999 min before sunset, every day");
  Choose("cboAstroType", 3);
  ClickOption("optTimeType", 1);
  EXPECT_EQ(Stored(0), (Timer{123, 231, 0, 0, 1}));

  ClickOption("optTimeType", 2);
  EXPECT_EQ(Stored(0), (Timer{152, 0, 0, 0, 1}));
  EXPECT_FALSE(Shows("cboAstroType"));
  EXPECT_TRUE(Shows("cboMinuteFromOpenClose"));
  ClickOption("optTimeType", 1);
  EXPECT_EQ(Stored(0), (Timer{24, 0, 0, 0, 1}));

  DataChanged = 0;
  Choose("cboTimerNumber", 2);
  EXPECT_TRUE(Shows("cboOpenCloseType"));
  EXPECT_EQ(ChosenText("cboOpenCloseType"), "Before Close");
  EXPECT_EQ(ChosenText("cboMinuteFromOpenClose"), "40 Min");
  EXPECT_EQ(Stored(2), (Timer{216, 40, 0, 0, 1}));
  EXPECT_EQ(DataChanged, -1);
}

TEST_F(TimersTest, WhatItDoesNextIsToldAndLeadsThere) {
  NowSeam = [] { return QDateTime(QDate(2026, 11, 26), QTime(16, 40)); };  // a Thursday
  PanelRecord.TimerName(1) = "DUSK";
  PanelRecord.GroupName(2) = "OFFICES";
  Stored(1) = Timer{16, 40, 0, 0, 1};
  Menu("mnuConfigureTimers");
  Choose("cboTimerNumber", 1);
  EXPECT_EQ(Text("lblTimerNext"), "It does nothing yet.");
  for (const int relay : {0, 1, 2, 3, 4}) PanelRecord.TimerRelayControl(1, relay) = 1;
  PanelRecord.TimerRelayControl(1, 9) = 2;
  PanelRecord.TimerGroupControl(1, 2) = 2;
  PanelRecord.TimerPresetControl(1, 3) = -1;
  Choose("cboNormalTimeMinute", 40);
  EXPECT_EQ(Text("lblTimerNext"), "Next:");
  EXPECT_EQ(Text("lblTimerTime"), "Fri 4:40 PM") << "not this minute";
  Find<Label>("lblTimerTime").Press();
  EXPECT_TRUE(Find<QWidget>("cboNormalTimeHour").hasFocus()) << "it is set here";
  Choose("cboNormalTimeMinute", 41);
  EXPECT_EQ(Text("lblTimerTime"), "Thu 4:41 PM");
  EXPECT_EQ(Captions("lblTimerActs", {0, 1, 2}),
            "turns RELAY 01, RELAY 02 and 3 more on, RELAY 10 off|turns OFFICES off|"
            "activates PRESET 04");
  ClickOption("optDaysType", 1);
  EXPECT_EQ(Text("lblTimerTime"), "Jan 1 2027, 4:41 PM");
  Choose("cboHolidayMonth", 11);
  Choose("cboHolidayDate", 30);
  EXPECT_EQ(Text("lblTimerTime"), "Dec 31, 4:41 PM");
  Choose("cboHolidayMonth", 1);
  EXPECT_EQ(Text("lblTimerNext"), "It never fires by itself.");
  EXPECT_FALSE(Shows("lblTimerTime"));
  const std::pair<int, const char*> elsewhere[] = {{1, "frmT3AstroClockSettings"},
                                                   {2, "frmT3OpenAndCloseTimeNormalDays"}};
  for (const auto& [kind, screen] : elsewhere) {
    ClickOption("optDaysType", 0);
    ClickOption("optTimeType", kind);
    EXPECT_EQ(Text("lblTimerNext"), "Next:");
    Find<Label>("lblTimerTime").Press();
    EXPECT_TRUE(Shows(screen));
    Menu("mnuConfigureTimers");
    Choose("cboTimerNumber", 1);
  }
  Find<Label>("lblTimerActs", 1).Press();
  ASSERT_NE(window->LoadedForm(Screen::TimerToGroupControl), nullptr);
  EXPECT_EQ(Chosen("cboTimer"), 1);
  NowSeam = QDateTime::currentDateTime;
}

TEST_F(TimersTest, DaysAreLeftOutWithoutMarkingTheData) {
  Menu("mnuConfigureTimers");
  for (const int day : {0, 6, 7}) Find<CheckBox>("chkDays", day).click();
  EXPECT_EQ(PanelRecord.TimerDays(0), 0xC1);
  EXPECT_EQ(DataChanged, 0);
  EXPECT_EQ(Words(), "12:00 AM, Mon to Fri, not on holidays");
  Find<CheckBox>("chkDays(6)").click();
  EXPECT_EQ(PanelRecord.TimerDays(0), 0x81);

  ClickOption("optDaysType", 1);
  EXPECT_EQ(Stored(0), (Timer{0, 0, 0x81, 1, 1}));
  EXPECT_FALSE(Shows("chkDays(0)"));
  Choose("cboHolidayMonth", 1);
  Choose("cboHolidayDate", 30);
  EXPECT_EQ(Stored(0), (Timer{0, 0, 0x81, 2, 31}));
  ClickOption("optDaysType", 0);
  EXPECT_EQ(Stored(0), (Timer{0, 0, 0x81, 0, 31}));
}

TEST_F(TimersTest, DamagedTimersShowNoSelectionAndStayAsTheyAre) {
  const Timer damaged[] = {
      {-5, 75, 0, 13, 0}, {5, -1, 0, -1, 32}, {24, 1000, 0, 12, 31}, {-32768, 32767, 0, 32767, -1}};
  for (int i = 0; i < 4; ++i) Stored(i + 1) = damaged[i];
  Menu("mnuConfigureTimers");
  for (int i = 1; i < 4; ++i) {
    QTest::keyClick(&Find<ComboBox>("cboTimerNumber"), Qt::Key_Down);
    EXPECT_EQ(Chosen("cboTimerNumber"), i);
    if (i != 3) {
      EXPECT_EQ(Chosen("cboNormalTimeMinute"), -1);
      EXPECT_EQ(Chosen("cboHolidayDate"), -1);
      EXPECT_EQ(Stored(i), damaged[i - 1]);
    }
  }
  EXPECT_EQ(Chosen("cboMinuteFromAstro"), -1);
  EXPECT_EQ(Stored(3), damaged[2]);
  EXPECT_EQ(Words(), "at an unknown time, on December 31");
  Choose("cboTimerNumber", 4);
  EXPECT_EQ(Stored(4), damaged[3]);
  EXPECT_EQ(Chosen("cboNormalTimeAmPm"), -1);

  Choose("cboTimerNumber", 1);
  Choose("cboNormalTimeAmPm", 0);
  Choose("cboNormalTimeHour", 3);
  EXPECT_EQ(PanelRecord.TimerTimeType(1), 3);
}
