#include "panel/setting.h"

#include <gtest/gtest.h>

#include <QHash>
#include <QSet>
#include <QStringList>

#include "panel/apply_difference.h"
#include "panel/difference.h"
#include "panel/random_settings.h"
#include "panel/slot_words.h"

namespace {

std::vector<DifferenceRow> RowsOf(const std::vector<Difference>& differences) {
  std::vector<DifferenceRow> rows;
  for (const Difference& d : differences) {
    rows.push_back({d.Area, ItemCode(d.Where), d.Field, d.This, d.Other});
  }
  return rows;
}

std::string FirstReason(const std::vector<RefusedRow>& refused) {
  return refused.empty() ? "" : refused.front().Reason.toStdString();
}

TEST(SettingTest, NoTwoSettingsHaveOneName) {
  const Project project = NewProject();
  QSet<QStringList> names;
  ForEachSetting([&](const Setting& setting) {
    const QStringList name{AreaOf(setting), ItemCode(ItemOf(setting)), PhraseOf(project, setting)};
    EXPECT_FALSE(names.contains(name)) << name.join(u' ').toStdString();
    names << name;
  });
  EXPECT_GT(names.size(), 60'000);
}

/// Of each field the elements of three items, with inputs and devices of a type that has words.
TEST(SettingTest, NoTwoValuesShareWordsWhichReadBack) {
  Project project = NewProject();
  for (FennlinkRecord& device : project.Devices.elements) device.DeviceType = 2;
  std::vector<SettingValue> values;
  for (Int32 number = -3; number < 135; ++number) values.emplace_back(number);
  for (Int32 number : {-32'768, -9'600, 191, 192, 255, 256, 257, 300, 327, 328, 512, 999, 1'279,
                       4'800, 9'600, 32'767, 70'000, 1 << 24}) {
    values.emplace_back(number);
  }
  const std::vector<SettingValue> texts = {"FOYER", "A\tB", "A\nB ", "\x80\x81\xFF",
                                           "?",     " A",   "A (1)"};
  ForEachSetting([&](const Setting& setting) {
    const bool panel = !setting.Dimmer && setting.At.Device == 0;
    const bool looked = setting.At.First % 24 == 0 && setting.At.Second % 15 == 0 &&
                        (panel || setting.At.Device == (setting.Dimmer ? 3 : 26));
    if (!looked || setting.Whole) return;
    QHash<QString, SettingValue> told;
    const bool text = std::holds_alternative<std::string>(ValueOf(project, setting));
    for (const SettingValue& value : text ? texts : values) {
      if (!text && !RangeOf(project, setting).Has(std::get<Int32>(value))) continue;
      PutValue(project, setting, value);
      const SettingValue usual = UsualValueOf(project, setting);
      const QString words = WordsOf(project, setting);
      EXPECT_TRUE(!told.contains(words) || told[words] == usual)
          << PhraseOf(project, setting).toStdString() << ": " << words.toStdString();
      told[words] = usual;
      PutValue(project, setting, text ? SettingValue("before") : SettingValue(7));
      PutWords(project, setting, words);
      EXPECT_TRUE(UsualValueOf(project, setting) == usual)
          << PhraseOf(project, setting).toStdString() << ": " << words.toStdString();
    }
    PutValue(project, setting, text ? SettingValue("") : SettingValue(2));
  });
}

TEST(SettingTest, AControlSlotIsOneSentenceThatReadsBackWhateverTheNames) {
  Project project = NewProject();
  project.Panel.PresetName(2) = "OFFICE SCENE";
  project.Panel.InputName(47) = "A, fades, stays";
  project.Devices(26).DeviceName = "reverts to the photocell\t";
  const std::pair<ControlSlot, const char*> told[] = {
      {{0, -1, 99, 99, 999, 999}, "Unused"},
      {{3, 0, 2, 0, 43, 2}, "PRESET 03 OFFICE SCENE goes to 40 %, fades, back after 5 min"},
      {{1, -1, 47, 0, 0, 0},
       "INPUT 48 A, fades, stays reverts to the photocell, at once, back when the input opens"},
      {{4, 0, 7, 26, 105, 1},
       "inverted FL 1A INPUT 8 reverts to the photocell ramps up, fades, stays"},
      {{2, 0, 9, 0, 3, 121}, "TIMER 10 goes to 0 %, fades, back after 600 min"},
      {{2, 0, 48, 0, 3, 121}, ""},
      {{1, 0, 8, 26, 3, 121}, ""},
      {{1, 0, 0, 65, 3, 121}, ""},
      {{2, 0, 9, 0, 106, 121}, ""},
      {{2, 0, 9, 0, 3, 122}, ""},
      {{5, 0, 9, 0, 3, 121}, ""}};
  for (const auto& [slot, words] : told) {
    EXPECT_EQ(SlotInWords(project, slot).toStdString(), words);
    EXPECT_TRUE(*words == 0 || ReadSlotWords(words, slot) == slot) << words;
  }
  EXPECT_TRUE(ReadSlotWords("Unused", {1, 0, 2, 3, 4, 5}) == (ControlSlot{0, 0, 2, 3, 4, 5}));
  EXPECT_TRUE(ReadSlotWords("PRESET 03 ramps up, fades, stays", {1, -1, 9, 26, 4, 5}) ==
              (ControlSlot{3, 0, 2, 26, 105, 1}));
  for (const char* wrong :
       {"", "PRESET 49 ramps up, fades, stays", "PRESET 3 ramps up, fades, stays",
        "inverted TIMER 03 ramps up, fades, stays", "PRESET 03 ramps up, fades",
        "PRESET 03 goes to 101 %, fades, stays", "PRESET 03 ramps up, fades, back after 4 min",
        "FL 41 INPUT 1 ramps up, fades, stays", "FL 1A INPUT 9 ramps up, fades, stays",
        "FL 1a INPUT 1 ramps up, fades, stays", "RELAY 03 ramps up, fades, stays"}) {
    EXPECT_FALSE(ReadSlotWords(wrong, {})) << wrong;
  }
  QSet<QString> words;
  for (Int16 type = 1; type <= 4; ++type) {
    for (const Int16 device : std::initializer_list<Int16>{0, 1, 64}) {
      for (int code = 0; code < ControlRevertCount; ++code) {
        const auto number = static_cast<Int16>(code % 8);
        const auto action = static_cast<Int16>(code % ControlActionCount);
        const ControlSlot slot{type,   static_cast<Int16>(-(code & 1)), number, device,
                               action, static_cast<Int16>(code)};
        const QString sentence = SlotInWords(project, slot);
        EXPECT_TRUE(ReadSlotWords(sentence, {0, 0, 0, device, 0, 0}) == slot)
            << sentence.toStdString();
        const bool ofDevice = type == ControlInput || type == ControlInvertInput;
        EXPECT_TRUE(!words.contains(sentence) || (device > 0 && !ofDevice));
        words << sentence;
      }
    }
  }
}

/// What no editor can have put there becomes as in `one`; whether there was any.
bool MakeListed(Project& project, const Project& one) {
  std::vector<Setting> unlisted;
  ForEachDifferent(one, project, [&](const Setting& setting, bool spare) {
    if (!spare && !IsListed(project, setting)) unlisted.push_back(setting);
  });
  for (const Setting& setting : unlisted) TakeOver(project, one, setting);
  return !unlisted.empty();
}

TEST(SettingTest, WhatNoEditorPutsThereIsNotApplied) {
  const Project sound = NewProject();
  const DifferenceRow rows[] = {
      {"Panel", "PANEL", "blink alert time", "10 min", "300 min"},
      {"Relays", "RELAY 03", "timer type", "No Blink", "9"},
      {"Add-on module", "RELAY 03", "DMX channel", "None", "DMX 513"},
      {"Dimmers", "DIMMER 1 OUTPUT 1", "DMX channel", "None", "DMX 600"},
      {"Connection", "PANEL", "connection type", "USB", "7"},
      {"Timers", "TIMER 01", "month", "None", "13"},
  };
  for (const DifferenceRow& row : rows) {
    Project applied = sound;
    EXPECT_EQ(FirstReason(ApplyDifference(applied, {row})),
              "\"" + row.Other.toStdString() + "\" is in no list of its editor");
    EXPECT_TRUE(CompareProjects(sound, applied, true).empty());
  }
  Project applied = sound;
  const DifferenceRow cell{"Inputs", "INPUT 05", "TIMER 07", "No Action", "Force"};
  EXPECT_EQ(
      FirstReason(ApplyDifference(
          applied, {cell, {"Inputs", "INPUT 05", "type", "Momentary On/Off", "Force Timer"}})),
      "");
  EXPECT_EQ(applied.Panel.InputRelayControl(4, 6), 1);
  DifferenceRow same = cell;
  same.Field = "RELAY 07";
  applied = sound;
  EXPECT_EQ(FirstReason(ApplyDifference(applied, {cell, same})), "it is told twice");
}

TEST(SettingTest, WhatAComparisonTellsMakesOneOfTheOther) {
  RandomSettings random(1);
  for (const int changes : {3, 3, 30, 300, 3'000}) {
    SCOPED_TRACE(changes);
    Project one = NewProject();
    for (int i = 0; i < changes; ++i) random.Spoil(one, random.Any());
    Project other = one;
    for (int i = 0; i < changes; ++i) random.Spoil(other, random.Any());
    const auto spoil = [&](const std::vector<Setting>& parts) {
      for (const Setting& part : parts) random.Spoil(one, part);
      for (const Setting& part : parts) random.Spoil(other, part);
    };
    for (int timer = 0; timer < changes && timer < ItemCount; timer += 2) {
      spoil(PartsOfTimer(timer));
    }
    // Two slots that are told by a sentence, and parts that are not.
    for (int slot = 0; slot < changes && slot < ControlSlotCount; ++slot) {
      const Place place{slot % DimmerDeviceCount, 1, slot};
      for (const ControlSlotPart& part : ControlSlotParts) {
        for (Project* side : {&one, &other}) {
          const int choices = part.Field == &dim::ControlType ? 5 : 8;
          PutValue(*side, {nullptr, part.Field, place}, random.Below(choices));
        }
      }
      if (slot % 4 == 3) spoil(PartsOfSlot(place));
    }
    while (MakeListed(other, one)) {
    }
    one.Panel.TimerName(2) = "X, fades, stays";
    other.Panel.TimerName(2) = "TIMER 04 ramps up";
    for (const bool names : {false, true}) {
      Project applied = one;
      EXPECT_EQ(FirstReason(ApplyDifference(applied, RowsOf(CompareProjects(one, other, names)))),
                "");
      EXPECT_TRUE(CompareProjects(applied, other, names).empty());
    }
    for (const Difference& difference : CompareProjects(one, other, true)) {
      TakeOver(one, other, difference.Of);
    }
    EXPECT_TRUE(CompareProjects(one, other, true).empty());
  }
}

}  // namespace
