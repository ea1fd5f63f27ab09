#pragma once

#include <QString>

/// Who gives a report to whom.
struct ReportCover {
  QString Client;
  QString Site;
  QString Engineer;

  bool operator==(const ReportCover&) const = default;
};

/// The file beside a project that keeps its cover: "office.T3.report".
QString CoverFileOf(const QString& projectFile);

/// What is kept beside a project; empty where nothing is. Throws RunTimeFailure, which names the
/// file and what is wrong with it, where it holds anything else or cannot be read.
ReportCover ReadCover(const QString& projectFile);

/// Keeps a cover beside a project. A file that ReadCover refuses stays as it is: the same failure.
void KeepCover(const QString& projectFile, const ReportCover& cover);
