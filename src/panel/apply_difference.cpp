#include "panel/apply_difference.h"

#include <QHash>
#include <QSet>
#include <QStringList>

namespace {

QStringList PlaceOf(const DifferenceRow& row) {
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
    }
  });
  return settings;
}

}  // namespace

std::vector<RefusedRow> ApplyDifference(Project& project, const std::vector<DifferenceRow>& rows) {
  std::vector<RefusedRow> refused;
  const QHash<QStringList, Setting> settings = SettingsOf(project, rows);
  QSet<QStringList> told;
  std::vector<Setting> places;
  for (const DifferenceRow& row : rows) {
    const auto found = settings.find(PlaceOf(row));
    const auto refuse = [&](const QString& reason) {
      refused.push_back({static_cast<std::size_t>(&row - rows.data()), reason});
    };
    if (found == settings.end()) {
      refuse(QStringLiteral("there is no such setting"));
      continue;
    }
    places.push_back(*found);
    if (told.contains(found.key())) {
      refuse(QStringLiteral("it is told twice"));
    } else if (!IsToldBy(project, *found, row.This)) {
      refuse(QStringLiteral("there stands \"%1\"").arg(WordsOf(project, *found)));
    }
    told << found.key();
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
    if (IsToldBy(applied, places[i], rows[i].Other)) continue;
    refused.push_back({i, QStringLiteral("\"%1\" is no value of it").arg(rows[i].Other)});
  }
  if (refused.empty()) project = std::move(applied);
  return refused;
}
