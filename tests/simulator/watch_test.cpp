#include <gtest/gtest.h>

#include "rehearsed.h"
#include "simulator/watch/bars.h"
#include "simulator/watch/running.h"
#include "simulator/watch/why.h"

namespace simulator {
namespace {

using Kind = Subject::Kind;
using enum Contact;

constexpr Subject Relay(int number) {
  return {Kind::Relay, number - 1, 0};
}
constexpr Subject Input(int number) {
  return {Kind::Input, number - 1, 0};
}

/// A hall that blinks, on from 16:40 by a timer, swept from 21:00; a porch; switches of some kinds.
/// Monday 2 March 2026, from power on at midnight.
class WatchTest : public testing::Test {
 protected:
  WatchTest()
      : Memory(EmptyInstallation(
            Timer(0, 16, 40, 0, 1), Name(map::TimerName, "DUSK"), Name(map::RelayName, "HALL"),
            Name(map::RelayName + map::NameLength, "PORCH"), Byte(map::RelayTimerType, 1),
            Byte(map::OffHoursSweepRelay, 3), Name(map::InputName, "KEY"), Byte(map::InputType, 5),
            Word(map::InputTimedOnTime, 30),
            Code(map::InputRelayControl, 0, 0, 1),  // 1: timed on, the hall
            Byte(map::InputType + 1, 11), Code(map::InputRelayControl, 1, 1, 2),  // 2: holds off
            Byte(map::InputType + 2, 10), Code(map::InputRelayControl, 0, 2, 1),  // 3: no timer 1
            Byte(map::InputType + 3, 9), Code(map::InputRelayControl, 0, 3, 1),   // 4: no input 1
            Byte(map::InputType + 4, 1), Code(map::InputRelayControl, 1, 4, OnAndOff),
            Byte(map::InputEnableTime + 4, 28), Byte(map::InputDisableTime + 4, 72))),
        Runner(Memory) {
    Runner.SetSink([this](const Row& row) {
      Past.Take(row, Runner.Settings());
      Log.Take(row, Runner.Settings());
    });
    Runner.PowerOn(Runner.Days().FromWall(Midnight));
  }

  void GoTo(int hour, int minute) {
    Runner.AdvanceTo(Runner.Days().FromWall(Midnight + hour * HourMs + minute * MinuteMs));
  }
  std::string WhyOf(const Subject& item) { return Why(item, Runner, Past, Outlook(Runner, 0)); }
  std::string Told() {
    std::string text;
    for (const auto& line : Log.Fetch()) text += line.Sentence + "\n";
    return text;
  }
  std::string RunsNow() {
    std::string text;
    for (const Running& one : RunningNow(Runner)) {
      text += TimeLeft(one.Until, Runner.Now()) + " " + one.Words + "\n";
    }
    return text;
  }

  static constexpr std::int64_t Midnight = 20514 * DayMs;
  PanelMemory Memory;
  LastChanges Past;
  LogLines Log{LogLines::When::Past};
  Engine Runner;
};

TEST_F(WatchTest, ARelayTellsSinceWhenByWhomAndUntilWhen) {
  GoTo(12, 0);
  EXPECT_EQ(WhyOf(Relay(1)), "RELAY 01 HALL: off, on 16:40 by TIMER 01 DUSK (at 16:40)");
  EXPECT_EQ(WhyOf(Relay(3)), "RELAY 03: off, nothing switches it");
  GoTo(20, 0);
  EXPECT_EQ(WhyOf(Relay(1)),
            "RELAY 01 HALL: on since 16:40 by TIMER 01 DUSK (at 16:40), blinks 21:00 by SWEEP, off "
            "21:10, warning over (SWEEP of 21:00)");
  GoTo(21, 4);
  EXPECT_EQ(WhyOf(Relay(1)),
            "RELAY 01 HALL: blinks since 21:00 by SWEEP, off 21:10, warning over (SWEEP of 21:00)");
  EXPECT_EQ(SignOf(Relay(1), Runner), "warning");
  EXPECT_TRUE(RunsNow().starts_with("6:00 Blinks, then off: HALL (SWEEP of 21:00)\n")) << RunsNow();
  GoTo(22, 30);
  EXPECT_EQ(WhyOf(Relay(1)),
            "RELAY 01 HALL: off since 21:10, warning over (SWEEP of 21:00), on Tue 16:40 by TIMER "
            "01 DUSK (at 16:40)");

  // The time of a switch goes on being that switch's, through the warning at its end.
  Runner.SetContact(0, On, true);
  Runner.SetContact(0, On, false);
  GoTo(22, 40);
  EXPECT_TRUE(RunsNow().starts_with("20:00 Timed on: HALL (INPUT 01 KEY of 22:30)\n")) << RunsNow();
  GoTo(23, 30);
  EXPECT_TRUE(WhyOf(Relay(1)).starts_with(
      "RELAY 01 HALL: off since 23:10, warning over (INPUT 01 KEY of 22:30)"))
      << WhyOf(Relay(1));
  GoTo(24, 10);
  EXPECT_TRUE(WhyOf(Relay(1)).starts_with("RELAY 01 HALL: off since Mon 23:10")) << WhyOf(Relay(1));
}

TEST_F(WatchTest, WhatDoesNothingSaysWhyAndWhatHoldsIsListed) {
  GoTo(6, 0);
  EXPECT_EQ(WhyOf(Input(5)),
            "INPUT 05: open. Momentary PB: On And Off PORCH. Not heard: it is outside its active "
            "times, 07:00 to 18:00");
  EXPECT_EQ(WhyNothing(Input(5), Runner),
            "INPUT 05 does nothing: it is outside its active times, 07:00 to 18:00.");
  EXPECT_EQ(SignOf(Input(5), Runner), "not now");
  GoTo(9, 0);
  for (const int input : {1, 2, 3}) Runner.SetContact(input, On, true);
  EXPECT_EQ(WhyNothing(Input(1), Runner), "INPUT 01 KEY does nothing: it is disabled by INPUT 04.");
  EXPECT_EQ(WhyNothing(Relay(2), Runner),
            "RELAY 02 PORCH does nothing: PORCH is held by INPUT 02.");
  EXPECT_EQ(WhyNothing(Input(6), Runner), "INPUT 06 does nothing: it controls nothing.");
  EXPECT_EQ(SignOf(Relay(2), Runner), "held off");
  EXPECT_EQ(SignOf({Kind::Timer, 0, 0}, Runner), "disabled");
  EXPECT_TRUE(
      WhyOf({Kind::Timer, 0, 0}).starts_with("TIMER 01 DUSK: at 16:40, disabled by INPUT 03"))
      << WhyOf({Kind::Timer, 0, 0});
  EXPECT_EQ(RunsNow(),
            "- Held off: PORCH (INPUT 02)\n"
            "- Disabled: INPUT 01 KEY (INPUT 04)\n"
            "- Disabled: TIMER 01 DUSK (INPUT 03)\n"
            "- In force while closed: INPUT 02\n"
            "- In force while closed: INPUT 03\n"
            "- In force while closed: INPUT 04\n");
  EXPECT_EQ(WhyOf(Input(3)), "INPUT 03: closed since 09:00. Timer Disable: TIMER 01 DUSK");
  Runner.SetContact(3, On, false);
  EXPECT_EQ(SignOf(Input(1), Runner), "");
}

TEST_F(WatchTest, TheLogJoinsWhatBelongsTogetherAndPassesOverIdleSweeps) {
  Set(Memory, Byte(map::RelayTimerType + 1, 1), Code(map::TimerRelayControl, 1, 0, 1));
  Told();
  GoTo(24, 0);
  EXPECT_EQ(Told(),
            "TIMER 01 DUSK (at 16:40) turned HALL, PORCH on\n"
            "SWEEP made HALL, PORCH blink\n"
            "Warning over (SWEEP of 21:00): 2 relays off, HALL, PORCH\n");
  // Nor is a step made for them.
  const auto next =
      Runner.NextRow(2 * DayMs, [this](const Row& row) { return Matters(row, Runner.Settings()); });
  EXPECT_EQ(ShortTime(next.value(), Runner.Now(), Runner.Days()), "16:40");
  Runner.SetContact(1, On, true);
  EXPECT_EQ(Told(), "INPUT 02 closed\n");
}

TEST_F(WatchTest, AGroupTellsWhatItsRelaysTellAndBlinkingIsNoDelay) {
  // Porch with a delay; both off at one instant, and a group of both.
  Set(Memory, Byte(map::RelayTimerType + 1, 2), Code(map::TimerRelayControl, 1, 0, 1),
      Code(map::GroupRelayInclude, 0, 0, 1), Code(map::GroupRelayInclude, 1, 0, 1));
  GoTo(21, 4);
  EXPECT_TRUE(
      RunsNow().starts_with("6:00 Blinks, then off: HALL (SWEEP of 21:00)\n"
                            "6:00 Delay, then off: PORCH (SWEEP of 21:00)\n"))
      << RunsNow();
  EXPECT_EQ(WhyOf({Kind::Sweep, 0, 0}), "SWEEP: next 22:00, for GROUP 01");
  GoTo(22, 30);
  EXPECT_TRUE(WhyOf({Kind::Group, 0, 0})
                  .starts_with("GROUP 01: off since 21:10, warning over (SWEEP of 21:00), "))
      << WhyOf({Kind::Group, 0, 0});
}

TEST_F(WatchTest, BarsTellBlinkingApartAndGoOnWhereTheFutureBegins) {
  GoTo(21, 4);
  Engine other = Runner;
  BarKeeper keeper;
  other.SetSink([&](const Row& row) { keeper.Take(row, other.Settings()); });
  other.PowerOn(Runner.Days().FromWall(Midnight));
  other.AdvanceTo(Runner.Now());
  const auto bars = Joined(keeper.Until(other.Now()), BarsAhead(other, other.Now() + HourMs));
  ASSERT_EQ(bars.size(), 2U);
  EXPECT_FALSE(bars[0].Blinks);
  EXPECT_EQ(bars[0].Ended->Words, "SWEEP");
  EXPECT_TRUE(bars[1].Blinks);
  EXPECT_EQ(bars[1].To - bars[1].From, 10 * MinuteMs);
  EXPECT_EQ(bars[1].Ended->Ending(), ", warning over (SWEEP of 21:00)");
}

TEST(PowerTest, ComesBackToWhatTheTypesSay) {
  // Relays of types Off, On, On/In:1 and Last State, and one held on while input 2 is closed; all
  // on at 10:00. The time that runs is forgotten, and what was due meanwhile does not happen.
  const auto rows = [](bool inputClosed) {
    const PanelMemory memory = EmptyInstallation(
        Byte(map::RelayPowerOnType + 1, 1), Byte(map::RelayPowerOnType + 2, 2),
        Byte(map::RelayPowerOnType + 3, 3), Byte(map::InputType, 4), Byte(map::InputPreset, 47),
        Byte(map::InputType + 1, 11), Code(map::InputRelayControl, 4, 1, 1), Timer(0, 12, 10, 5, 1),
        Timer(1, 13, 0, 6, 1));
    QString acts =
        "10:00 relay 1 on,10:00 relay 2 on,10:00 relay 3 on,10:00 relay 4 on,"
        "10:00 press 2,12:00 power off,12:05 relay 7 on,12:20 power on,12:20 power on";
    if (inputClosed) acts += ",12:15 press 1";
    std::string result;
    for (const QString& row :
         QString::fromStdString(Rehearsed(memory, "2026-03-02", Script(acts), "")).split(';')) {
      if (row.contains(" 13:")) result += row.section(',', 1, 2).toStdString() + ";";
    }
    PanelMemory copy = memory;
    Engine engine(copy);
    std::vector<ScriptedAct> script = ParseScript(Script(acts));
    engine.SetScript(script);
    engine.PowerOn(engine.Days().FromWall(20514 * DayMs));
    engine.AdvanceTo(engine.Days().FromWall(20514 * DayMs + 12 * HourMs + 10 * MinuteMs));
    EXPECT_EQ(engine.Relays(), 0U);
    EXPECT_FALSE(engine.Powered());
    engine.AdvanceTo(engine.Days().FromWall(20514 * DayMs + 12 * HourMs + 30 * MinuteMs));
    result += std::to_string(engine.Relays());
    return result;
  };
  EXPECT_EQ(rows(false), "-,fires;RELAY 07,on;" + std::to_string(2 + 8 + 16));
  EXPECT_EQ(rows(true), "-,fires;RELAY 07,on;" + std::to_string(2 + 4 + 8 + 16));
}

TEST(DaylightTest, FollowsTheSunAndSwitchesByIt) {
  // On below 40, off from 120 on; at 45 degrees on 2 March the sun is up from 06:36 to 17:49.
  PanelMemory memory = EmptyInstallation(Byte(map::DeviceBlock(3), 9),
                                         Byte(map::DeviceBlock(3) + map::DeviceOnLevel, 40),
                                         Byte(map::DeviceBlock(3) + map::DeviceOffLevel, 120),
                                         Code(map::DeviceRelayControl(3), 0, 0, OnAndOff));
  const auto rows = [&memory](bool daylight) {
    RehearsalOptions options;
    ParseRange("2026-03-02..2026-03-03", options);
    options.Daylight = daylight;
    std::string text;
    Rehearse(memory, options, [&text](std::string_view piece) { text += piece; });
    QStringList kept;
    for (const QString& row : QString::fromStdString(text).split('\n')) {
      if (row.contains("\tRELAY 01\t")) kept << row.mid(8, 8) + row.section('\t', 3, 3);
    }
    return kept.join(',').toStdString();
  };
  EXPECT_EQ(rows(false), "02T00:00on");
  EXPECT_EQ(rows(true), "02T00:00on,02T08:21off,02T17:15on,03T08:19off,03T17:16on");
  // The most light comes half way between sunrise and sunset; a clock that is set takes its own.
  Engine engine(memory);
  engine.FollowSun(true);
  const SunAndHours hours = engine.HoursOf(20514);
  engine.PowerOn((*hours.Sunrise + *hours.Sunset) / 2);
  EXPECT_EQ(engine.PhotocellLevel(3), 255);
  engine.SetWall(20514 * DayMs + 23 * HourMs);
  EXPECT_EQ(engine.PhotocellLevel(3), 0);
  engine.FollowSun(false);
  engine.SetPhotocell(3, 77);
  engine.AdvanceTo(engine.Now() + DayMs);
  EXPECT_EQ(engine.PhotocellLevel(3), 77);
}

}  // namespace
}  // namespace simulator
