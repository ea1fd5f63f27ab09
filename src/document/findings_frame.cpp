#include "document/findings_frame.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScopeGuard>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <array>
#include <memory>

#include "document/rehearse.h"
#include "document/report_dialog.h"
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

/// Rows as high as their words need in columns as wide as they are.
class WrappedCells : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem wrapped = option;
    const auto* list = qobject_cast<const QTreeView*>(option.widget);
    wrapped.rect.setSize({list->columnWidth(index.column()), option.fontMetrics.height()});
    // How wide a column would be is asked here, too: as its words need unwrapped.
    return {QStyledItemDelegate::sizeHint(option, index).width(),
            QStyledItemDelegate::sizeHint(wrapped, index).height()};
  }
};

/// A severity has a sign and a colour beside its word.
void ShowSeverity(QTreeWidgetItem& item, Severity severity, const QWidget& list) {
  struct Look {
    QStyle::StandardPixmap Sign;
    QRgb OnLight;
    QRgb OnDark;
  };
  constexpr std::array looks = {Look{QStyle::SP_MessageBoxCritical, 0xB3261E, 0xFF8A80},
                                Look{QStyle::SP_MessageBoxWarning, 0x7A5000, 0xFFC766},
                                Look{QStyle::SP_MessageBoxInformation, 0x1F5FA8, 0x8FC1FF}};
  constexpr int middle = 128;
  const Look& look = looks.at(static_cast<std::size_t>(severity));
  const bool dark = list.palette().color(QPalette::Base).lightness() < middle;
  item.setIcon(0, list.style()->standardIcon(look.Sign));
  item.setForeground(0, QColor(dark ? look.OnDark : look.OnLight));
}

/// Asks where to write; empty when the user cancels.
QString ReportFileName(const QString& title, const QString& kind, const QString& ending) {
  const QString mask = QStringLiteral("*.") + ending;
  return FileDialog({FileRequest::Kind::Save,
                     QStringLiteral("%1 (%2)|%2|All Files (*.*)|*.*").arg(kind, mask.toUpper()),
                     DataPath(QStringLiteral("Documentation/") + mask.toUpper()), ending, title});
}

}  // namespace

FindingsFrame::FindingsFrame() : QGroupBox(QStringLiteral("Check, Compare And Report")) {
  setObjectName(QStringLiteral("fraFindings"));
  SetGuidePage(*this, "check.md");
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
  lstFindings->setWordWrap(true);
  lstFindings->setItemDelegate(new WrappedCells(lstFindings));
  lstFindings->setAlternatingRowColors(true);
  lstFindings->setTextElideMode(Qt::ElideRight);
  constexpr int leastRows = 3;
  lstFindings->setMinimumHeight(leastRows * (fontMetrics().height() + 2));
  column->addWidget(lstFindings, 1);
  lblFound = new Label;
  lblFound->setObjectName(QStringLiteral("lblFound"));
  lblFound->SetLook(Label::Look::Quiet);
  lblFound->SetElideMode(Qt::ElideRight);
  auto* found = new QHBoxLayout;
  column->addLayout(found);
  found->addWidget(lblFound, 1);
  chkAccepted = new CheckBox({});
  chkAccepted->setObjectName(QStringLiteral("chkAccepted"));
  chkAccepted->Click = [this] { chkAccepted_Click(); };
  chkAccepted->setToolTip(QStringLiteral("Whether findings that are accepted are listed too"));
  found->addWidget(chkAccepted);
  lblOpenReport = new Label;
  lblOpenReport->setObjectName(QStringLiteral("lblOpenReport"));
  lblOpenReport->SetLook(Label::Look::WebLink);
  lblOpenReport->SetElideMode(Qt::ElideMiddle);
  lblOpenReport->setVisible(false);
  lblOpenReport->Click = [this] { OpenUrl(lblOpenReport->toolTip()); };
  found->addWidget(lblOpenReport);
  row = new QHBoxLayout;
  column->addLayout(row);
  addButton("cmdPrint", QStringLiteral("Print..."), &FindingsFrame::cmdPrint_Click);
  addButton("cmdReportPdf", QStringLiteral("Report As PDF..."), &FindingsFrame::cmdReportPdf_Click);
  addButton("cmdSpreadsheet", QStringLiteral("Spreadsheet..."),
            &FindingsFrame::cmdSpreadsheet_Click);
  addButton("cmdRehearse", QStringLiteral("Rehearse"), &FindingsFrame::cmdRehearse_Click)
      ->setToolTip(QStringLiteral("Runs the project in a simulated panel's window"));
  cmdAccept = addButton("cmdAccept", QStringLiteral("Accept..."), &FindingsFrame::cmdAccept_Click);
  cmdMend = addButton("cmdMend", QStringLiteral("Mend"), &FindingsFrame::cmdMend_Click);
  cmdTakeOver =
      addButton("cmdTakeOver", QStringLiteral("Take Over"), &FindingsFrame::cmdTakeOver_Click);
  cmdTakeOver->setToolTip(
      QStringLiteral("Takes the other side's values of the selected rows into this project. Ctrl+A "
                     "selects all rows on show."));
  auto* accept = new QShortcut(Qt::Key_Insert, lstFindings, nullptr, nullptr, Qt::WidgetShortcut);
  connect(accept, &QShortcut::activated, this, [this] {
    if (auto* current = lstFindings->currentItem()) current->setSelected(true);
    if (cmdAccept->isVisible()) cmdAccept->click();
  });
  row->addStretch(1);
  lstFindings->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lstFindings->header()->setSectionsClickable(true);
  connect(lstFindings, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
    RunHandler([this, row = lstFindings->indexOfTopLevelItem(item)] { list_.Open(row); });
  });
  connect(lstFindings, &QTreeWidget::itemSelectionChanged, this, [this] {
    // Only what a user selects is in hand; what came up in the place of a row that went is next.
    const std::vector<int> selected = SelectedRows();
    if (selected.size() == 1) list_.SetCurrent(selected.front());
    ShowWhatIsSelected();
  });
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

void FindingsFrame::Compare(const QString& other, const FindingsList::MakeSides& sides) {
  list_.Compare(other, sides);
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
      throw RunTimeFailure("The panel's memory was not read correctly. Please compare again.");
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
  chkAccepted->setText(QStringLiteral("%1 accepted").arg(list_.AcceptedCount()));
  chkAccepted->ShowValue(list_.ShowsAccepted());
  ShowRows();
}

void FindingsFrame::ShowRows() {
  const QSignalBlocker silent(lstFindings);
  lstFindings->clear();
  for (const FindingsList::Row& row : list_.Rows()) {
    auto* item = new QTreeWidgetItem(row.Cells);
    if (row.Found) ShowSeverity(*item, row.Found->Level, *lstFindings);
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
  lstFindings->doItemsLayout();
}

void FindingsFrame::resizeEvent(QResizeEvent* event) {
  QGroupBox::resizeEvent(event);
  FitColumns();
}

std::vector<int> FindingsFrame::SelectedRows() const {
  std::vector<int> rows;
  for (QTreeWidgetItem* item : lstFindings->selectedItems()) {
    rows.push_back(lstFindings->indexOfTopLevelItem(item));
  }
  return rows;
}

/// What can be done with the selected rows, and what it would do.
void FindingsFrame::ShowWhatIsSelected() {
  const std::vector<int> selected = SelectedRows();
  cmdTakeOver->setVisible(list_.Compares());
  cmdTakeOver->setEnabled(!selected.empty());
  chkAccepted->setVisible(!list_.Compares() && list_.AcceptedCount() > 0);
  cmdAccept->setVisible(!list_.Compares());
  cmdMend->setVisible(!list_.Compares());
  if (list_.Compares()) return;
  const auto& rows = list_.Rows();
  const auto isAccepted = [&](int row) { return rows[static_cast<std::size_t>(row)].Accepted; };
  const auto accepted = std::count_if(selected.begin(), selected.end(), isAccepted);
  const bool all = accepted == static_cast<std::ptrdiff_t>(selected.size());
  cmdAccept->SetCaption(accepted > 0 && all ? QStringLiteral("Take Back")
                                            : QStringLiteral("Accept..."));
  cmdAccept->setEnabled(!selected.empty() && (accepted == 0 || all));
  cmdAccept->setToolTip(accepted > 0 ? QStringLiteral("Puts the findings back on the list.")
                                     : QStringLiteral("Keeps the findings out of the list, for a "
                                                      "reason that you give."));
  QStringList words;
  for (const int row : selected) {
    if (const auto mending = list_.MendingOfRow(row)) words << mending->Words;
  }
  cmdMend->setEnabled(!words.isEmpty());
  cmdMend->setToolTip(words.isEmpty() ? QStringLiteral("These findings need your decision.")
                                      : words.join(u'\n'));
  lblFound->SetCaption(words.size() == 1 ? QStringLiteral("Mend: ") + words.first() : list_.Told());
}

void FindingsFrame::chkAccepted_Click() {
  list_.ShowAccepted(chkAccepted->Value() != 0);
  ShowList();
}

void FindingsFrame::cmdAccept_Click() {
  const std::vector<int> rows = SelectedRows();
  if (list_.Rows()[static_cast<std::size_t>(rows.front())].Accepted) {
    list_.TakeBack(rows);
  } else {
    const auto reason =
        AskText(rows.size() == 1 ? QStringLiteral("Why should this finding stay?")
                                 : QStringLiteral("Why should these findings stay?"),
                list_.SentencesOf(rows));
    if (!reason) return;
    if (reason->simplified().isEmpty()) {
      TellRefusal(QStringLiteral("Nothing is accepted without a reason."));
      return;
    }
    list_.Accept(rows, *reason);
  }
  ShowList();
}

void FindingsFrame::cmdMend_Click() {
  list_.Mend(SelectedRows());
  ShowList();
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
  list_.TakeOver(SelectedRows());
  ShowList();
}

/// The rows on show below their headings, with tabs between their cells.
void FindingsFrame::cmdCopy_Click() {
  QStringList lines = {list_.Headers().join(u'\t')};
  for (const FindingsList::Row& row : list_.Rows()) lines << row.Cells.join(u'\t');
  QApplication::clipboard()->setText(lines.join(u'\n'));
}

/// With the file, once it is written.
void FindingsFrame::TellReport(const QString& told, const QString& file) {
  lblFound->SetCaption(told);
  lblOpenReport->SetCaption(QFileInfo(file).fileName());
  lblOpenReport->setToolTip(file);
  lblOpenReport->setVisible(!file.isEmpty());
  PaintNow();
}

void FindingsFrame::cmdPrint_Click() {
  if (const auto facts = AskReportFacts(window())) {
    LoadReportWriter()->Preview(BuildReport(LiveProject, *facts), window());
  }
}

void FindingsFrame::cmdReportPdf_Click() {
  const QString name = ReportFileName(QStringLiteral("Save Report"),
                                      QStringLiteral("Portable Documents"), QStringLiteral("PDF"));
  if (name.isEmpty()) return;
  const auto facts = AskReportFacts(window());
  if (!facts) return;
  QString outcome;  // of a failure the message box tells
  const auto tell = qScopeGuard([&] { TellReport(outcome, outcome.isEmpty() ? QString() : name); });
  int told = 0;
  const auto progress = [&](int percent) {
    constexpr int step = 10;
    if (percent < told + step) return;
    told = percent;
    TellReport(QStringLiteral("Report: %1 %").arg(percent));
  };
  ReplaceFile(name, ReportPdf(LiveProject, *facts, name, UsualPaper(), progress));
  outcome = QStringLiteral("The report is written.");
}

void FindingsFrame::cmdSpreadsheet_Click() {
  const QString name = ReportFileName(QStringLiteral("Save Spreadsheet"),
                                      QStringLiteral("Spreadsheets"), QStringLiteral("XLSX"));
  if (name.isEmpty()) return;
  TellReport({});
  ReplaceFile(name, ReportWorkbook(LiveProject, Now(), name));
  TellReport(QStringLiteral("The spreadsheet is written."), name);
}

void FindingsFrame::cmdRehearse_Click() {
  lblFound->SetCaption({});
  lblFound->SetCaption(Rehearse());
}
