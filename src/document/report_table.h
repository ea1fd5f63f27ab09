#pragma once

#include "document/report_paper.h"
#include "document/rules/report/report.h"

/// Lays a chapter's table out, over as many pages as it takes. A row stays whole unless it is long;
/// a row that goes on behind a break begins with its name again.
class ReportTable {
 public:
  ReportTable(const ReportChapter& chapter, ReportPaper& paper);
  ~ReportTable();

  /// What the table begins with: its column titles, and the first row or as much of it as may stand
  /// alone.
  double BeginHeight() const;

  /// Of the whole table on one page.
  double Height() const;

  /// `onNewPage` lays out what stands above the table on each further page; `onRow` hears of each
  /// row.
  void LayOut(const std::function<void()>& onNewPage, const std::function<void()>& onRow);

 private:
  struct Row;

  std::shared_ptr<Row> LaidRow(const QStringList& cells, const QFont& font, bool across) const;
  double ColumnWidth(std::size_t column) const;
  double HeightOf(const Row& row, int lines) const;
  int LinesThatFit() const;
  double NeededFor(std::size_t row) const;
  void AddHeader();
  void AddLines(const std::shared_ptr<Row>& row, int from, int count);
  void AddRules(double top, double bottom, bool columns);

  const ReportChapter& chapter_;
  ReportPaper& paper_;
  double padding_;
  double line_;
  std::shared_ptr<Row> header_;
  std::vector<std::shared_ptr<Row>> rows_;
};
