#include "panel/beside_project.h"

#include <QFile>
#include <QFileInfo>

#include "panel/replace_file.h"

void CopyBeside(const QString& project, const QString& other) {
  for (const QString& ending : {AcceptedEnding, ReportEnding, TestedEnding}) {
    QFile file(project + ending);
    if (!file.exists() || QFileInfo(file) == QFileInfo(other + ending)) continue;
    if (!file.open(QIODevice::ReadOnly)) {
      throw RunTimeFailure(QStringLiteral("%1 cannot be read, and is not copied: %2")
                               .arg(file.fileName(), file.errorString())
                               .toStdString());
    }
    ReplaceFile(other + ending, file.readAll().toStdString());
  }
}

void ReadTableBeside(const TableBeside& table, const QString& project,
                     const std::function<bool(const QStringList& cells)>& take) {
  const QString path = project + table.Ending;
  if (!QFileInfo::exists(path)) return;
  const auto fail = [&](const QString& why) {
    throw RunTimeFailure(
        QStringLiteral("%1 %2. %3").arg(path, why, table.Consequence).toStdString());
  };
  QFile file(path);
  // What people note fits into a fraction of this.
  constexpr qint64 most = 4'000'000;
  if (!file.open(QIODevice::ReadOnly))
    fail(QStringLiteral("cannot be read: ") + file.errorString());
  QStringList lines = QString::fromUtf8(file.read(most)).split(u'\n');
  if (lines.last().isEmpty()) lines.removeLast();
  if (lines.isEmpty()) fail(QStringLiteral("is no %1: it is empty").arg(table.What));
  for (qsizetype i = 0; i < lines.size(); ++i) {
    QString line = lines[i];
    if (line.endsWith(u'\r')) line.chop(1);
    const QStringList cells = line.split(u'\t');
    const bool good = i == 0 ? line == table.Header
                             : cells.size() == table.Header.count(u'\t') + 1 && take(cells);
    if (!good) fail(QStringLiteral("is no %1: see line %2").arg(table.What).arg(i + 1));
  }
}

void WriteTableBeside(const TableBeside& table, const QString& project,
                      const std::vector<QStringList>& rows) {
  const QString path = project + table.Ending;
  if (rows.empty()) {
    if (QFileInfo::exists(path) && !QFile::remove(path)) {
      throw RunTimeFailure(QStringLiteral("%1 cannot be deleted.").arg(path).toStdString());
    }
    return;
  }
  QStringList lines;
  for (QStringList cells : rows) {
    for (QString& cell : cells) cell = cell.simplified();
    lines << cells.join(u'\t');
  }
  lines.sort();
  lines.prepend(table.Header);
  ReplaceFile(path, (lines.join(u'\n') + u'\n').toStdString());
}
