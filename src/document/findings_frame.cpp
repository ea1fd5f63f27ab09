#include "document/findings_frame.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScopeGuard>
#include <QVBoxLayout>
#include <memory>

#include "shell/controls/go_to_item.h"
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
  lblFound = new Label;
  lblFound->setObjectName(QStringLiteral("lblFound"));
  lblFound->SetLook(Label::Look::Quiet);
  row->addWidget(lblFound, 1);
  connect(lstFindings, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
    const Row& pressed = rows_[item->data(0, Qt::UserRole).toUInt()];
    if (pressed.On == Screen::None) return;
    RunHandler([screen = pressed.On, where = pressed.Where] { GoToItem(screen, where); });
  });
  ShowRows({QStringLiteral("Severity"), QStringLiteral("Item"), QStringLiteral("Finding")}, {}, {},
           {});
}

void FindingsFrame::cmdCheck_Click() {
  const std::vector<Finding> findings =
      CheckProject(LiveProject, {.FileEndsEarly = FileEndsEarly()});
  std::vector<Row> rows;
  rows.reserve(findings.size());
  for (const Finding& finding : findings) {
    rows.push_back({{SeverityWord(finding.Level), ItemCode(finding.Where), finding.Sentence},
                    finding.Where,
                    finding.On});
  }
  ShowRows({QStringLiteral("Severity"), QStringLiteral("Item"), QStringLiteral("Finding")},
           {SeverityWord(Severity::Error), SeverityWord(Severity::Warning),
            SeverityWord(Severity::Note)},
           std::move(rows),
           QStringLiteral("%1, %2. Enter opens the screen.")
               .arg(CountOf(Severity::Error, findings), CountOf(Severity::Warning, findings)));
}

void FindingsFrame::cmdCompare_Click() {
  const QString name =
      FileDialog({FileRequest::Kind::Open, ProjectFileFilter, DataPath(QStringLiteral("*.T3"))});
  if (name.isEmpty()) return;
  ShowDifferences(LiveProject, ReadProject(name, NewProject()).Content,
                  QStringLiteral("Other project"));
}

void FindingsFrame::ShowDifferences(const Project& one, const Project& other,
                                    const QString& otherTitle) {
  const auto differences = CompareProjects(one, other, chkNames->Value() != 0);
  std::vector<Row> rows;
  QStringList areas;
  for (const Difference& difference : differences) {
    if (!areas.contains(difference.Area)) areas << difference.Area;
    rows.push_back({{difference.Area, ItemText(one, difference.Where), difference.Field,
                     difference.This, difference.Other},
                    {},
                    {}});
  }
  const bool equal = rows.empty();
  ShowRows({QStringLiteral("Area"), QStringLiteral("Item"), QStringLiteral("Field"),
            QStringLiteral("This project"), otherTitle},
           areas, std::move(rows),
           equal ? QStringLiteral("Both are equal.")
                 : QStringLiteral("%1 settings differ.").arg(differences.size()));
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
  const auto memory = std::make_unique<PanelImageType>();
  Stopwatch shown;
  const auto show = [&](int block) {
    if (shown.ElapsedMs() < pictureMs) return;
    shown.Restart();
    lblFound->SetCaption(QStringLiteral("Reading block %1 of %2").arg(block).arg(ImageBlockCount));
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
  ShowDifferences(AsPanelKeeps(LiveProject), UploadedOver(LiveProject, *memory, true),
                  QStringLiteral("Panel"));
}

void FindingsFrame::ShowRows(const QStringList& headers, const QStringList& kinds,
                             std::vector<Row> rows, const QString& told) {
  rows_ = std::move(rows);
  told_ = told;
  lstFindings->setColumnCount(static_cast<int>(headers.size()));
  lstFindings->setHeaderLabels(headers);
  cboShown->SetItems(QStringList{QStringLiteral("All")} + kinds);
  cboShown->setCurrentIndex(0);
  FillList();
}

void FindingsFrame::FillList() {
  lstFindings->clear();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (cboShown->ListIndex() > 0 && rows_[i].Cells[0] != cboShown->currentText()) continue;
    auto* item = new QTreeWidgetItem(rows_[i].Cells);
    item->setData(0, Qt::UserRole, static_cast<uint>(i));
    item->setToolTip(static_cast<int>(rows_[i].Cells.size()) - 1, rows_[i].Cells.last());
    lstFindings->addTopLevelItem(item);
  }
  for (int column = 0; column + 1 < lstFindings->columnCount(); ++column) {
    lstFindings->resizeColumnToContents(column);
  }
  lblFound->SetCaption(told_);
  cmdCopy->setEnabled(!rows_.empty());
}

void FindingsFrame::cboShown_Click() {
  FillList();
}

/// The rows on show, with tabs between their cells.
void FindingsFrame::cmdCopy_Click() {
  QStringList lines;
  for (int i = 0; i < lstFindings->topLevelItemCount(); ++i) {
    lines << rows_[lstFindings->topLevelItem(i)->data(0, Qt::UserRole).toUInt()].Cells.join(u'\t');
  }
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
  WriteReportPdf(LiveProject, CurrentFileName, name, UsualPaper(), [&](int percent) {
    constexpr int step = 10;
    if (percent < told + step) return;
    told = percent;
    TellReport(QStringLiteral("Report: %1 %").arg(percent));
  });
  outcome = QStringLiteral("The report is written.");
}

void FindingsFrame::cmdSpreadsheet_Click() {
  const QString name = ReportFileName(QStringLiteral("Spreadsheets"), QStringLiteral("xlsx"));
  if (name.isEmpty()) return;
  TellReport({});
  WriteReportWorkbook(LiveProject, name);
  TellReport(QStringLiteral("The spreadsheet is written."));
}

void FindingsFrame::cmdRehearse_Click() {
  lblFound->SetCaption({});
  lblFound->SetCaption(Rehearse());
}
