#pragma once

#include <QGroupBox>
#include <QTreeWidget>

#include "document/findings_list.h"
#include "shell/controls/controls.h"

/// What a check has found or in what two projects differ, below what the document's screen has of
/// its own.
class FindingsFrame : public QGroupBox {
  Q_OBJECT
 public:
  FindingsFrame();
  void ShowConnected(bool connected) { cmdComparePanel->setEnabled(connected); }
  /// Shows the program's list, made anew if the project has changed.
  void ShowList();

  void cmdCheck_Click();
  void cmdCompare_Click();
  /// Reads the connected panel's memory; pressed meanwhile, it stops.
  void cmdComparePanel_Click();
  /// Lists what has been changed since the last save.
  void lblChanged_Click();
  void cboShown_Click();
  void chkNames_Click();
  void chkAccepted_Click();
  /// Asks for the reason; of findings that are accepted it takes that back.
  void cmdAccept_Click();
  void cmdMend_Click();
  void cmdTakeOver_Click();
  void cmdCopy_Click();
  void cmdPrint_Click();
  void cmdReportPdf_Click();
  void cmdSpreadsheet_Click();
  /// Shows the project in the simulated panel's window; a panel that is connected gets nothing.
  void cmdRehearse_Click();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Compare(const QString& other, const FindingsList::MakeSides& sides);
  void ComparePanel();
  void ShowRows();
  void FitColumns();
  void ShowWhatIsSelected();
  std::vector<int> SelectedRows() const;
  void TellReport(const QString& told, const QString& file = {});

  FindingsList& list_ = FindingsList::OfProgram();
  ComboBox* cboShown = nullptr;  ///< One kind of rows, by their first cell, or all.
  Button* cmdComparePanel = nullptr;
  CheckBox* chkNames = nullptr;  ///< Whether names count in a comparison.
  Label* lblFound = nullptr;     ///< What came of the last press.
  Label* lblOpenReport = nullptr;
  Button* cmdCopy = nullptr;
  CheckBox* chkAccepted = nullptr;  ///< Whether accepted findings are listed.
  Button* cmdAccept = nullptr;
  Button* cmdMend = nullptr;
  Button* cmdTakeOver = nullptr;
  QTreeWidget* lstFindings = nullptr;
  bool reading_ = false;
};
