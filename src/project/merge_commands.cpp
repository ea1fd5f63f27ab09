#include "project/merge_commands.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include "panel/apply_difference.h"
#include "panel/defaults.h"
#include "panel/merge.h"
#include "project/places.h"
#include "project/rows.h"

namespace {

/// The cells of a row as `compare` prints it, be it as text or as an object.
QStringList CellsOf(const QByteArray& row) {
  if (!row.startsWith('{')) return QString::fromUtf8(row).split(u'\t');
  const QJsonObject object = QJsonDocument::fromJson(row).object();
  QStringList cells;
  for (const QString& column : CompareColumns) {
    if (object[column].isString()) cells << object[column].toString();
  }
  return cells;
}

[[noreturn]] void FailAtRow(const QString& file, int row, const QString& reason) {
  throw RunTimeFailure(
      QStringLiteral("%1: row %2: %3").arg(file).arg(row).arg(reason).toStdString());
}

std::vector<DifferenceRow> LoadRows(const QString& file) {
  std::vector<DifferenceRow> rows;
  int number = 0;
  for (QByteArray row :
       QByteArray::fromStdString(LoadBytes(file, LargestProjectFile)).split('\n')) {
    ++number;
    if (row.endsWith('\r')) row.chop(1);
    const QStringList cells = CellsOf(row);
    if (row.isEmpty() || cells == CompareColumns) continue;
    if (cells.size() != CompareColumns.size()) {
      FailAtRow(file, number, QStringLiteral("is not a row of a comparison"));
    }
    rows.push_back({cells[0], cells[1], cells[2], cells[3], cells[4]});
  }
  return rows;
}

/// What both sides began as; of a file that both added, which is empty here, a new panel.
Project LoadBase(const QString& place, const Project& ours) {
  const QFileInfo info(place);
  return info.isFile() && info.size() == 0 ? NewProject() : LoadSide(place, ours);
}

/// What stands elsewhere than in a file has nothing behind it.
ProjectFile LoadOurs(const QString& place) {
  const bool isFile = place != StandardPlace && !IsPanelMemory(place);
  return isFile ? LoadProjectFile(place) : ProjectFile{LoadWhole(place), {}};
}

ExitStatus MergeInto(const QString& output, const CommandLine& line, const QStringList& files) {
  RefuseAllButFile(output);
  RefuseOutput(output, files[0]);
  RefuseOutput(output, files[2]);
  const ProjectFile ours = LoadOurs(files[1]);
  const Project base = LoadBase(files[0], ours.Content);
  const MergedProject merged = MergeProjects(base, ours.Content, LoadSide(files[2], base));
  for (const MergeConflict& row : merged.Conflicts) {
    PrintRow(line, MergeColumns,
             {row.Area, ItemCode(row.Where), row.Field, row.Base, row.Ours, row.Theirs});
  }
  FlushOutput();  // Nothing is written where they cannot be told.
  StoreProjectFile(output, merged.Content, ours.Tail);
  return merged.Conflicts.empty() ? StatusGood : StatusFound;
}

}  // namespace

ExitStatus ApplyRows(const CommandLine&, const QStringList& files) {
  RefuseOutput(files[0], files[1]);
  ProjectFile file = LoadProjectFile(files[0]);
  const std::vector<DifferenceRow> rows = LoadRows(files[1]);
  const std::vector<RefusedRow> refused = ApplyDifference(file.Content, rows);
  for (const RefusedRow& told : refused) {
    const DifferenceRow& row = rows[told.Index];
    TellFailure(qUtf8Printable(QStringLiteral("%1: %2, %3, %4: %5")
                                   .arg(files[0], row.Area, row.Item, row.Field, told.Reason)));
  }
  if (!refused.empty()) return StatusFailed;
  StoreProjectFile(files[0], file.Content, file.Tail);
  return StatusGood;
}

ExitStatus MergeFiles(const CommandLine& line, const QStringList& files) {
  const QString& output = line.Output.isEmpty() ? files[1] : line.Output;
  try {
    return MergeInto(output, line, files);
  } catch (const RunTimeFailure& failure) {
    if (line.Path.isEmpty()) throw;
    throw RunTimeFailure(line.Path.toStdString() + ": " + failure.what());
  }
}
