#pragma once

#include <QByteArray>
#include <functional>
#include <memory>
#include <string>

#include "document/rules/report/report.h"

class QPagedPaintDevice;
class QWidget;

enum class Paper { Letter, A4 };

/// The paper of the user's country.
Paper UsualPaper();

/// Told the percentage that is done.
using ReportProgress = std::function<void(int percent)>;

/// Writes reports. It lives in a module that is loaded with the first report, as print support and
/// what it brings along would slow down every start.
class ReportWriter {
 public:
  virtual ~ReportWriter() = default;

  virtual QByteArray Pdf(const PanelReport& report, Paper paper,
                         const ReportProgress& progress) = 0;
  /// Paints all pages, on paper as the device has it.
  virtual void Paint(const PanelReport& report, QPagedPaintDevice& device) = 0;
  /// An .xlsx workbook. Throws RunTimeFailure.
  virtual QByteArray Workbook(const std::vector<DocumentTable>& sheets, const QDateTime& date) = 0;
  /// The preview, from which the print dialog opens.
  virtual void Preview(const PanelReport& report, QWidget* window) = 0;
};

/// Loads the module. Throws RunTimeFailure, which says what to do.
std::unique_ptr<ReportWriter> LoadReportWriter();

/// The bytes of a project's report, the same for the same project, facts and fonts. They throw
/// RunTimeFailure, which names the file that they were for, and the reason.
std::string ReportPdf(const Project& project, const ReportFacts& facts, const QString& fileName,
                      Paper paper, const ReportProgress& progress);
std::string ReportWorkbook(const Project& project, const QDateTime& date, const QString& fileName);
