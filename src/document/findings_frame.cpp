#include "document/findings_frame.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScopeGuard>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <memory>

#include "document/rehearse.h"
#include "document/rules/report/report_writer.h"
#include "line/transfer.h"
#include "link/panel_link.h"
#include "link/panel_queue.h"
#include "panel/defaults.h"
#include "panel/difference.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "panel/replace_file.h"
#include "panel/stopwatch.h"
#include "shell/controls/dialogs.h"
#include "shell/shell.h"

namespace {

/// Asks where to write; empty when the user cancels.
QString ReportFileName(const QString& kind, const QString& ending) {
  const QString mask = QStringLiteral("*.") + ending;
  return FileDialog({FileRequest::Kind::Save,
                     QStringLiteral("%1 (%2)|%2|All Files (*.*)|*.*").arg(kind, mask.toUpper()),
                     DataPath(QStringLiteral("Documentation/") + mask.toUpper()), ending});
}

}  // namespace

FindingsFrame::FindingsFrame() : QGroupBox(QStringLiteral("Check, Compare And Report")) {
  setObjectName(QStringLiteral("fraFindings"));
  auto* column = new QVBoxLayout(this);
  auto* row = new QHBoxLayout;
  column->addLayout(row);
  const auto addButton = [this, &row](const char* name, const QString& caption,
                                      void (FindingsFrame::*click)()) {
    auto* button = new Button(caption);
    button->setObjectName(QString::fromLatin1(name));
    button->Click = [this, click] { (this->*click)(); };
    row->addWidget(button);
    return button;
  };
  addButton("cmdCheck", QStringLiteral("Check"), &FindingsFrame::cmdCheck_Click);
  addButton("cmdCompare", QStringLiteral("Compare..."), &FindingsFrame::cmdCompare_Click);
  cmdComparePanel = addButton("cmdComparePanel", QStringLiteral("Compare With Panel"),
                              &FindingsFrame::cmdComparePanel_Click);
  chkNames = new CheckBox(QStringLiteral("Names"));
  chkNames->setObjectName(QStringLiteral("chkNames"));
  chkNames->Click = [this] { chkNames_Click(); };
  chkNames->setToolTip(QStringLiteral("Whether names count in a comparison"));
  row->addWidget(chkNames);
  cboShown = new ComboBox;
  cboShown->setObjectName(QStringLiteral("cboShown"));
  cboShown->setAccessibleName(QStringLiteral("Show"));
  cboShown->SetWidthInChars(11);
  cboShown->Click = [this] { cboShown_Click(); };
  row->addWidget(cboShown);
  cmdCopy = addButton("cmdCopy", QStringLiteral("Copy"), &FindingsFrame::cmdCopy_Click);
  row->addStretch(1);

  lstFindings = new QTreeWidget;
  lstFindings->setObjectName(QStringLiteral("lstFindings"));
  lstFindings->setAccessibleName(QStringLiteral("Findings"));
  lstFindings->setRootIsDecorated(false);
  lstFindings->setUniformRowHeights(true);
  lstFindings->setAlternatingRowColors(true);
  lstFindings->setTextElideMode(Qt::ElideRight);
  constexpr int leastRows = 3;
  lstFindings->setMinimumHeight(leastRows * (fontMetrics().height() + 2));
  column->addWidget(lstFindings, 1);
  row = new QHBoxLayout;
  column->addLayout(row);
  addButton("cmdPrint", QStringLiteral("Print..."), &FindingsFrame::cmdPrint_Click);
  addButton("cmdReportPdf", QStringLiteral("Report As PDF..."), &FindingsFrame::cmdReportPdf_Click);
  addButton("cmdSpreadsheet", QStringLiteral("Spreadsheet..."),
            &FindingsFrame::cmdSpreadsheet_Click);
  addButton("cmdRehearse", QStringLiteral("Rehearse"), &FindingsFrame::cmdRehearse_Click)
      ->setToolTip(QStringLiteral("Runs the project in a simulated panel's window"));
  cmdTakeOver =
      addButton("cmdTakeOver", QStringLiteral("Take Over"), &FindingsFrame::cmdTakeOver_Click);
  cmdTakeOver->setToolTip(
      QStringLiteral("The other side's values of the selected rows come into this project. Ctrl+A "
                     "selects all rows on show."));
  cmdTakeOver->hide();
  lblFound = new Label;
  lblFound->setObjectName(QStringLiteral("lblFound"));
  lblFound->SetLook(Label::Look::Quiet);
  row->addWidget(lblFound, 1);
  lstFindings->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lstFindings->header()->setSectionsClickable(true);
  connect(lstFindings, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
    RunHandler([this, row = lstFindings->indexOfTopLevelItem(item)] { list_.Open(row); });
  });
  connect(lstFindings, &QTreeWidget::itemSelectionChanged, this, [this] { ShowWhatIsSelected(); });
  connect(lstFindings->header(), &QHeaderView::sectionClicked, this, [this](int pressed) {
    list_.SortBy(pressed);
    ShowRows();
  });
}

void FindingsFrame::cmdCheck_Click() {
  list_.Check();
  ShowList();
}

void FindingsFrame::cmdCompare_Click() {
  const QString name =
      FileDialog({FileRequest::Kind::Open, ProjectFileFilter, DataPath(QStringLiteral("*.T3"))});
  if (name.isEmpty()) return;
  list_.CompareWithFile(name);
  ShowList();
}

void FindingsFrame::lblChanged_Click() {
  Compare(QStringLiteral("As saved"),
          [] { return FindingsList::NewSides(LiveProject, *SavedProject()); });
}

void FindingsFrame::Compare(const QString& other, FindingsList::MakeSides sides) {
  list_.Compare(other, std::move(sides));
  ShowList();
}

void FindingsFrame::cmdComparePanel_Click() {
  if (reading_) {
    reading_ = false;
  } else {
    AskPanel([this] { ComparePanel(); });
  }
}

void FindingsFrame::ComparePanel() {
  constexpr qint64 pictureMs = 100;
  const QString caption = cmdComparePanel->Caption();
  DisableMainMenus();
  reading_ = true;
  cmdComparePanel->SetCaption(QStringLiteral("Cancel"));
  const auto end = qScopeGuard([&] {
    reading_ = false;
    cmdComparePanel->SetCaption(caption);
    EnableMainMenus();
  });
  const auto memory = std::make_shared<PanelImageType>();
  Stopwatch shown;
  const auto show = [&](int block, int, int count) {
    if (shown.ElapsedMs() < pictureMs) return;
    shown.Restart();
    lblFound->SetCaption(QStringLiteral("Reading block %1 of %2").arg(block).arg(count));
    QCoreApplication::processEvents();
  };
  switch (FetchImage(*memory, {.Cancelled = [this] { return !reading_; }, .Block = show})) {
    case TransferOutcome::Complete:
      break;
    case TransferOutcome::Cancelled:
      lblFound->SetCaption(QStringLiteral("Cancelled"));
      return;
    case TransferOutcome::SumDiffers:
      throw RunTimeFailure("The panel's memory was not read as it is. Please compare again.");
    default:
      PanelConnectionLost();
      return;
  }
  Compare(QStringLiteral("Panel"), [memory] {
    return FindingsList::NewSides(AsPanelKeeps(LiveProject),
                                  UploadedOver(LiveProject, *memory, true));
  });
}

/// The list with its headers and choices, made anew if the project has changed.
void FindingsFrame::ShowList() {
  list_.Refresh();
  const QSignalBlocker silent(lstFindings->header());
  lstFindings->setColumnCount(static_cast<int>(list_.Headers().size()));
  lstFindings->setHeaderLabels(list_.Headers());
  cboShown->SetItems(QStringList{QStringLiteral("All")} + list_.Kinds());
  cboShown->setCurrentIndex(list_.Kind() + 1);
  chkNames->ShowValue(list_.Names());
  ShowRows();
}

void FindingsFrame::ShowRows() {
  const QSignalBlocker silent(lstFindings);
  lstFindings->clear();
  for (const FindingsList::Row& row : list_.Rows()) {
    auto* item = new QTreeWidgetItem(row.Cells);
    for (int column = 0; column < row.Cells.size(); ++column) {
      item->setToolTip(column, row.Cells[column]);
    }
    lstFindings->addTopLevelItem(item);
  }
  FitColumns();
  if (auto* current = lstFindings->topLevelItem(list_.Current())) {
    lstFindings->setCurrentItem(current);
    lstFindings->scrollToItem(current);
  }
  lblFound->SetCaption(list_.Told());
  cmdCopy->setEnabled(!list_.Rows().empty());
  ShowWhatIsSelected();
}

/// All columns stand side by side: those that ask for more than their share get what the others
/// leave. The last takes the rest.
void FindingsFrame::FitColumns() {
  int left = lstFindings->viewport()->width();
  const int columns = lstFindings->columnCount();
  for (int column = 0; column < columns - 1; ++column) {
    lstFindings->resizeColumnToContents(column);
    const int share = std::min(lstFindings->columnWidth(column), left / (columns - column));
    lstFindings->setColumnWidth(column, share);
    left -= share;
  }
}

void FindingsFrame::resizeEvent(QResizeEvent* event) {
  QGroupBox::resizeEvent(event);
  FitColumns();
}

void FindingsFrame::ShowWhatIsSelected() {
  const auto selected = lstFindings->selectedItems();
  cmdTakeOver->setVisible(list_.Compares());
  cmdTakeOver->setEnabled(!selected.empty());
  if (selected.size() == 1) list_.SetCurrent(lstFindings->indexOfTopLevelItem(selected.front()));
}

void FindingsFrame::cboShown_Click() {
  list_.SetKind(cboShown->ListIndex() - 1);
  ShowRows();
}

void FindingsFrame::chkNames_Click() {
  list_.SetNames(chkNames->Value() != 0);
  ShowList();
}

void FindingsFrame::cmdTakeOver_Click() {
  std::vector<int> rows;
  for (QTreeWidgetItem* item : lstFindings->selectedItems()) {
    rows.push_back(lstFindings->indexOfTopLevelItem(item));
  }
  list_.TakeOver(rows);
  ShowList();
}

/// The rows on show below their headings, with tabs between their cells.
void FindingsFrame::cmdCopy_Click() {
  QStringList lines = {list_.Headers().join(u'\t')};
  for (const FindingsList::Row& row : list_.Rows()) lines << row.Cells.join(u'\t');
  QApplication::clipboard()->setText(lines.join(u'\n'));
}

void FindingsFrame::TellReport(const QString& told) {
  lblFound->SetCaption(told);
  PaintNow();
}

void FindingsFrame::cmdPrint_Click() {
  LoadReportWriter()->Preview(BuildReport(LiveProject, CurrentFileName, Now()), window());
}

void FindingsFrame::cmdReportPdf_Click() {
  const QString name = ReportFileName(QStringLiteral("Portable Documents"), QStringLiteral("pdf"));
  if (name.isEmpty()) return;
  QString outcome;  // of a failure the message box tells
  const auto tell = qScopeGuard([&] { TellReport(outcome); });
  int told = 0;
  const auto progress = [&](int percent) {
    constexpr int step = 10;
    if (percent < told + step) return;
    told = percent;
    TellReport(QStringLiteral("Report: %1 %").arg(percent));
  };
  ReplaceFile(name, ReportPdf(LiveProject, CurrentFileName, name, UsualPaper(), progress));
  outcome = QStringLiteral("The report is written.");
}

void FindingsFrame::cmdSpreadsheet_Click() {
  const QString name = ReportFileName(QStringLiteral("Spreadsheets"), QStringLiteral("xlsx"));
  if (name.isEmpty()) return;
  TellReport({});
  ReplaceFile(name, ReportWorkbook(LiveProject, name));
  TellReport(QStringLiteral("The spreadsheet is written."));
}

void FindingsFrame::cmdRehearse_Click() {
  lblFound->SetCaption({});
  lblFound->SetCaption(Rehearse());
}
