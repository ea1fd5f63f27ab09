#include "document/report_dialog.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>

#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_codec.h"
#include "panel/project_file.h"
#include "panel/stopwatch.h"
#include "shell/controls/dialogs.h"
#include "shell/shell.h"

namespace {

/// Calls `work`. False where it failed, which is told, and stands in nobody's way.
template <typename Work>
bool TellFailureOf(Work work) {
  try {
    work();
    return true;
  } catch (const RunTimeFailure& failure) {
    MsgBox(QString::fromUtf8(failure.what()), MsgIcon::Exclamation, ProgramTitle);
    return false;
  }
}

}  // namespace

ReportDialog::ReportDialog(const ReportCover& cover, const QString& kept, QWidget* parent)
    : QDialog(parent) {
  setWindowTitle(QStringLiteral("Report"));
  SetGuidePage(*this, "check.md");
  auto* form = new QFormLayout(this);
  const auto add = [&](const char* name, const QString& caption, const QString& text) {
    constexpr int longest = 80;
    auto* box = new TextBox;
    box->setObjectName(QString::fromLatin1(name));
    box->setMaxLength(longest);
    box->UndoesItself = true;
    box->SetText(text);
    box->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
    form->addRow(caption, box);
    return box;
  };
  txtClient = add("txtClient", QStringLiteral("&Client"), cover.Client);
  txtSite = add("txtSite", QStringLiteral("&Site"), cover.Site);
  txtEngineer = add("txtEngineer", QStringLiteral("&Engineer"), cover.Engineer);
  auto* lblKept = new Label;
  lblKept->setObjectName(QStringLiteral("lblKept"));
  lblKept->SetLook(Label::Look::Quiet);
  lblKept->SetCaption(kept);
  form->addRow(lblKept);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  form->addRow(buttons);
}

ReportCover ReportDialog::Cover() const {
  return {txtClient->Text(), txtSite->Text(), txtEngineer->Text()};
}

std::optional<ReportFacts> AskReportFacts(QWidget* parent) {
  const bool hasFile = ProjectHasFile();
  const QString file = hasFile ? CurrentFileName : QString();
  // What was undone again is no change.
  const bool changed =
      DataChanged != 0 && hasFile && EncodeProject(LiveProject) != EncodeProject(*SavedProject());
  ReportFacts facts = FactsOfFile(file, Now(), changed);
  const bool sound = TellFailureOf([&] {
    if (hasFile) facts.Cover = ReadCover(file);
  });
  TellFailureOf([&] {
    if (hasFile) facts.Accepted = ReadAccepted(file);
  });
  TellFailureOf([&] {
    if (hasFile) facts.Tested = ReadTested(file);
  });
  facts.FileEndsEarly = FileEndsEarly();
  const QString kept =
      !hasFile ? QStringLiteral("For this report alone, as the project has no file yet.")
      : !sound ? QStringLiteral("For this report alone.")
               : QStringLiteral("Kept beside the project, in %1.")
                     .arg(QFileInfo(CoverFileOf(file)).fileName());
  ReportDialog dialog(facts.Cover, kept, parent);
  if (dialog.exec() != QDialog::Accepted) return {};
  facts.Cover = dialog.Cover();
  if (hasFile && sound) TellFailureOf([&] { KeepCover(file, facts.Cover); });
  return facts;
}
