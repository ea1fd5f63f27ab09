#include <gtest/gtest.h>

#include <map>

#include "document/rules/check/check.h"
#include "document/sound_project.h"
#include "panel/format.h"
#include "simulator/rehearsed.h"

namespace {

std::map<std::string, Severity> Told() {
  std::map<std::string, Severity> rules;
  for (const Finding& finding : CheckProject(LiveProject, {.LastTransfer = &PanelImage})) {
    rules.emplace(finding.Rule, finding.Level);
  }
  return rules;
}

/// What becomes of an item on Monday 2 March 2026 and in the night after.
std::string MondayOf(const QString& script, const QString& item) {
  simulator::PanelMemory memory;
  memory.SetContent(FreshPanelMemory(LiveProject));
  const std::string all = simulator::Rehearsed(
      memory, "2026-03-02..2026-03-03", script.isEmpty() ? QString() : simulator::Script(script));
  QString rows;
  for (const QString& row : QString::fromStdString(all).split(u';', Qt::SkipEmptyParts)) {
    if (row.section(u',', 1, 1) == item) rows += row + u';';
  }
  return simulator::TimesAndChanges(rows.toStdString());
}

/// An installation that does what it is meant to do.
struct Works {
  Act Make;
  const char* Script;
  const char* Item;
  const char* Rows;             ///< Of the item, as rehearsed.
  std::set<std::string> Notes;  ///< All that the check may say of it.
};

std::vector<Works> WorkingInstallations() {
  auto& p = PanelRecord;
  const auto fourMoreRelays = Sets(p.IOCount(0), 2);
  const auto dims = [](Int16 slot, Int16 type, Int16 number) {
    return All(Calls(DimSetCtlType, 0, 0, slot, type), Calls(DimSetCtlNumber, 0, 0, slot, number),
               Calls(DimSetCtlAction, 0, 0, slot, 43), Calls(DimSetCtlRevert, 0, 0, slot, 1));
  };
  const auto everyDay = [](Int16 open, Int16 close) {
    return [open, close] {
      for (int day = 0; day < 7; ++day) {
        p.NormalOpenTime(day) = open;
        p.NormalCloseTime(day) = close;
      }
      p.TimerTimeType(0) = 184;  // as it opens
    };
  };
  const char* const dimmer = "DIMMER 1 OUTPUT 1";
  return {
      // A preset for dimmers alone.
      {All(Sets(p.InputPreset(3), 7), dims(1, ControlPreset, 7)),
       "08:00 tap 4",
       dimmer,
       "08:00 level 102 ",
       {"unused-preset"}},
      // A timer for dimmers alone, without a day, that an input forces.
      {All(dims(1, ControlTimer, 1),
           Sets(p.TimerDays(1), 0x7F, p.InputType(2), 12, p.InputRelayControl(2, 2), 0,
                p.InputRelayControl(2, 1), 1)),
       "08:00 tap 3",
       dimmer,
       "08:00 level 102 ",
       {}},
      // A timer that is parked.
      {Sets(p.TimerDays(0), 0xFF, p.TimerTimeType(0), 20),
       "19:00 relay 1 on",
       "RELAY 01",
       "19:00 on 21:00 off ",
       {"parked-timer", "unused-group"}},
      // A dimmer device that is not enabled follows its relays.
      {All(Calls(DimSetRelay, 2, 1, 0, -1), Calls(DimSetOnLevel, 2, 1, 40)),
       "08:00 relay 1 on",
       "DIMMER 3 OUTPUT 2",
       "08:00 level 102 21:00 level 0 ",
       {}},
      // A group for the panel's keys.
      {All(Sets(p.GroupRelayInclude(1, 1), -1)),
       "08:00 group 2 on",
       "RELAY 02",
       "08:00 on 21:00 off ",
       {"unused-group"}},
      // Blink Alert turns on, too.
      {Sets(p.InputRelayControl(0, 0), 4, p.OffHoursSweepRelay(0), 0),
       "08:00 press 1,08:00 release 1,09:00 press 1 off",
       "RELAY 01",
       "08:00 on 09:00 blinks 09:10 off ",
       {"sweep-leaves"}},
      // Equal times keep the building closed, and what is turned on goes off again.
      {everyDay(48, 48), "13:00 tap 1", "RELAY 01", "13:00 on 15:00 off ", {"stays-closed"}},
      // The timer that opens has the last word of the one that closes in the same minute.
      {All(everyDay(48, 48), Sets(p.TimerRelayControl(0, 2), 0, p.TimerGroupControl(0, 0), 1,
                                  p.TimerGroupControl(1, 0), 2, p.TimerTimeType(1), 248)),
       "",
       "RELAY 01",
       "12:00 on 12:00 off 12:00 on 12:00 off ",
       {"stays-closed"}},
      // A bar.
      {everyDay(68, 8), "20:00 tap 1", "RELAY 01", "20:00 on 02:00 off ", {"closes-late"}},
      // Open and close times that nothing asks for.
      {All(everyDay(48, 20), Sets(p.OffHoursSweepRelay, ItemArray(), p.TimerTimeType(0), 22)),
       "20:00 tap 1",
       "RELAY 01",
       "20:00 on 22:00 off ",
       {}},
      // Relays that are on from the start, and what a host or a console switches.
      {All(fourMoreRelays, Sets(p.RelayPowerOnType(4), 1, p.RelayPowerOnType(5), 1,
                                p.RelayPowerOnType(6), 1, p.RelayPowerOnType(7), 1)),
       "08:00 relay 5 off",
       "RELAY 05",
       "08:00 off ",
       {"sweep-leaves"}},
      {All(fourMoreRelays, Sets(p.AddOnModuleType, 5)), "", "RELAY 05", "", {"sweep-leaves"}},
      {All(fourMoreRelays, Sets(p.AddOnModuleType, 1, p.DMXChannel(4), 5, p.DMXChannel(5), 6,
                                p.DMXChannel(6), 7, p.DMXChannel(7), 8)),
       "",
       "RELAY 05",
       "",
       {"sweep-leaves"}},
      // Hold On lets go again.
      {All(fourMoreRelays,
           Sets(p.InputType(4), 11, p.InputRelayControl(4, 4), 1, p.InputRelayControl(4, 5), 1,
                p.InputRelayControl(4, 6), 1, p.InputRelayControl(4, 7), 1)),
       "08:00 press 5,09:00 release 5",
       "RELAY 05",
       "08:00 on 09:00 off ",
       {"sweep-leaves"}},
      // A preset for the panel's keys.
      {Sets(p.PresetRelayControl(1, 0), 1),
       "08:00 preset 2",
       "RELAY 01",
       "08:00 on 21:00 off ",
       {"unused-preset"}},
      // All off, but what a preset or a later group brings back.
      {Sets(p.PresetRelayControl(1, 0), 1, p.TimerPresetControl(0, 1), -1, p.TimerTimeType(0), 20),
       "",
       "RELAY 01",
       "20:00 on 21:00 off 20:00 on 21:00 off ",
       {}},
      // The evening of a holiday on which the usual timer rests.
      {Sets(p.TimerDays(0), 0x80, p.TimerTimeType(0), 19, p.TimerRelayControl(1, 0), 1,
            p.TimerTimeType(1), 19, p.TimerHolidayMonth(1), 3, p.TimerHolidayDate(1), 2),
       "",
       "RELAY 01",
       "19:00 on 21:00 off ",
       {}},
  };
}

TEST(CheckRehearsedTest, WhatWorksIsNoErrorAndNoWarning) {
  int row = 0;
  for (const Works& works : WorkingInstallations()) {
    SCOPED_TRACE(row++);
    LoadSoundProject();
    works.Make();
    EXPECT_EQ(MondayOf(works.Script, works.Item), works.Rows);
    for (const auto& [rule, severity] : Told()) {
      EXPECT_TRUE(rule == "items-in-use" || works.Notes.count(rule)) << rule;
      EXPECT_EQ(severity, Severity::Note) << rule;
    }
    for (const std::string& note : works.Notes) EXPECT_TRUE(Told().count(note)) << note;
  }
}

QStringList SentencesOf(std::string_view rule) {
  QStringList sentences;
  for (const Finding& finding : CheckProject(LiveProject)) {
    if (finding.Rule == rule) sentences << finding.Sentence;
  }
  return sentences;
}

TEST(CheckRehearsedTest, OneFactIsOneRow) {
  auto& p = PanelRecord;
  LoadSoundProject();
  p.IOCount(0) = 6;
  for (int input = 13; input < 24; ++input) p.InputType(input) = 1;
  for (int date = 23; date < 31; ++date) {
    p.DateOpenTime(11, date) = p.DateCloseTime(11, date) = static_cast<Int16>(date);
  }
  p.DateOpenTime(2, 30) = p.DateCloseTime(2, 30) = 0;
  p.NormalOpenTime(0) = p.NormalCloseTime(0) = 0;
  p.NormalOpenTime(6) = p.NormalCloseTime(6) = 40;
  for (int relay = 30; relay < 34; ++relay) p.TimerRelayControl(0, relay) = 2;
  p.InputRelayControl(0, 2) = 7;
  const std::pair<const char*, QStringList> rows[] = {
      {"idle-input", {"11 inputs have a type and do nothing: INPUT 14 to 24."}},
      {"unused-relay", {"Nothing switches 20 relays: RELAY 05 to 24."}},
      {"stays-closed",
       {"Sunday, Saturday stay closed: their open and close times are equal.",
        "March 31, December 24 to 31 stay closed: their open and close times are equal."}},
      {"beyond-points",
       {"TIMER 01 turns off RELAY 31 to 34, which are beyond the 24 installed points."}},
      {"action-cut",
       {"INPUT 01 has 1 action that its type \"Momentary On/Off\" does not offer. Looking at it "
        "turns it into the last one that it does."}},
  };
  for (const auto& [rule, sentences] : rows) EXPECT_EQ(SentencesOf(rule), sentences) << rule;
  const Project before = LiveProject;
  for (const auto& [timer, type] : {std::pair(0, 152), {1, 248}}) {
    p.TimerTimeType(timer) = static_cast<Int16>(type);  // before it opens, after it closes
    p.TimerTime(timer) = 15;
    p.TimerRelayControl(timer, 0) = static_cast<Int16>(timer + 1);
  }
  // Which days are opened all the same, by the days on which both timers do not run.
  constexpr int weekend = 0x41;
  constexpr int holidays = 0x80;
  const QString weekdays = "Sunday, Saturday";
  const QString dates = "March 31, December 24 to 31";
  const QString open =
      " have equal open and close times, and do not stay closed: an opening timer runs, and no "
      "closing timer at its minute.";
  const QString shut = " stay closed: their open and close times are equal.";
  const std::tuple<int, int, QStringList> opened[] = {
      {0, 0, {weekdays + open, dates + open}},
      {0, holidays, {weekdays + open, dates + open}},
      {holidays, 0, {dates + shut, weekdays + open}},
      {weekend, weekend, {weekdays + shut, dates + open}},
      {weekend | holidays, 0, {weekdays + shut, dates + shut}},
  };
  for (const auto& [opening, closing, sentences] : opened) {
    p.TimerDays(0) = static_cast<Int16>(opening);
    p.TimerDays(1) = static_cast<Int16>(closing);
    EXPECT_EQ(SentencesOf("stays-closed"), sentences) << opening << ' ' << closing;
  }
  LiveProject = before;
  const auto findings = CheckProject(LiveProject);
  const auto closed = std::find_if(findings.rbegin(), findings.rend(),
                                   [](const Finding& one) { return one.Rule == "stays-closed"; });
  ASSERT_TRUE(closed != findings.rend() && closed->Of);
  EXPECT_EQ(SpotOf(*closed->Of).Month, 2);
  EXPECT_EQ(closed->On, Screen::OpenAndCloseTimeSingleDates);

  LoadSoundProject();
  p.TimerRelayControl(1, 2) = 1;
  p.TimerTimeType(1) = 22;
  p.TimerHolidayMonth(1) = 12;
  p.TimerHolidayDate(1) = 24;
  const QString conflict = "TIMER 01 and TIMER 02 switch RELAY 03 differently at the same minute";
  EXPECT_EQ(SentencesOf("conflict"), QStringList(conflict + " on December 24."));
  p.TimerHolidayMonth(1) = 0;
  EXPECT_EQ(SentencesOf("conflict"), QStringList(conflict + "."));
  p.TimerDays(1) = 0x45;
  EXPECT_EQ(SentencesOf("conflict"), QStringList(conflict + " on Monday, Wednesday to Friday."));
  p.TimerDays(1) = 0;
  p.TimerRelayControl(2, 2) = 1;
  p.TimerTimeType(2) = 22;
  EXPECT_EQ(SentencesOf("conflict"),
            QStringList("TIMER 01, TIMER 02 and TIMER 03 switch RELAY 03 differently at the same "
                        "minute."));
}

TEST(CheckRehearsedTest, SentencesAreOfOneFactAndNameWhatTheyTell) {
  auto& p = PanelRecord;
  LoadSoundProject();
  p.TimerRelayControl(0, 2) = 1;
  p.TimerName(5) = "IDLE";
  p.InputType(2) = 12;
  p.InputRelayControl(2, 2) = 0;
  p.InputRelayControl(2, 5) = 1;
  p.DSTEndMonth = 3;
  p.DSTEndWeek = 2;
  p.TimerDays(7) = 300;
  for (int relay = 0; relay < 3; ++relay) p.RelayName(relay) = "STAIRS NUMBER " + NumberText(relay);
  for (int device = 3; device < 6; ++device) FennlinkRecords(device) = {};
  for (int device = 3; device < 6; ++device) FennlinkRecords(device).DeviceType = 1;
  const std::pair<const char*, QStringList> rows[] = {
      {"self-conflict",
       {"TIMER 01 contradicts itself: what it tells RELAY 03 STAIRS NUMBER 2 is taken back by "
        "GROUP 01."}},
      {"idle-timer", {"TIMER 08 does nothing."}},
      {"idle-timer-forced", {"INPUT 03 forces TIMER 06 IDLE, which does nothing."}},
      {"daylight-saving", {"Daylight saving begins and ends on the 2nd Sunday of March."}},
      {"image-element",
       {"TIMER 08, days: 300 does not fit the panel's memory, which holds 0 to 255; a download "
        "fails with code 2."}},
      {"long-name", {"The panel keeps 10 characters of 3 names: of RELAY 01 to 03."}},
      {"idle-device", {"None of the inputs of FL 03 to 05 does anything."}},
  };
  for (const auto& [rule, sentences] : rows) EXPECT_EQ(SentencesOf(rule), sentences) << rule;
  LoadSoundProject();
  p.IOCount(0) = 0;
  EXPECT_EQ(SentencesOf("swept-beyond-points"),
            QStringList("The off hours sweep takes RELAY 01 to 04, which are not installed, as no "
                        "points are."));
}

TEST(CheckRehearsedTest, NoAlarmOverWhatNobodyMeets) {
  auto& p = PanelRecord;
  LoadSoundProject();
  p.OffHoursSweepGroup(30) = -1;  // and has no relay
  p.RelayName(40) = p.RelayName(41) = "BOTH";
  for (int row = 0; row < ItemCount; ++row) {
    p.InputRelayControl(0, row) = p.InputGroupControl(0, row) = 0;
  }
  p.InputType(0) = 0;
  p.InputName(0) = "KEY";
  DimSetCtlType(0, 0, 0, 0);
  for (const char* rule : {"empty-group", "same-name"}) EXPECT_EQ(SentencesOf(rule), QStringList());
  EXPECT_EQ(SentencesOf("idle-input").size(), 1);
  p.RelayPowerOnType(1) = PowerOnByInput;
  EXPECT_EQ(SentencesOf("idle-input"), QStringList()) << "it decides what comes on with the power";
}

}  // namespace
