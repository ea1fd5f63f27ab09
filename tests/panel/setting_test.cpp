#include "panel/setting.h"

#include <gtest/gtest.h>

#include <QHash>
#include <QSet>
#include <QStringList>

#include "panel/apply_difference.h"
#include "panel/difference.h"
#include "panel/random_settings.h"

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
    if (!looked || setting.Runs) return;
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

TEST(SettingTest, WhatAComparisonTellsMakesOneOfTheOther) {
  RandomSettings random(1);
  for (const int changes : {3, 3, 30, 300, 3'000}) {
    SCOPED_TRACE(changes);
    Project one = NewProject();
    for (int i = 0; i < changes; ++i) random.Spoil(one, random.Any());
    Project other = one;
    for (int i = 0; i < changes; ++i) random.Spoil(other, random.Any());
    for (int timer = 0; timer < changes && timer < ItemCount; timer += 2) {
      for (const Setting& part : PartsOfTimer(timer)) random.Spoil(one, part);
      for (const Setting& part : PartsOfTimer(timer)) random.Spoil(other, part);
    }
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
