#pragma once

#include "document/report_paper.h"
#include "document/rules/report/report.h"

/// Lays a chapter's graphs out, several side by side; `onNewPage` begins each further page.
void LayOutGraphs(const std::vector<ReportGraph>& graphs, ReportPaper& paper,
                  const std::function<void()>& onNewPage);
