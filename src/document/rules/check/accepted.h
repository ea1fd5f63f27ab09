#pragma once

#include <QDate>
#include <QString>
#include <span>
#include <vector>

#include "document/rules/check/check.h"

// Findings that are known and meant to stay, each with a reason. They are kept beside the project
// as a table that people can read, one to a line.

struct Acceptance {
  QString Rule;
  QString Item;  ///< "RELAY 03".
  QString Reason;
  QDate Date;
  QString Finding;  ///< The sentence that was accepted; a finding that says something else is not.
};

/// None where there is no such file. Throws RunTimeFailure, which names the file and the line, for
/// one that is damaged or something else: then nothing is accepted.
std::vector<Acceptance> ReadAccepted(const QString& projectFile);

/// Without acceptances there is no file. Throws RunTimeFailure where it cannot be written.
void WriteAccepted(const QString& projectFile, std::span<const Acceptance> accepted);

struct AcceptedFinding {
  Finding What;
  Acceptance As;
};

/// The sentence with date and reason behind it.
QString InWords(const AcceptedFinding& accepted);

/// The findings of a check, those that are accepted apart.
struct CheckedFindings {
  std::vector<Finding> Open;
  std::vector<AcceptedFinding> Accepted;
};
CheckedFindings PartAccepted(const std::vector<Finding>& findings,
                             std::span<const Acceptance> accepted);

/// Whether both are for the same finding.
bool SameFinding(const Acceptance& one, const Acceptance& other);

/// Line ends and tabs of the reason become blanks: they would part the table.
Acceptance Accept(const Finding& finding, const QString& reason, const QDate& date);
