#pragma once

#include <QDateTime>
#include <QLineF>
#include <QRectF>
#include <QStringList>
#include <vector>

#include "document/rules/check/accepted.h"
#include "document/rules/report/report_cover.h"
#include "document/rules/text/doc_text.h"
#include "panel/project.h"
#include "panel/tested_items.h"

// What is printed of a project and what its spreadsheet holds: plain data, from which the writers
// know all that they need.

/// A place on an axis, 0 to 1, and what stands there.
struct ReportMark {
  double At;
  QString Text;
};

/// A graph on a square of 1 by 1 with Y growing downward.
struct ReportGraph {
  QString Title;
  QString Words;  ///< What it shows, below it.
  QString AcrossName;
  QString UpName;
  std::vector<ReportMark> Across;
  std::vector<ReportMark> Up;
  std::vector<QLineF> Lines;
  std::vector<QPointF> Grips;
  std::vector<QRectF> Areas;
};

struct ReportRow {
  QStringList Cells;     ///< Each may have several lines.
  bool Heading = false;  ///< Of the rows below it: it has one cell and stands above one at least.
};

/// What a cell holds that is a box to tick.
inline const QString ReportBox = QStringLiteral("\u2610");
/// The box, ticked.
inline const QString ReportTick = QStringLiteral("\u2611");

/// A table, and graphs below it.
struct ReportChapter {
  QString Title;
  QStringList Columns;
  std::vector<int> Widths;  ///< Of the columns, in percent.
  std::vector<ReportRow> Rows = {};
  std::vector<ReportGraph> Graphs = {};
  bool ForPen = false;  ///< To be filled in: ruled, on pages of its own with the panel's name.
  QString Note = {};    ///< Below the title.
  bool Small = false;   ///< Of many columns or lines, in small letters.
  bool RunOn = false;   ///< The lines of a cell, but of the first, follow one another in one.
  bool Halved = false;  ///< Printed as two tables side by side.
};

/// What a report tells beside the project's settings.
struct ReportFacts {
  QString FileName = {};  ///< Empty for a project without a file.
  QString Sum = {};       ///< Of the file; empty where it does not hold what is reported.
  QDateTime Date = {};
  ReportCover Cover = {};
  std::vector<Acceptance> Accepted = {};
  std::vector<TestedItem> Tested = {};
  bool FileEndsEarly = false;  ///< The file that was opened did not hold all of it.
};

/// The file and its sum. `changed` says that the project differs from its file.
ReportFacts FactsOfFile(const QString& file, const QDateTime& date, bool changed = false);

struct PanelReport {
  QString PanelName;
  QString FileName;
  QDateTime Date;
  std::vector<std::pair<QString, QString>> Cover;  ///< What is told; without a value by hand.
  std::vector<ReportChapter> Chapters;
};

/// What of a project is used, in names and words. Throws RunTimeFailure for a damaged project whose
/// numbers overflow.
PanelReport BuildReport(const Project& project, const ReportFacts& facts);
