#pragma once

#include "document/rules/report/report_writer.h"

class QPagedPaintDevice;

/// Paints all pages of a report.
void PaintReport(const PanelReport& report, QPagedPaintDevice& device,
                 const ReportProgress& progress);
