#pragma once

#include <QDialog>
#include <optional>

#include "document/rules/report/report.h"
#include "shell/controls/controls.h"

/// Asks what a report's cover says.
class ReportDialog : public QDialog {
  Q_OBJECT
 public:
  /// `kept` says what becomes of the answers.
  ReportDialog(const ReportCover& cover, const QString& kept, QWidget* parent);
  ReportCover Cover() const;

 private:
  TextBox* txtClient = nullptr;
  TextBox* txtSite = nullptr;
  TextBox* txtEngineer = nullptr;
};

/// What a report of the open project tells beside its settings. The cover is asked for, beginning
/// with what is kept beside the project, and kept there. Nothing when the user cancels.
std::optional<ReportFacts> AskReportFacts(QWidget* parent);
