#include "simulator/engine/engine.h"

#include <gtest/gtest.h>

#include <random>

#include "rehearsed.h"
#include "simulator/engine/panel_clock.h"

namespace simulator {
namespace {

constexpr int BeforeSunrise = 24;
constexpr int AfterSunset = 120;
constexpr int BeforeOpen = 152;
constexpr int AfterClose = 248;

// An office with a porch, a shop window and a store, on Monday 2 March 2026. The sun rises at 06:36
// and sets at 17:49; the day was written down before it was run.
TEST(EngineTest, ADayGoesAsItWasWrittenDown) {
  // The porch is on after power, the window blinks; a push button, whose pilot follows it, is on
  // the store.
  const PanelMemory memory = EmptyInstallation(
      Name(map::RelayName, "PORCH"), Name(map::RelayName + 10, "WINDOW"),
      Name(map::RelayName + 20, "STORE \xC4"), Name(map::GroupName, "SHOP"),
      Name(map::PresetName, "NIGHT"), Name(map::PresetName + 10, "DARK"),
      Name(map::InputName, "DOOR"), Byte(map::RelayPowerOnType, 1),
      Byte(map::RelayTimerType + 1, 1), Byte(map::InputType, 1),
      Code(map::InputRelayControl, 2, 0, OnAndOff), Byte(map::LocalPilot, 2),
      Code(map::GroupRelayInclude, 1, 0, 1), Code(map::GroupRelayInclude, 2, 0, 1),
      Code(map::PresetRelayControl, 0, 0, 1), Code(map::PresetRelayControl, 1, 0, 2),
      Code(map::PresetRelayControl, 2, 0, 2), Code(map::PresetRelayControl, 47, 1, 2),
      Timer(2, BeforeSunrise, 20, 0, 2), Timer(3, BeforeOpen, 15),
      Code(map::TimerGroupControl, 0, 3, 1), Timer(4, 21, 0),
      Code(map::TimerPresetControl, 0, 4, 1));
  RehearsalOptions options;
  ParseRange("2026-03-02", options);
  options.Script = ParseScript("# noon\n" + Script("12:00 tap 1,12:00:30 relay 3 off"));
  std::string text;
  Rehearse(memory, options, [&text](std::string_view piece) { text += piece; });
  EXPECT_EQ(text,
            "Time\tCause\tItem\tChange\tWords\n"
            "2026-03-02T00:00:00-06:00\tPOWER\t-\tfires\tpower comes\n"
            "2026-03-02T00:00:00-06:00\tPOWER\tRELAY 01\ton\tPORCH\n"
            "2026-03-02T00:00:00-06:00\tPOWER\tPRESET 01\ton\tNIGHT\n"
            "2026-03-02T00:00:00-06:00\tPOWER\tPRESET 02\ton\tDARK\n"
            "2026-03-02T06:16:00-06:00\tTIMER 03\t-\tfires\t20 min before sunrise\n"
            "2026-03-02T06:16:00-06:00\tTIMER 03\tRELAY 01\toff\tPORCH\n"
            "2026-03-02T06:16:00-06:00\tTIMER 03\tPRESET 01\toff\tNIGHT\n"
            "2026-03-02T07:45:00-06:00\tTIMER 04\t-\tfires\t15 min before open\n"
            "2026-03-02T07:45:00-06:00\tTIMER 04\tRELAY 02\ton\tWINDOW\n"
            "2026-03-02T07:45:00-06:00\tTIMER 04\tRELAY 03\ton\tSTORE \xC3\x84\n"
            "2026-03-02T07:45:00-06:00\tTIMER 04\tGROUP 01\ton\tSHOP\n"
            "2026-03-02T07:45:00-06:00\tTIMER 04\tPILOT 01\ton\tDOOR\n"
            "2026-03-02T12:00:00-06:00\tINPUT 01\tINPUT 01\ton\tDOOR\n"
            "2026-03-02T12:00:00-06:00\tINPUT 01\tRELAY 03\toff\tSTORE \xC3\x84\n"
            "2026-03-02T12:00:00-06:00\tINPUT 01\tGROUP 01\toff\tSHOP\n"
            "2026-03-02T12:00:00-06:00\tINPUT 01\tPILOT 01\toff\tDOOR\n"
            "2026-03-02T12:00:00-06:00\tINPUT 01\tINPUT 01\toff\tDOOR\n"
            "2026-03-02T21:00:00-06:00\tTIMER 05\t-\tfires\tat 21:00\n"
            "2026-03-02T21:00:00-06:00\tTIMER 05\tRELAY 01\ton\tPORCH\n"
            "2026-03-02T21:00:00-06:00\tTIMER 05\tRELAY 02\tblinks\tWINDOW\n"
            "2026-03-02T21:10:00-06:00\tRELAY 02\t-\tfires\twarning over\n"
            "2026-03-02T21:10:00-06:00\tRELAY 02\tRELAY 02\toff\tWINDOW\n"
            "2026-03-02T21:10:00-06:00\tRELAY 02\tPRESET 01\ton\tNIGHT\n");
}

TEST(EngineTest, TimersFireOnTheirDaysAndDates) {
  struct Case {
    const char* Range;
    int Type, Time, Days, Month, Day, Latitude;
    const char* Fires;  // dates and times
  };
  const Case cases[]{
      // Sunday and Saturday left out; 6 March 2026 is a Friday.
      {"2026-03-06..2026-03-09", 7, 30, 0x41, 0, 0, 45, "03-06 07:30 03-09 07:30 "},
      // The hour from two is skipped on 8 March, and the one from one comes twice on 1 November.
      {"2026-03-07..2026-03-09", 2, 30, 0, 0, 0, 45, "03-07 02:30 03-08 03:00 03-09 02:30 "},
      {"2026-03-08", 3, 0, 0, 0, 0, 45, "03-08 03:00 "},
      {"2026-11-01", 1, 30, 0, 0, 0, 45, "11-01 01:30 "},
      // One date a year, one that only leap years have, one that none has.
      {"2026-07-03..2026-07-05", 9, 0, 0x7F, 7, 4, 45, "07-04 09:00 "},
      {"2027-02-27..2028-03-01", 9, 0, 0, 2, 29, 45, "02-29 09:00 "},
      {"2026-01-01..2027-12-31", 9, 0, 0, 2, 31, 45, ""},
      // Holidays: 4 July 2026 is a Saturday with hours of its own, 10:00 to 12:00.
      {"2026-07-03..2026-07-05", 9, 0, 0x80, 0, 0, 45, "07-03 09:00 07-05 09:00 "},
      {"2026-07-04", 9, 0, 0, 0, 0, 45, "07-04 09:00 "},
      {"2026-07-03..2026-07-04", BeforeOpen, 30, 0, 0, 0, 45, "07-03 07:30 07-04 09:30 "},
      // The event's day counts where the offset crosses midnight: Sundays only, then Mondays only.
      {"2026-03-01..2026-03-02", AfterClose, 240, 0x7E, 0, 0, 45, "03-02 01:00 "},
      {"2026-03-02", AfterClose, 240, 0x7E, 0, 0, 45, "03-02 01:00 "},
      {"2026-03-01..2026-03-02", BeforeOpen + 1, 244, 0x7D, 0, 0, 45, "03-01 23:40 "},
      // 6 July closes at 12:00 and has no open time, 7 July opens at 10:00 and does not close.
      {"2026-07-06..2026-07-07", AfterClose, 30, 0, 0, 0, 45, "07-06 12:30 "},
      {"2026-07-06..2026-07-07", BeforeOpen, 30, 0, 0, 0, 45, "07-07 09:30 "},
      {"2026-07-06..2026-07-08", 9, 0, 0x80, 0, 0, 45, "07-08 09:00 "},
      {"2026-03-02", AfterSunset, 30, 0, 0, 0, 45, "03-02 18:19 "},
      // At 70 degrees the sun stays up from the middle of May: it sets last on the 16th.
      {"2026-06-20..2026-06-22", AfterSunset, 0, 0, 0, 0, 70, ""},
      {"2026-03-02", 7, 60, 0, 0, 0, 45, ""},
  };
  for (const Case& one : cases) {
    constexpr int opens = map::DateTimes + 6 * 31;  // in July
    constexpr int closes = opens + map::DatesAYear;
    const PanelMemory memory =
        EmptyInstallation(Byte(map::Latitude, one.Latitude), Timer(0, one.Type, one.Time, 5, 1),
                          Byte(map::TimerDays, one.Days), Byte(map::TimerHolidayMonth, one.Month),
                          Byte(map::TimerHolidayDate, one.Day), Byte(opens + 3, 40),
                          Byte(closes + 3, 48), Byte(closes + 5, 48), Byte(opens + 6, 40));
    std::string fires;
    const QString rows = QString::fromStdString(Rehearsed(memory, one.Range, {}, "fires"));
    for (const QString& row : rows.split(';')) {
      if (row.contains("TIMER 01")) fires += row.left(11).toStdString() + " ";
    }
    EXPECT_EQ(fires, one.Fires) << one.Range << " " << one.Type << " " << one.Time;
  }
}

TEST(EngineTest, DaylightSavingBeginsAndEnds) {
  // Week and month of start and end.
  const std::tuple<int, int, const char*> cases[]{
      {0x0203, 0x010B,
       "2026-02-01T00:00:00-06:00 power comes\n"
       "2026-03-08T03:00:00-05:00 daylight saving begins\n"
       "2026-11-01T01:30:00-05:00 at 01:30\n"  // the first of two
       "2026-11-01T01:00:00-06:00 daylight saving ends\n"},
      {0x010A, 0x0504,
       "2026-02-01T00:00:00-05:00 power comes\n"
       "2026-04-26T01:00:00-06:00 daylight saving ends\n"
       "2026-10-04T03:00:00-05:00 daylight saving begins\n"
       "2026-11-01T01:30:00-05:00 at 01:30\n"},
  };
  for (const auto& [start, end, rows] : cases) {
    const PanelMemory memory = EmptyInstallation(
        Word(map::DSTStartWeek, start), Word(map::DSTStartWeek + 2, end), Timer(0, 1, 30, 0, 1),
        Byte(map::TimerHolidayMonth, 11), Byte(map::TimerHolidayDate, 1));
    Engine engine(memory);
    std::string told;
    engine.SetSink([&](const Row& row) {
      if (row.What != Change::Fires) return;
      told += TimeText(engine.Days(), row.Time) + " " + std::string(row.Words) + "\n";
    });
    engine.PowerOn(engine.Days().FromWall(DayOf({2026, 2, 1}) * DayMs));
    engine.AdvanceTo(engine.Now() + 364 * DayMs);
    EXPECT_EQ(told, rows);
  }
}

TEST(EngineTest, TheLastWordOfATimerStandsAndADateMakesAHoliday) {
  // Relays beyond the points act all the same. Timer 1 turns relay 2 on and its group off, timer 3
  // rests on holidays, timer 4 is set up as a date and controls nothing.
  const PanelMemory memory = EmptyInstallation(
      Byte(map::IOCount, 0), Code(map::GroupRelayInclude, 1, 0, 1), Timer(0, 6, 0, 0, 1),
      Code(map::TimerRelayControl, 1, 0, 1), Code(map::TimerGroupControl, 0, 0, 2),
      Timer(1, 6, 0, 0, 2), Timer(2, 8, 0, 2, 1), Byte(map::TimerDays + 2, 0x80),
      Byte(map::TimerHolidayMonth + 3, 3), Byte(map::TimerHolidayDate + 3, 2));
  EXPECT_EQ(Rehearsed(memory, "2026-03-02"),
            "03-02 06:00:00 TIMER 01,-,fires;03-02 06:00:00 TIMER 01,RELAY 01,on;"
            "03-02 06:00:00 TIMER 02,-,fires;03-02 06:00:00 TIMER 02,RELAY 01,off;");
}

TEST(EngineTest, RelaysGoByTheirTypes) {
  // A timer turns relay 1 on at 08:00, another off at 09:00; a hand on at 09:15 and off at 23:00.
  const std::pair<int, const char*> cases[]{
      {0, "08:00:00 on 09:00:00 off 09:15:00 on 23:00:00 off 08:00:00 on 09:00:00 off "},
      {1,
       "08:00:00 on 09:00:00 blinks 09:10:00 off 09:15:00 on 23:00:00 off "
       "08:00:00 on 09:00:00 blinks 09:10:00 off "},
      {2, "08:00:00 on 09:10:00 off 09:15:00 on 23:00:00 off 08:00:00 on 09:10:00 off "},
      {3,
       "08:00:00 on 09:00:00 off 09:00:05 on 23:00:00 off 23:00:05 on "
       "09:00:00 off 09:00:05 on "},
      {4, "08:00:00 on 08:00:05 off 09:15:00 on 09:15:05 off 08:00:00 on 08:00:05 off "},
      {5,
       "08:00:00 on 09:00:00 off 09:00:01 on 23:00:00 off 23:00:01 on "
       "09:00:00 off 09:00:01 on "},
      {6, "08:00:00 on 08:00:01 off 09:15:00 on 09:15:01 off 08:00:00 on 08:00:01 off "},
  };
  for (const auto& [type, wanted] : cases) {
    const PanelMemory memory = EmptyInstallation(Byte(map::RelayTimerType, type),
                                                 Timer(0, 8, 0, 0, 1), Timer(1, 9, 0, 0, 2));
    const QString script = Script("09:15 relay 1 on,23:00 relay 1 off");
    const std::string rows = Rehearsed(memory, "2026-03-02..2026-03-03", script, "\tRELAY 01\t");
    EXPECT_EQ(TimesAndChanges(rows, 8), wanted) << type;
  }
}

TEST(EngineTest, APulseEndsInItsTimeWhateverElseWaits) {
  constexpr int fromOpening = 0;
  constexpr int fromClosing = 1;
  constexpr int alarmOn = 4;
  constexpr int pulsedOn = 6;
  const std::tuple<int, int, const char*, const char*> cases[]{
      {pulsedOn, fromClosing, "08:00 press 1", "08:00:00 on 08:00:01 off "},
      {pulsedOn, fromOpening, "08:00 tap 1", "08:00:00 on 08:00:01 off "},
      // The time of the first press does not end the second.
      {alarmOn, fromOpening, "08:00 tap 1,08:00:30 press 1", "08:00:00 on 08:01:39 off "},
      {alarmOn, fromOpening, "08:00 press 2,08:00 press 2 off,08:00:30 relay 1 on",
       "08:00:00 on 08:00:00 blinks 08:00:30 on 08:01:39 off "},
  };
  for (const auto& [type, begins, acts, rows] : cases) {
    // Input 1 is timed on for a minute, which is the warning's time, too; input 2 warns.
    const PanelMemory memory = EmptyInstallation(
        Byte(map::RelayTimerType, type), Byte(map::TimedOnOperation, begins),
        Byte(map::AlarmSeconds, 99), Byte(map::BlinkAlertMinutes, 1), Byte(map::InputType, 5),
        Word(map::InputTimedOnTime, 1), Code(map::InputRelayControl, 0, 0, 1),
        Code(map::InputRelayControl, 0, 1, BlinkAlert));
    EXPECT_EQ(RowsOf(memory, acts, "\tRELAY 01\t", 8), rows) << type << " " << acts;
  }
}

TEST(EngineTest, SweepsComeOffHoursAndWaitForTheOverride) {
  // Relays 1 and 2, every two hours.
  PanelMemory memory =
      EmptyInstallation(Byte(map::OffHoursSweepInterval, 1), Byte(map::OffHoursSweepRelay, 3),
                        Byte(map::RelayTimerType + 1, 1));
  // Off hours: two hours, but the office opens meanwhile; swept at 21:00, with a warning; the sweep
  // of 23:00 waits for 23:30.
  const char* acts = "07:30 relay 1 on,20:00 relay 2 on,21:30 relay 1 on";
  EXPECT_EQ(Rehearsed(memory, "2026-03-02", Script(acts), "RELAY"),
            "03-02 07:30:00 HAND,RELAY 01,on;"
            "03-02 20:00:00 HAND,RELAY 02,on;03-02 21:00:00 SWEEP,RELAY 01,off;"
            "03-02 21:00:00 SWEEP,RELAY 02,blinks;03-02 21:10:00 RELAY 02,-,fires;"
            "03-02 21:10:00 RELAY 02,RELAY 02,off;03-02 21:30:00 HAND,RELAY 01,on;"
            "03-02 23:30:00 RELAY 01,-,fires;03-02 23:30:00 RELAY 01,RELAY 01,off;");
  EXPECT_EQ(
      Rehearsed(memory, "2026-03-02..2026-03-03", {}, "SWEEP").substr(0, 87),
      "03-02 01:00:00 SWEEP,-,fires;03-02 03:00:00 SWEEP,-,fires;03-02 05:00:00 SWEEP,-,fires;");
  // The same open and close time: closed all day, and the override is not kept by an opening.
  memory.SetByte(map::NormalCloseTime + 1, 32);
  EXPECT_EQ(RowsOf(memory, acts), "07:30 on 09:30 off 21:30 on 23:30 off ");
  // Open for half an hour: then it is swept, whatever was left of the override.
  Set(memory, Byte(map::NormalOpenTime + 1, 80), Byte(map::NormalCloseTime + 1, 82));
  EXPECT_EQ(RowsOf(memory, "19:30 relay 1 on"), "19:30 on 20:30 off ");
}

TEST(EngineTest, RandomMemoriesRunForAYear) {
  std::mt19937 random(24);
  const auto any = [&random](int below) {
    return static_cast<int>(random() % static_cast<unsigned>(below));
  };
  for (int round = 0; round < 6; ++round) {
    PanelMemory memory;
    const auto fill = [&] {
      // Sparse ones too, in which more of the settings make sense.
      for (int at = 0; at < PanelMemory::Size; ++at) {
        memory.SetByte(at, round % 2 == 0 || any(8) == 0 ? any(256) : 0);
      }
    };
    fill();
    Engine engine(memory);
    std::size_t rows = 0;
    engine.SetSink([&rows](const Row&) { ++rows; });
    const Instant start = DayOf({2026, 1, 1}) * DayMs;
    engine.PowerOn(start);
    for (int day = 0; day < 365; ++day) {
      if (day % 60 == 59) fill();
      for (int act = 0; act < 5; ++act) {
        engine.SetContact(any(Items), any(4) == 0 ? Contact::Off : Contact::On, any(2) == 0);
        engine.SetDeviceInput(1 + any(Devices), any(DeviceInputs), any(2) == 0);
        engine.SetPhotocell(1 + any(Devices), any(256));
        engine.AdvanceTo(engine.Now() + any(5 * HourMs));
        for (int output = 0; output < DimmerOutputs; ++output) {
          ASSERT_EQ(engine.DimmerLevel(output),
                    std::clamp(engine.DimmerLevel(output), 0, FullLevel));
        }
      }
      engine.AdvanceTo(std::max(engine.Now(), start + day * DayMs));
    }
    EXPECT_GT(rows, 365U);
    EXPECT_LT(rows, 5'000'000U);
  }
}

TEST(EngineTest, ItsClockStepsAndJumpsAndTakesNewSettings) {
  PanelMemory memory = EmptyInstallation(Timer(6, 9, 0, 4, 1));
  Engine engine(memory);
  const std::int64_t day = DayOf({2026, 3, 2}) * DayMs;
  engine.PowerOn(engine.Days().FromWall(day));
  PanelClock clock(engine, [] { return QDateTime(QDate(2020, 5, 17), QTime(6, 0), Qt::UTC); });
  clock.SetSpeed(0);
  const auto any = [](const Row&) { return true; };
  EXPECT_EQ(engine.NextRow(8 * HourMs, any), std::nullopt);
  EXPECT_EQ(engine.NextRow(9 * HourMs, any), engine.Days().FromWall(day + 9 * HourMs));
  EXPECT_TRUE(clock.Step());
  EXPECT_EQ(engine.Wall(), day + 9 * HourMs);
  EXPECT_TRUE(engine.Relay(4));
  clock.JumpTo(DateTimeOf(day + 8 * HourMs));  // back: the day begins anew
  EXPECT_FALSE(engine.Relay(4));
  // The settings change: the clock stays, and what is new holds at once.
  Set(memory, Timer(6, 8, 30, 4, 1), Byte(map::DSTEnabled, 0));
  engine.AdvanceTo(engine.Now());
  EXPECT_EQ(engine.Wall(), day + 8 * HourMs);
  clock.JumpTo(DateTimeOf(day + 8 * HourMs + 30 * MinuteMs));
  EXPECT_TRUE(engine.Relay(4));
}

}  // namespace
}  // namespace simulator
