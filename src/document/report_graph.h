#pragma once

#include "document/report_paper.h"
#include "document/rules/report/report.h"

/// Of all the graphs of a chapter on one page.
double HeightOfGraphs(const std::vector<ReportGraph>& graphs, const ReportPaper& paper);

/// Lays a chapter's graphs out, several side by side; `onNewPage` begins each further page.
void LayOutGraphs(const std::vector<ReportGraph>& graphs, ReportPaper& paper,
                  const std::function<void()>& onNewPage);
