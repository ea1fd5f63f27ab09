#pragma once

#include "document/rules/report/pdf_bookmarks.h"
#include "document/rules/report/report_writer.h"

class QPagedPaintDevice;

/// Paints all pages of a report, and tells where its chapters begin.
std::vector<PdfBookmark> PaintReport(const PanelReport& report, QPagedPaintDevice& device,
                                     const ReportProgress& progress);
