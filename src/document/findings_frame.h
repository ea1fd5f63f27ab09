#pragma once

#include <QGroupBox>
#include <QTreeWidget>

#include "document/rules/check/check.h"
#include "panel/project.h"
#include "shell/controls/controls.h"

/// What a check has found or in what two projects differ, below what the document's screen has of
/// its own.
class FindingsFrame : public QGroupBox {
  Q_OBJECT
 public:
  FindingsFrame();
  void ShowConnected(bool connected) { cmdComparePanel->setEnabled(connected); }

  void cmdCheck_Click();
  void cmdCompare_Click();
  /// Reads the connected panel's memory; pressed meanwhile, it stops.
  void cmdComparePanel_Click();
  void cboShown_Click();
  void cmdCopy_Click();
  void cmdPrint_Click();
  void cmdReportPdf_Click();
  void cmdSpreadsheet_Click();
  /// Shows the project in the simulated panel's window; a panel that is connected gets nothing.
  void cmdRehearse_Click();

 private:
  /// A row of the list, and where a press on it leads; no screen: nowhere.
  struct Row {
    QStringList Cells;
    Item Where;
    Screen On;
  };

  void ShowRows(const QStringList& headers, const QStringList& kinds, std::vector<Row> rows,
                const QString& told);
  void FillList();
  void ComparePanel();
  void ShowDifferences(const Project& one, const Project& other, const QString& otherTitle);
  void TellReport(const QString& told);

  ComboBox* cboShown = nullptr;  ///< One kind of rows, by their first cell, or all.
  Button* cmdComparePanel = nullptr;
  CheckBox* chkNames = nullptr;  ///< Whether names count in a comparison.
  Label* lblFound = nullptr;     ///< What came of the last press.
  Button* cmdCopy = nullptr;
  QTreeWidget* lstFindings = nullptr;
  std::vector<Row> rows_;
  QString told_;
  bool reading_ = false;
};
