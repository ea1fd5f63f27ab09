#include "document/rules/check/accepted.h"

#include <algorithm>

#include "panel/beside_project.h"

namespace {

const TableBeside AcceptedTable{AcceptedEnding, QStringLiteral("Rule\tItem\tReason\tDate\tFinding"),
                                QStringLiteral("list of accepted findings"),
                                QStringLiteral("Nothing is taken as accepted.")};

}  // namespace

std::vector<Acceptance> ReadAccepted(const QString& projectFile) {
  std::vector<Acceptance> accepted;
  ReadTableBeside(AcceptedTable, projectFile, [&accepted](const QStringList& cells) {
    const QDate date = QDate::fromString(cells[3], Qt::ISODate);
    if (cells.contains(QString()) || !date.isValid()) return false;
    accepted.push_back({cells[0], cells[1], cells[2], date, cells[4]});
    return true;
  });
  return accepted;
}

void WriteAccepted(const QString& projectFile, std::span<const Acceptance> accepted) {
  std::vector<QStringList> rows;
  for (const Acceptance& one : accepted) {
    rows.push_back({one.Rule, one.Item, one.Reason, one.Date.toString(Qt::ISODate), one.Finding});
  }
  WriteTableBeside(AcceptedTable, projectFile, rows);
}

QString InWords(const AcceptedFinding& accepted) {
  return QStringLiteral("%1 Accepted on %2: %3")
      .arg(accepted.What.Sentence, accepted.As.Date.toString(Qt::ISODate), accepted.As.Reason);
}

CheckedFindings PartAccepted(const std::vector<Finding>& findings,
                             std::span<const Acceptance> accepted) {
  if (accepted.empty()) return {findings, {}};
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
