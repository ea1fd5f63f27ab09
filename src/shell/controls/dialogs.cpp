#include "shell/controls/dialogs.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/program_texts.h"
#include "panel/remembered.h"
#include "shell/shell.h"

namespace {

constexpr auto guidePage = "guidePage";

QString lastFolder;  ///< In which a file was chosen.

QMessageBox::Icon BoxIcon(MsgIcon icon) {
  switch (icon) {
    case MsgIcon::Information:
      return QMessageBox::Information;
    case MsgIcon::Question:
      return QMessageBox::Question;
    case MsgIcon::Exclamation:
      return QMessageBox::Warning;
    case MsgIcon::Critical:
      return QMessageBox::Critical;
    case MsgIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

/// Never the guide: it comes over each dialog in turn, and none may hang under what hangs under it.
QWidget* FrontWindow() {
  QWidget* dialog = QApplication::activeModalWidget();
  return dialog ? dialog : MainWindow();
}

MsgAnswer ShowMessage(const Message& message) {
  QMessageBox box(BoxIcon(message.Icon), message.Title, message.Text, QMessageBox::NoButton,
                  FrontWindow());
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(message.Detail);
  switch (message.Buttons) {
    case MsgButtons::Ok:
      box.setStandardButtons(QMessageBox::Ok);
      break;
    case MsgButtons::YesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box.setEscapeButton(QMessageBox::No);
      box.setDefaultButton(QMessageBox::No);
      break;
    case MsgButtons::YesNoCancel:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::No);
      break;
  }
  switch (box.exec()) {
    case QMessageBox::Yes:
      return MsgAnswer::Yes;
    case QMessageBox::No:
      return MsgAnswer::No;
    case QMessageBox::Ok:
      return MsgAnswer::Ok;
    default:
      return message.Buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Cancel;
  }
}

int ShowQuestion(const QString& text, const QStringList& answers) {
  QMessageBox box(QMessageBox::Question, ProgramTitle, text, QMessageBox::NoButton, FrontWindow());
  box.setTextFormat(Qt::PlainText);
  std::vector<QAbstractButton*> buttons;
  for (const QString& answer : answers) {
    const bool last = buttons.size() + 1 == static_cast<std::size_t>(answers.size());
    auto* button = box.addButton(answer, last ? QMessageBox::RejectRole : QMessageBox::ActionRole);
    buttons.push_back(button);
    if (last) box.setDefaultButton(button);
  }
  box.exec();
  const auto pressed = std::find(buttons.begin(), buttons.end() - 1, box.clickedButton());
  return static_cast<int>(pressed - buttons.begin());
}

std::optional<QString> ShowTextQuestion(const QString& text, const QString& about) {
  constexpr int leastChars = 60;  // a sentence
  QDialog dialog(FrontWindow());
  dialog.setWindowTitle(ProgramTitle);
  auto* column = new QVBoxLayout(&dialog);
  auto* lblAbout = new QLabel(about);
  lblAbout->setObjectName(QStringLiteral("lblAbout"));
  lblAbout->setTextFormat(Qt::PlainText);
  lblAbout->setWordWrap(true);
  lblAbout->setForegroundRole(QPalette::PlaceholderText);
  column->addWidget(lblAbout);
  auto* lblText = new QLabel(text);
  column->addWidget(lblText);
  auto* box = new QLineEdit;
  box->setObjectName(QStringLiteral("txtAnswer"));
  box->setMinimumWidth(leastChars * box->fontMetrics().averageCharWidth());
  lblText->setBuddy(box);
  column->addWidget(box);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  column->addWidget(buttons);
  box->setFocus();
  const bool accepted = dialog.exec() == QDialog::Accepted;
  return accepted ? std::optional(box->text()) : std::nullopt;
}

/// "Text (*.T3)|*.T3|All Files (*.*)|*.*" as the toolkit writes it, in either letter case.
QStringList NameFilters(const QString& filter) {
  const QStringList parts = filter.split(u'|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString text = parts[i].section(QStringLiteral(" ("), 0, 0);
    const QString& pattern = parts[i + 1];
    filters << (pattern == QLatin1String("*.*")
                    ? text + QStringLiteral(" (*)")
                    : QStringLiteral("%1 (%2 %3)").arg(text, pattern, pattern.toLower()));
  }
  return filters;
}

bool IsMask(const QString& name) {
  return name.isEmpty() || name.contains(u'*');
}

/// Of the file that is asked about, of the open project, the last one that was used, or the told
/// one.
QString StartFolder(const FileRequest& request) {
  QStringList folders;
  if (!IsMask(request.FileName)) folders << QFileInfo(request.FileName).absolutePath();
  if (CurrentFileName != NoFileName) folders << QFileInfo(CurrentFileName).absolutePath();
  folders << lastFolder << QFileInfo(request.FileName).absolutePath() << DataFolder();
  for (const QString& folder : folders) {
    if (!folder.isEmpty() && QDir(folder).exists()) return folder;
  }
  return QDir::homePath();
}

/// The project's name, else the panel's, with the ending of the filter; its stem is selected.
void SuggestName(QFileDialog& dialog, const FileRequest& request) {
  QString name = QFileInfo(request.FileName).fileName();
  if (IsMask(name)) {
    QString stem = CurrentFileName != NoFileName ? QFileInfo(CurrentFileName).completeBaseName()
                                                 : ToUnicode(PanelRecord.PanelName).trimmed();
    stem.replace(u'/', u'-');
    if (stem.isEmpty()) stem = QStringLiteral("Tamberloom 3");
    name = stem + request.Filter.section(u'|', 1, 1).mid(1);
  }
  dialog.selectFile(name);
  auto* box = dialog.findChild<QLineEdit*>();
  if (!box) return;
  const auto stem = QFileInfo(name).completeBaseName().size();
  box->setSelection(0, static_cast<int>(stem));
  // Who types the ending, too, types it over the one that stays.
  QObject::connect(box, &QLineEdit::textEdited, box, [box, ending = name.mid(stem)](QString typed) {
    const auto behind = typed.size() - ending.size();
    if (ending.isEmpty() || box->cursorPosition() != behind) return;
    if (typed.endsWith(ending + ending, Qt::CaseInsensitive)) box->setText(typed.left(behind));
  });
}

/// A project saved with another ending, or none, is found again under all files.
bool LastProjectPasses(const FileRequest& request) {
  QString last = CurrentFileName;
  if (last == NoFileName) {
    const std::vector<RecentProject> recent = RecentProjects();
    if (!recent.empty()) last = recent.front().Path;
  }
  const QString ending = request.Filter.section(u'|', 1, 1).mid(1);
  return request.Filter != ProjectFileFilter || last == NoFileName ||
         last.endsWith(ending, Qt::CaseInsensitive);
}

QString ChooseFile(const FileRequest& request) {
  QFileDialog dialog(FrontWindow());
  dialog.setNameFilters(NameFilters(request.Filter));
  if (request.Filter == ProjectFileFilter) SetGuidePage(dialog, "files.md");
  const bool open = request.Mode == FileRequest::Kind::Open;
  dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  if (!request.Title.isEmpty()) dialog.setWindowTitle(request.Title);
  dialog.setDefaultSuffix(request.Ending);
  dialog.setDirectory(StartFolder(request));
  if (!open) SuggestName(dialog, request);
  if (open && !LastProjectPasses(request))
    dialog.selectNameFilter(dialog.nameFilters().constLast());
  if (dialog.exec() != QDialog::Accepted) return {};
  lastFolder = dialog.directory().absolutePath();
  return QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
}

}  // namespace

std::function<MsgAnswer(const Message&)> MsgBoxSeam = ShowMessage;
std::function<int(const QString&, const QStringList&)> AskSeam = ShowQuestion;
std::function<std::optional<QString>(const QString&, const QString&)> AskTextSeam =
    ShowTextQuestion;
std::function<QString(const FileRequest&)> FileDialogSeam = ChooseFile;
std::function<void(const QString&)> OpenUrlSeam = [](const QString& address) {
  QDesktopServices::openUrl(QUrl::fromUserInput(address));
};

MsgAnswer MsgBox(const QString& text, MsgIcon icon, const QString& title, MsgButtons buttons,
                 const QString& detail) {
  if (ProgramEnding()) return buttons == MsgButtons::Ok ? MsgAnswer::Ok : MsgAnswer::No;
  return MsgBoxSeam({text, icon, title, buttons, detail});
}

int Ask(const QString& text, const QStringList& answers) {
  return ProgramEnding() ? static_cast<int>(answers.size()) - 1 : AskSeam(text, answers);
}

std::optional<QString> AskText(const QString& text, const QString& about) {
  return AskTextSeam(text, about);
}

void SetGuidePage(QWidget& part, const char* page) {
  part.setProperty(guidePage, page);
}

QString GuidePageAround(const QWidget* control) {
  for (; control; control = control->parentWidget()) {
    const QString page = control->property(guidePage).toString();
    if (!page.isEmpty()) return page;
  }
  return {};
}

QString FileDialog(const FileRequest& request) {
  return FileDialogSeam(request);
}

void OpenUrl(const QString& address) {
  OpenUrlSeam(address);
}
