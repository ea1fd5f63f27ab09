#pragma once

#include <QDateTime>
#include <QLineF>
#include <QStringList>
#include <vector>

#include "document/rules/text/doc_text.h"
#include "panel/project.h"

// What is printed of a project and what its spreadsheet holds: plain data, from which the writers
// know all that they need.

/// The response curve of a dimmer output, on a square of 1 by 1 with Y growing downward.
struct ReportCurve {
  QString Title;
  QString Points;  ///< In words.
  std::vector<QLineF> Lines;
  std::vector<QPointF> Grips;
};

/// A table; a cell may have several lines.
struct ReportChapter {
  QString Title;
  QStringList Columns;
  std::vector<int> Widths;  ///< Of the columns, in percent.
  std::vector<QStringList> Rows;
  std::vector<ReportCurve> Curves;  ///< Below the table.
  bool OwnPage = false;
};

struct PanelReport {
  QString PanelName;
  QString FileName;
  QString Date;
  QString Findings;
  std::vector<ReportChapter> Chapters;
};

/// What of a project, which is called `fileName`, is used, in names and words. Throws
/// RunTimeFailure for a damaged project whose numbers overflow.
PanelReport BuildReport(const Project& project, const QString& fileName, const QDateTime& date);
