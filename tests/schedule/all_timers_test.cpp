#include <QClipboard>
#include <map>

#include "panel/dimmer_words.h"
#include "panel/live_dimmers.h"
#include "panel/stopwatch.h"
#include "schedule/rules/copy_timer.h"
#include "schedule/rules/timer_week.h"
#include "schedule/rules/timer_words.h"
#include "schedule/rules/typed_acts.h"
#include "schedule/rules/typed_timer.h"
#include "schedule/week_picture.h"
#include "screen_test.h"
#include "shell/controls/accessible_controls.h"

namespace {

TEST(TypedTimerTest, WhatIsWrittenIsReadAndTheRestStays) {
  // 30 min before sunset, Mon to Fri, not on holidays
  const TimerRun over{WithOffset(WithEvent(FirstTimeOf(TimeKind::Astro), 2), 30), 0xC1, 0, 5};
  const TimerRun dated{{7, 0}, 0x3E, 12, 31};
  const std::tuple<const char*, TimerRun, const char*> typed[] = {
      {"7a", over, "7:00 AM, Mon to Fri, not on holidays"},
      {"19:30", dated, "7:30 PM, on December 31"},
      {"45", over, "45 min before sunset, Mon to Fri, not on holidays"},
      {"10 after Open", over, "10 min after open time, Mon to Fri, not on holidays"},
      {"sunrise+15", dated, "15 min after sunrise, on December 31"},
      {"at close time", dated, "at close time, on December 31"},
      {"Sat, Sun", dated, "7:00 AM, Sun, Sat"},
      {"Fri-Mon", over, "30 min before sunset, Sun, Mon, Fri, Sat"},
      {"not on holidays", dated, "7:00 AM, Sun, Sat, not on holidays"},
      {"6:15 PM weekdays", over, "6:15 PM, Mon to Fri"},
      {"weekends, 8:00a", over, "8:00 AM, Sun, Sat"},
      {"at sunset, every day, not on holidays", dated, "at sunset, every day, not on holidays"},
      {"on no day", dated, "7:00 AM, on no day"},
      {"12:00 pm Feb 29", over, "12:00 PM, on February 29"},
      {"615p M-F", dated, "6:15 PM, Mon to Fri"},
      {"ss-30 sa", dated, "30 min before sunset, Sat"},
      {"7a d", over, "7:00 AM, every day"},
      {"5p d 24", over, "5:00 PM, on December 24"},
      {"sr+5", over, "5 min after sunrise, Mon to Fri, not on holidays"},
      {"7awd", over, "7:00 AM, Mon to Fri"},
      {"7am-f", over, "7:00 AM, Mon to Fri"},
      {"7:30wd", over, "7:30 AM, Mon to Fri"},
      {"9asa", over, "9:00 AM, Sat"},
      {"5pd24", over, "5:00 PM, on December 24"},
      {"ss-30d", dated, "30 min before sunset, every day"},
      {"ss15", over, "15 min after sunset, Mon to Fri, not on holidays"},
      {"clwd not on holidays", over, "at close time, Mon to Fri, not on holidays"},
      {"9a no holidays", dated, "9:00 AM, Sun, Sat, not on holidays"},
      {"cl-10m", over, "10 min before close time, Mon to Fri, not on holidays"},
  };
  for (const auto& [text, before, told] : typed) {
    const auto run = ReadTypedTimer(text, before);
    ASSERT_TRUE(run) << text;
    EXPECT_EQ(TimerInWords(run->Time, run->Days, run->Month, run->Date), told) << text;
  }
  for (const char* text :
       {"", "7", "25:00", "1000 min before sunset", "30 before sunset-5", "Moon", "7a, noday",
        "Feb 30", "7a 8a", ",", "615", "7a s", "Ju 4", "45m", "closed"}) {
    EXPECT_FALSE(ReadTypedTimer(text, dated)) << text;
  }
}

/// Each sentence that a timer can have is read as it is told, over any other timer.
TEST(TypedTimerTest, EverySentenceIsReadBack) {
  for (int event = 0; event < 8; ++event) {
    const TimeKind kind = event < AstroEventCount ? TimeKind::Astro : TimeKind::OpenClose;
    const auto time = WithOffset(WithEvent(FirstTimeOf(kind), event % AstroEventCount), 1 + event);
    for (Int16 days = 0; days < 256; ++days) {
      const std::string told = TimerInWords(time, days, 0, 1);
      const auto run = ReadTypedTimer(QString::fromStdString(told), {{7, 30}, 0, 3, 4});
      ASSERT_TRUE(run) << told;
      EXPECT_EQ(TimerInWords(run->Time, run->Days, run->Month, run->Date), told);
    }
  }
}

class AllTimersTest : public ScreenTest {
 protected:
  AllTimersTest() {
    NowSeam = [] { return QDateTime(QDate(2026, 11, 26), QTime(12, 0)); };  // a Thursday
    PanelRecord.IOCount(0) = 4;
    PanelRecord.GroupName(2) = "OFFICES";
    for (const int relay : {4, 5}) PanelRecord.GroupRelayInclude(2, relay) = -1;
    SetTimer(0, 7, 15, "MORNING", 1);
    SetTimer(1, 18, 0, "EVENING", 2);
  }
  ~AllTimersTest() override { NowSeam = QDateTime::currentDateTime; }

  static void SetTimer(int timer, Int16 hour, Int16 minute, const char* name, Int16 code) {
    constexpr Int16 weekdays = 0x41;
    auto& panel = PanelRecord;
    std::tie(panel.TimerTimeType(timer), panel.TimerTime(timer), panel.TimerDays(timer)) =
        std::tuple(hour, minute, weekdays);
    panel.TimerName(timer) = name;
    panel.TimerGroupControl(timer, 2) = code;
  }
  void OpenSheet() {
    QTest::keyClick(window.get(), Qt::Key_T, Qt::ControlModifier);
    QApplication::processEvents();
  }
  QString When(int row) { return Find<TextBox>("txtWhen", row).Text(); }
  QString Acts(int row) { return Find<TextBox>("txtActs", row).Text(); }
  QString Line(int row) {
    return QStringList{Caption("lblNumber", row), Caption("lblTimerName", row).trimmed(), When(row),
                       Acts(row), Caption("lblNext", row)}
        .join(u'|');
  }
};

TEST_F(AllTimersTest, ATimerIsMadeOfAnotherByAFewKeys) {
  OpenSheet();
  EXPECT_EQ(Line(0), "T01|MORNING|7:15 AM, Mon to Fri|turns OFFICES on|Fri 7:15 AM");
  EXPECT_EQ(Line(2), "T03|TIMER 03|12:00 AM, every day|-|-");
  const std::string before = Bytes();
  DataChanged = 0;
  QTest::keyClick(window->focusWidget(), Qt::Key_C, Qt::ControlModifier);
  for (int row = 1; row <= 2; ++row) Key(Qt::Key_Down);
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Text("lblMark"), "Pasted");
  EXPECT_EQ(DataChanged, -1);
  const std::string copied = Bytes();
  Key(Qt::Key_Right);
  Key(Qt::Key_7);
  Key(Qt::Key_A);
  Key(Qt::Key_Return);
  EXPECT_EQ(Line(2), "T03|TIMER 03|7:00 AM, Mon to Fri|turns OFFICES on|Fri 7:00 AM");

  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(Bytes() == copied);
  EXPECT_EQ(When(2), "7:15 AM, Mon to Fri") << "the sheet stays";
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(Bytes() == before);
  EXPECT_TRUE(Cell("lblNumber", 2).hasFocus());
  Key(Qt::Key_Return);
  EXPECT_EQ(Chosen("cboTimerNumber"), 2);
}

/// Once more by Insert, and its other half.
TEST_F(AllTimersTest, TheFirstFreeTimerBecomesAnother) {
  PanelRecord.TimerDays(2) = 1;        // it has a time of its own
  PanelRecord.TimerName(3) = "EARLY";  // no more than named
  OpenSheet();
  for (const Qt::Key key : {Qt::Key_Insert, Qt::Key_7, Qt::Key_P}) Key(key);
  EXPECT_EQ(Line(3), "T04|EARLY|7p|turns OFFICES off|Thu 7:00 PM");
  for (const Qt::Key key :
       {Qt::Key_Insert, Qt::Key_Return, Qt::Key_O, Qt::Key_F, Qt::Key_F, Qt::Key_Return}) {
    Key(key);
  }
  EXPECT_TRUE(Find<TextBox>("txtWhen", 5).hasFocus()) << "Enter goes on to the next line";
  EXPECT_EQ(Line(4), "T05|TIMER 05|7:00 PM, Mon to Fri|turns OFFICES off|Thu 7:00 PM");
  Find<Button>("cmdNewTimer").click();
  EXPECT_EQ(Line(5), "T06|TIMER 06|7:00 PM, Mon to Fri|turns OFFICES on|Thu 7:00 PM");
  Key(Qt::Key_X);
  Key(Qt::Key_Return);
  EXPECT_TRUE(Find<TextBox>("txtWhen", 5).hasFocus()) << "but not from what means nothing";
  Key(Qt::Key_X);
  Key(Qt::Key_Insert);
  EXPECT_TRUE(Text("lblMark").startsWith("\"x\" is no time"));
  EXPECT_EQ(Acts(6), "-") << "nothing is made of a timer that was to be another";
  for (int timer = 7; timer < ItemCount; ++timer) PanelRecord.TimerTime(timer) = 30;
  Key(Qt::Key_Insert);
  Key(Qt::Key_Insert);
  EXPECT_TRUE(Text("lblMark").startsWith("No timer is free"));
  EXPECT_EQ(When(7), "12:30 AM, every day");
}

TEST_F(AllTimersTest, WithoutATimerTheFirstFreeOneWaitsForItsTime) {
  LoadDefaults();
  OpenSheet();
  const std::string before = Bytes();
  Find<Button>("cmdNewTimer").click();
  EXPECT_TRUE(Find<TextBox>("txtWhen", 0).hasFocus());
  EXPECT_EQ(Text("lblMark"), "");
  EXPECT_TRUE(Bytes() == before);
  Key(Qt::Key_7);
  Key(Qt::Key_Return);
  EXPECT_EQ(Text("lblMark"), "\"7\" may be morning or evening: type 7a or 7p.");
}

TEST_F(AllTimersTest, AScreenReaderHearsOnlyWhatHasChanged) {
  OpenSheet();
  auto& box = Find<TextBox>("txtWhen", 0);
  box.setFocus();
  std::map<std::pair<QString, QAccessible::Event>, int> told;
  const auto usual = TellReadersSeam;
  TellReadersSeam = [&told](QAccessibleEvent& event) {
    ++told[{event.object()->objectName(), event.type()}];
  };
  Key(Qt::Key_7);
  Key(Qt::Key_A);
  Key(Qt::Key_Down);
  TellReadersSeam = usual;
  for (const char* name : {"txtWhen(0)", "lblNext(0)", "picWeek"}) {
    EXPECT_EQ((told[{name, QAccessible::DescriptionChanged}]), name[0] == 'p' ? 0 : 1) << name;
  }
  for (const auto& [event, count] : told) {
    EXPECT_FALSE(event.first.endsWith("(2)")) << event.first.toStdString() << ' ' << event.second;
  }
}

TEST_F(AllTimersTest, WhatItDoesIsReadByNames) {
  auto& panel = PanelRecord;
  panel.RelayName(0) = "GATE";
  panel.RelayName(9) = "OFFICES";  // as the group
  panel.GroupName(3) = "HALL AND BAR";
  panel.PresetName(1) = "NIGHT";
  panel.PresetName(2) = "EVENING";
  panel.RelayName(20) = "NURSE";  // begins as the preset
  const std::pair<const char*, const char*> typed[] = {
      {"off", "turns OFFICES off"},
      {"gate on", "turns GATE on"},
      {"hall and bar and G3 on, r2 off", "turns RELAY 02 off; turns OFFICES and HALL AND BAR on"},
      {"activates NIGHT; gate off", "turns GATE off; activates NIGHT"},
      {"night", "activates NIGHT"},
      {"ga", "turns GATE on"},
      {"off off", "turns OFFICES off"},
      {"night, ha off", "turns HALL AND BAR off; activates NIGHT"},
      {"n", "activates NIGHT"},
      {"nu off", "turns NURSE off"},
      {"gate on, -offices", "turns GATE on; turns OFFICES off"},
      {"gate, - ha", "turns GATE on; turns HALL AND BAR off"},
      {"-", "-"},
  };
  for (const auto& [text, told] : typed) {
    panel.TimerGroupControl(0, 2) = 1;
    ASSERT_EQ(PutTypedActs(LiveProject, 0, text), "") << text;
    EXPECT_EQ(ActsInWords(LiveProject, 0), told) << text;
  }
  panel.GroupName(4) = "NIGHT";  // as the preset
  EXPECT_EQ(PutTypedActs(LiveProject, 2, "activates night; g4"), "");
  EXPECT_EQ(ActsInWords(LiveProject, 2), "turns HALL AND BAR on; activates NIGHT");
  panel.TimerGroupControl(0, 2) = 2;
  EXPECT_EQ(PutTypedActs(LiveProject, 0, "gate"), "");
  EXPECT_EQ(ActsInWords(LiveProject, 0), "turns GATE off") << "as what it turned before";
  panel.GroupName(5) = "HARBOR";
  panel.TimerRelayControl(1, 9) = 1;
  panel.TimerGroupControl(1, 2) = 0;
  EXPECT_EQ(PutTypedActs(LiveProject, 1, "Offices off"), "");
  EXPECT_EQ(panel.TimerRelayControl(1, 9), 2) << "the one that it switches already";
  panel.TimerRelayControl(1, 3) = 1;
  const std::string before = Bytes();
  for (const char* text : {"", "gate", "on on", "ha on", "gate on, nobody off", "and on", "ev off",
                           "-ev", "-gate on", "offices and ev off"}) {
    EXPECT_NE(PutTypedActs(LiveProject, 1, text), "") << text;
  }
  EXPECT_NE(PutTypedActs(LiveProject, 7, "on"), "") << "there is nothing to turn";
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(PutTypedActs(LiveProject, 1, "gate and ha on"),
            "\"ha\" is the beginning of several names: HALL AND BAR and HARBOR.");
}

/// What is typed into one cell is one step, as is a fill; what was left again is none.
TEST_F(AllTimersTest, ATextIsOneStepAndSoIsAFill) {
  OpenSheet();
  const std::string before = Bytes();
  const auto type = [this](const char* text) {
    for (const char* key = text; *key; ++key) QTest::keyClick(window->focusWidget(), *key);
  };
  Key(Qt::Key_Right);
  type("ss15wd");
  Key(Qt::Key_Return);
  Key(Qt::Key_Left);
  type("8p");
  Key(Qt::Key_Escape);
  const std::string typed = Bytes();
  EXPECT_EQ(When(0), "15 min after sunset, Mon to Fri");
  for (int row = 0; row < 2; ++row) Key(Qt::Key_Down, Qt::ShiftModifier);
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(When(2), When(0));
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(Bytes() == typed);
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(Bytes() == before);
  Key(Qt::Key_Y, Qt::ControlModifier);
  Key(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(When(2), "15 min after sunset, Mon to Fri");
}

TEST_F(AllTimersTest, ATimeThatCannotBeReadLeavesTheTimerAsItWas) {
  OpenSheet();
  auto& box = Find<TextBox>("txtWhen", 0);
  const std::string before = Bytes();
  box.setFocus();
  QTest::keyClicks(&box, "8p moon");
  EXPECT_TRUE(Bytes() == before) << "8p was a time on the way";
  EXPECT_EQ(box.Text(), "8p moon");
  Key(Qt::Key_Down);
  EXPECT_TRUE(Find<TextBox>("txtWhen", 1).hasFocus());
  EXPECT_EQ(When(0), "7:15 AM, Mon to Fri");
  EXPECT_TRUE(Text("lblMark").startsWith("\"8p moon\" is no time"));
  Key(Qt::Key_Right);
  QTest::keyClicks(window->focusWidget(), "r1 on, r2");
  EXPECT_EQ(PanelRecord.TimerRelayControl(1, 1), 2) << "as the timer turned before it was typed";
  Key(Qt::Key_Escape);
  Key(Qt::Key_Left);
  QTest::keyClicks(window->focusWidget(), "8p");
  EXPECT_EQ(PanelRecord.TimerTimeType(1), 20) << "saved without Enter it is not lost";
  Key(Qt::Key_Escape);
  EXPECT_EQ(When(1), "6:00 PM, Mon to Fri");
  EXPECT_EQ(Find<TextBox>("txtWhen", 1).selectedText(), When(1));
  EXPECT_TRUE(Bytes() == before);

  QApplication::clipboard()->setText("7:00 AM\n30 min after sunset, Sat\n");
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(When(1), "7:00 AM, Mon to Fri");
  EXPECT_EQ(When(2), "30 min after sunset, Sat");
  const std::string pasted = Bytes();
  QApplication::clipboard()->setText("8:00\nnever");
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(Bytes() == pasted);
  EXPECT_TRUE(Text("lblMark").startsWith("Nothing was pasted: \"never\" is no time"));
  Key(Qt::Key_Down, Qt::ShiftModifier);
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(When(2), When(1));
}

TEST_F(AllTimersTest, RowsAreSortedByNumberOrByTheNextTime) {
  OpenSheet();
  Key(Qt::Key_F3);
  EXPECT_EQ(Captions("lblNumber", {0, 1, 2, 3}), "T02|T01|T03|T04");
  EXPECT_EQ(Caption("lblNext", 0), "Thu 6:00 PM");
  EXPECT_TRUE(Cell("lblNumber", 1).hasFocus()) << "the timer keeps it";
  Cell("lblNumberHeader", 0).Press();
  EXPECT_EQ(Captions("lblNumber", {0, 1}), "T01|T02");
}

TEST_F(AllTimersTest, ACopyTakesTheDimmersAlongWhereSlotsAreFree) {
  DimSetEnabled(0, 1);
  const auto slot = [](Int16 at, Int16 timer) {
    DimSetCtlType(0, 1, at, ControlTimer);
    DimSetCtlNumber(0, 1, at, timer);
    DimSetCtlAction(0, 1, at, static_cast<Int16>(3 + at));
  };
  slot(0, 5);
  slot(2, 0);
  slot(3, 0);
  OpenSheet();
  EXPECT_EQ(Acts(0), "turns OFFICES on; sets DIMMER 1 OUTPUT 2");
  CopyTimer(LiveProject, 0, 5);
  const std::pair<Int16, Int16> taken[] = {{0, 5}, {1, 6}};
  for (const auto& [at, action] : taken) {
    EXPECT_EQ(DimGetCtlNumber(0, 1, at), 5);
    EXPECT_EQ(DimGetCtlAction(0, 1, at), action);
  }
  EXPECT_EQ(DimGetCtlNumber(0, 1, 2), 0);
  CopyTimer(LiveProject, 1, 5);
  for (const auto& [at, action] : taken) EXPECT_EQ(DimGetCtlType(0, 1, at), ControlUnused);

  for (Int16 at = 0; at < ControlSlotCount; ++at) slot(at, static_cast<Int16>(at < 15 ? 0 : 5));
  const std::string before = Bytes();
  Cell("lblNumber", 0).setFocus();
  Key(Qt::Key_C, Qt::ControlModifier);
  Cell("lblNumber", 5).setFocus();
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(Bytes() == before);
  EXPECT_EQ(Text("lblMark"),
            "Nothing was pasted: DIMMER 1 OUTPUT 2 has no free control slot for TIMER 06.");
}

TEST_F(AllTimersTest, TheWeekShowsWhatTimersHaveOnAndOpensThem) {
  SetTimer(2, 20, 0, "SIGN", 0);
  PanelRecord.TimerRelayControl(2, 0) = 1;  // Nothing turns it off.
  const TimerWeek week = WeekOfTimers(LiveProject, QDate(2026, 11, 26));
  ASSERT_EQ(week.Rows.size(), 2U);
  EXPECT_EQ(week.Rows[0].Name, "RELAY 01");
  ASSERT_EQ(week.Rows[0].Spans.size(), 1U);
  EXPECT_EQ(week.Rows[0].Spans[0], (LitSpan{week.Begin(), week.Finish()}));
  EXPECT_EQ(week.Rows[1].Name, "OFFICES");
  EXPECT_EQ(week.Rows[1].Spans.size(), 5U);
  EXPECT_EQ(week.Ends[0].Words, "RELAY 01 on since before Thu 12:00 AM by TIMER 03 SIGN");
  EXPECT_EQ(week.Ends[2].Words, "OFFICES off Thu 6:00 PM by TIMER 02 EVENING");

  OpenSheet();
  auto& picture = Find<WeekPicture>("picWeek");
  picture.setFocus();
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right}) Key(key);
  EXPECT_EQ(picture.InHand(), week.Ends[2].Words);
  EXPECT_EQ(Text("lblInHand"), week.Ends[2].Words);
  Key(Qt::Key_Return);
  EXPECT_EQ(Chosen("cboTimerNumber"), 1);
  OpenSheet();
  auto& anew = Find<WeekPicture>("picWeek");
  const int rowHeight = anew.sizeHint().height() / 3;
  QTest::mouseClick(&anew, Qt::LeftButton, {}, QPoint(anew.width() - 8, rowHeight * 5 / 2));
  EXPECT_EQ(Chosen("cboTimerNumber"), 1) << "OFFICES' last end is EVENING's";
}

}  // namespace
