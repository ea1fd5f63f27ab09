#include "document/rules/check/accepted.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <optional>

#include "panel/beside_project.h"
#include "panel/replace_file.h"

namespace {

const QString Header = QStringLiteral("Rule\tItem\tReason\tDate\tFinding");
constexpr qsizetype Columns = 5;

std::optional<Acceptance> FromLine(const QString& line) {
  const QStringList cells = line.split(u'\t');
  if (cells.size() != Columns || cells.contains(QString())) return std::nullopt;
  const QDate date = QDate::fromString(cells[3], Qt::ISODate);
  if (!date.isValid()) return std::nullopt;
  return Acceptance{cells[0], cells[1], cells[2], date, cells[4]};
}

}  // namespace

std::vector<Acceptance> ReadAccepted(const QString& projectFile) {
  const QString path = projectFile + AcceptedEnding;
  std::vector<Acceptance> accepted;
  if (!QFileInfo::exists(path)) return accepted;
  const auto fail = [&path](const QString& why) {
    throw RunTimeFailure(
        QStringLiteral("%1 %2. Nothing is taken as accepted.").arg(path, why).toStdString());
  };
  QFile file(path);
  // What people accept fits into a fraction of this.
  constexpr qint64 most = 4'000'000;
  if (!file.open(QIODevice::ReadOnly))
    fail(QStringLiteral("cannot be read: ") + file.errorString());
  QStringList lines = QString::fromUtf8(file.read(most)).split(u'\n');
  if (lines.last().isEmpty()) lines.removeLast();
  for (qsizetype i = 0; i < lines.size(); ++i) {
    QString line = lines[i];
    if (line.endsWith(u'\r')) line.chop(1);
    const auto row = FromLine(line);
    if (i == 0 ? line != Header : !row) {
      fail(QStringLiteral("is no list of accepted findings: see line %1").arg(i + 1));
    }
    if (i > 0) accepted.push_back(*row);
  }
  if (lines.isEmpty()) fail(QStringLiteral("is no list of accepted findings: it is empty"));
  return accepted;
}

void WriteAccepted(const QString& projectFile, std::span<const Acceptance> accepted) {
  const QString path = projectFile + AcceptedEnding;
  if (accepted.empty()) {
    if (QFileInfo::exists(path) && !QFile::remove(path)) {
      throw RunTimeFailure(QStringLiteral("%1 cannot be deleted.").arg(path).toStdString());
    }
    return;
  }
  QStringList lines;
  for (const Acceptance& one : accepted) {
    lines << QStringList{one.Rule, one.Item, one.Reason, one.Date.toString(Qt::ISODate),
                         one.Finding}
                 .join(u'\t');
  }
  lines.sort();  // so that two versions differ by what was accepted alone
  lines.prepend(Header);
  ReplaceFile(path, (lines.join(u'\n') + u'\n').toStdString());
}

QString InWords(const AcceptedFinding& accepted) {
  return QStringLiteral("%1 Accepted on %2: %3")
      .arg(accepted.What.Sentence, accepted.As.Date.toString(Qt::ISODate), accepted.As.Reason);
}

CheckedFindings PartAccepted(const std::vector<Finding>& findings,
                             std::span<const Acceptance> accepted) {
  CheckedFindings parted;
  for (const Finding& finding : findings) {
    const Acceptance same = Accept(finding, {}, {});
    const auto found = std::find_if(accepted.begin(), accepted.end(),
                                    [&](const Acceptance& one) { return SameFinding(one, same); });
    if (found == accepted.end()) {
      parted.Open.push_back(finding);
    } else {
      parted.Accepted.push_back({finding, *found});
    }
  }
  return parted;
}

bool SameFinding(const Acceptance& one, const Acceptance& other) {
  return one.Rule == other.Rule && one.Item == other.Item && one.Finding == other.Finding;
}

Acceptance Accept(const Finding& finding, const QString& reason, const QDate& date) {
  return {QString::fromLatin1(finding.Rule.data(), static_cast<qsizetype>(finding.Rule.size())),
          ItemCode(finding.Where), reason.simplified(), date, finding.Sentence.simplified()};
}
