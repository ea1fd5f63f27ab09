#include "panel/apply_difference.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <algorithm>

namespace {

QStringList RowPlace(const DifferenceRow& row) {
  return {row.Area, row.Item, row.Field};
}

/// The settings that rows name, by their places.
QHash<QStringList, Setting> SettingsOf(const Project& project,
                                       const std::vector<DifferenceRow>& rows) {
  QSet<QString> items;
  for (const DifferenceRow& row : rows) items << row.Item;
  QHash<Item, QString> codes;
  QHash<QStringList, Setting> settings;
  ForEachSetting([&](const Setting& setting) {
    const Item item = ItemOf(setting);
    QString& code = codes[item];
    if (code.isEmpty()) code = ItemCode(item);
    if (items.contains(code)) {
      settings[{AreaOf(setting), code, PhraseOf(project, setting)}] = setting;
      // A cell may be told by what it stands for once its input has the other's type.
      if (!setting.Field || !setting.Field->Told.Value.Target) return;
      for (const ItemKind kind : {ItemKind::Relay, ItemKind::Input, ItemKind::Timer}) {
        settings[{AreaOf(setting), code, ItemCode({kind, setting.At.Second})}] = setting;
      }
    }
  });
  return settings;
}

/// Whether a setting has become what no editor could make of it.
bool PutsUnlisted(const Project& before, const Project& applied, const Setting& setting) {
  const auto parts = setting.Whole ? PartsOf(setting) : std::vector{setting};
  return std::any_of(parts.begin(), parts.end(), [&](const Setting& part) {
    return !IsListed(applied, part) && ValueOf(before, part) != ValueOf(applied, part);
  });
}

}  // namespace

std::vector<RefusedRow> ApplyDifference(Project& project, const std::vector<DifferenceRow>& rows) {
  std::vector<RefusedRow> refused;
  const QHash<QStringList, Setting> settings = SettingsOf(project, rows);
  QHash<Item, std::vector<Setting>> told;
  std::vector<Setting> places;
  for (const DifferenceRow& row : rows) {
    const auto found = settings.find(RowPlace(row));
    const auto refuse = [&](const QString& reason) {
      refused.push_back({static_cast<std::size_t>(&row - rows.data()), reason});
    };
    if (found == settings.end()) {
      refuse(QStringLiteral("there is no such setting"));
      continue;
    }
    places.push_back(*found);
    auto& toldOfItem = told[ItemOf(*found)];
    if (std::find(toldOfItem.begin(), toldOfItem.end(), *found) != toldOfItem.end()) {
      refuse(QStringLiteral("it is told twice"));
    } else if (!IsToldBy(project, *found, row.This)) {
      refuse(QStringLiteral("there stands \"%1\"").arg(WordsOf(project, *found)));
    }
    toldOfItem.push_back(*found);
  }
  if (!refused.empty()) return refused;

  // The words of an action depend on the type of its input, and those of that on the type of its
  // device, which may stand in later rows.
  constexpr int rounds = 3;
  Project applied = project;
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (!IsToldBy(applied, places[i], rows[i].Other)) {
        PutWords(applied, places[i], rows[i].Other);
      }
    }
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const bool isValue = IsToldBy(applied, places[i], rows[i].Other);
    if (isValue && !PutsUnlisted(project, applied, places[i])) continue;
    refused.push_back(
        {i, QStringLiteral("\"%1\" is %2")
                .arg(rows[i].Other, isValue ? QStringLiteral("in no list of its editor")
                                            : QStringLiteral("no value of it"))});
  }
  if (refused.empty()) project = std::move(applied);
  return refused;
}
