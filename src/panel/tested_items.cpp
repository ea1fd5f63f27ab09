#include "panel/tested_items.h"

#include <algorithm>

#include "panel/beside_project.h"

namespace {

const TableBeside TestedTable{TestedEnding, QStringLiteral("Item\tTested\tBy\tDate"),
                              QStringLiteral("list of tested items"),
                              QStringLiteral("Nothing is taken as tested.")};
const QString TestedWord = QStringLiteral("yes");

}  // namespace

std::vector<TestedItem> ReadTested(const QString& projectFile) {
  std::vector<TestedItem> tested;
  ReadTableBeside(TestedTable, projectFile, [&tested](const QStringList& cells) {
    const QDateTime at = QDateTime::fromString(cells[3], Qt::ISODate);
    if (cells[0].isEmpty() || cells[1] != TestedWord || !at.isValid()) return false;
    tested.push_back({cells[0], cells[2], at});
    return true;
  });
  return tested;
}

void WriteTested(const QString& projectFile, std::span<const TestedItem> tested) {
  std::vector<QStringList> rows;
  for (const TestedItem& one : tested) {
    rows.push_back({one.Item, TestedWord, one.By, one.At.toString(Qt::ISODate)});
  }
  WriteTableBeside(TestedTable, projectFile, rows);
}

const TestedItem* FindTested(std::span<const TestedItem> tested, const QString& item) {
  const auto found = std::find_if(tested.begin(), tested.end(),
                                  [&](const TestedItem& one) { return one.Item == item; });
  return found == tested.end() ? nullptr : &*found;
}
