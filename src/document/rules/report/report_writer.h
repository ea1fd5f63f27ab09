#pragma once

#include <QByteArray>
#include <functional>
#include <memory>
#include <string>

#include "document/rules/report/report.h"

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
  /// An .xlsx workbook. Throws RunTimeFailure.
  virtual QByteArray Workbook(const std::vector<DocumentTable>& sheets) = 0;
  /// The preview, from which the print dialog opens.
  virtual void Preview(const PanelReport& report, QWidget* window) = 0;
};

/// Loads the module. Throws RunTimeFailure, which says what to do.
std::unique_ptr<ReportWriter> LoadReportWriter();

/// The bytes of a project's report; `source` is the project's file. They throw RunTimeFailure,
/// which names the file that they were for, and the reason.
std::string ReportPdf(const Project& project, const QString& source, const QString& fileName,
                      Paper paper, const ReportProgress& progress);
std::string ReportWorkbook(const Project& project, const QString& fileName);
