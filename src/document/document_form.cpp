#include "document/document_form.h"

#include <QGridLayout>

#include "document/find_dialog.h"
#include "document/findings_frame.h"
#include "document/rules/text/doc_file.h"
#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "panel/words.h"
#include "shell/shell.h"

namespace {

constexpr int BoxesOfColumn = 4;

const QString FileFilter =
    QStringLiteral("Tamberloom 3 Document Files (*.TXT)|*.TXT|All Files (*.*)|*.*");

QString DocumentMask() {
  return DataPath(QStringLiteral("Documentation/*.TXT"));
}

}  // namespace

frmT3Document::frmT3Document() : ChildForm(Screen::Document, QStringLiteral("Document")) {}

void frmT3Document::Form_Load() {
  auto* fileRow = AddRow();
  fileRow->setAlignment({});  // a long path uses all the width but the caption's
  AddLabel(fileRow, "lblFileName", QStringLiteral("Output File "))
      ->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  lblDocFileName = Add<Label>(fileRow, "lblDocFileName");
  lblDocFileName->SetElideMode(Qt::ElideMiddle);
  lblDocFileName->setAccessibleName(QStringLiteral("Output File"));
  Add<Button>(fileRow, "cmdBrowse", QStringLiteral("Browse"))->Click = [this] {
    cmdBrowse_Click();
  };

  auto* grid = new QGridLayout(AddFrame("fraPrintOptions", QStringLiteral("Sections")));
  grid->setVerticalSpacing(2);
  for (const DocumentSection& section : DocumentSections) {
    auto* box = new CheckBox(ToUnicode(section.Caption));
    box->ShowValue(true);
    const int i = chkPrintOptions.Count();
    grid->addWidget(box, i % BoxesOfColumn, i / BoxesOfColumn, Qt::AlignLeft);
    chkPrintOptions.Add(box, QStringLiteral("chkPrintOptions"));
  }
  chkPrintOptions.OnEach(&CheckBox::Click, this, &frmT3Document::chkPrintOptions_Click);

  auto* documentRow = AddRow();
  auto* cmdDocument =
      Add<Button>(documentRow, "cmdDocument", QStringLiteral("Create Documentation File"));
  cmdDocument->Click = [this] { cmdDocument_Click(); };
  cmdDocument->setToolTip(
      QStringLiteral("A text file for reading and for spreadsheets: the columns of its tables are "
                     "separated by tabs."));
  lblOpenDocument = AddLabel(documentRow, "lblOpenDocument", QStringLiteral("Open the document"));
  lblOpenDocument->SetLook(Label::Look::WebLink);
  lblOpenDocument->Click = [this] { lblOpenDocument_Click(); };
  lblOpenDocument->setVisible(false);
  documentRow->setAlignment({});
  documentRow->addStretch(1);
  auto* lblFind = AddLabel(documentRow, "lblFind", QStringLiteral("Find..."));
  lblFind->SetLook(Label::Look::WebLink);
  lblFind->setToolTip(QStringLiteral("Finds an item by its name or number (Ctrl+F)"));
  lblFind->Click = [] { FindDialog(MainWindow()).exec(); };
  documentRow->addSpacing(fontMetrics().averageCharWidth() * 2);
  auto* lblChanged = AddLabel(documentRow, "lblChanged", QStringLiteral("What have I changed?"));
  lblChanged->SetLook(Label::Look::WebLink);
  lblChanged->Click = [this] { findings->lblChanged_Click(); };

  findings = new FindingsFrame;
  AddWidget(findings);
  UseSpareHeight();
}

void frmT3Document::Form_Activate() {
  findings->ShowConnected(Connected != 0);
  findings->ShowList();
  ShowFileName();
  for (int i = 0; i < DocumentSectionOff.Size; ++i) {
    chkPrintOptions(i).SetValue(DocumentSectionOff(i) == 0 ? 1 : 0);
  }
  chkPrintOptions(DMXSection).setVisible(PanelRecord.AddOnModuleType == AddOnModuleDMX);
}

void frmT3Document::ShowFileName() {
  lblDocFileName->SetCaption(DocumentFileName);
  lblDocFileName->setToolTip(DocumentFileName);
}

void frmT3Document::chkPrintOptions_Click(int index) {
  CheckBox& box = chkPrintOptions(index);
  // The DMX schedule has no flag and cannot be left out: its box stays ticked and the click fails.
  if (index == DMXSection) {
    box.ShowValue(true);
    throw RunTimeFailure("Subscript out of range: the DMX Schedule cannot be left out.");
  }
  DocumentSectionOff(index) = box.Value() != 0 ? 0 : -1;
}

void frmT3Document::cmdBrowse_Click() {
  const QString start = fileDialogUsed_ ? DocumentFileName : DocumentMask();
  fileDialogUsed_ = true;
  const QString name = FileDialog({FileRequest::Kind::Save, FileFilter, start});
  if (name.isEmpty() || name == DocumentMask()) return;
  DocumentFileName = name;
  ShowFileName();
  lblOpenDocument->setVisible(false);
}

void frmT3Document::cmdDocument_Click() {
  lblOpenDocument->setVisible(false);
  DocumentChoice chosen{};
  for (int i = 0; i < chkPrintOptions.Count(); ++i) {
    chosen[static_cast<std::size_t>(i)] = chkPrintOptions(i).Value() != 0;
  }
  WriteDocumentFile(RenderDocument(LiveProject, CurrentFileName, DocumentTimeStamp(Now()), chosen));
  lblOpenDocument->setVisible(true);
  MsgBox(QStringLiteral("Documentation Complete."), MsgIcon::None, ProgramTitle);
}

void frmT3Document::lblOpenDocument_Click() {
  OpenUrl(DocumentFileName);
}
