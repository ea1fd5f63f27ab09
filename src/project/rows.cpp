#include "project/rows.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include "project/output.h"

namespace {

/// What the file is called elsewhere stands first.
template <typename Cells>
Cells WithPath(const CommandLine& line, Cells cells, const QString& first) {
  if (!line.Path.isEmpty()) cells.prepend(first);
  return cells;
}

}  // namespace

void PrintHeader(const CommandLine& line, const QStringList& columns) {
  if (!line.Json) Print(WithPath(line, columns, FileColumn).join(u'\t').toUtf8() + '\n');
}

void PrintRow(const CommandLine& line, const QStringList& ownColumns,
              const QVariantList& ownCells) {
  const QStringList columns = WithPath(line, ownColumns, FileColumn);
  const QVariantList cells = WithPath(line, ownCells, line.Path);
  if (line.Json) {
    QJsonObject object;
    for (int i = 0; i < columns.size(); ++i) object[columns[i]] = QJsonValue::fromVariant(cells[i]);
    Print(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
    return;
  }
  QStringList texts;
  for (const QVariant& cell : cells) {
    QString text = cell.toString();
    // A name may hold what separates cells and rows.
    for (QChar& character : text) {
      if (character < u' ') character = u' ';
    }
    texts << text;
  }
  Print(texts.join(u'\t').toUtf8() + '\n');
}

void PrintRowNow(const CommandLine& line, const QStringList& columns, const QVariantList& cells) {
  PrintRow(line, columns, cells);
  FlushOutput();
}
