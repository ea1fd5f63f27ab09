#include "shell/dialogs.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>
#include <exception>

#include "panel/program_state.h"
#include "shell/shell.h"

namespace {

int handlerDepth = 0;

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

/// From one dialog to the next no window has the focus yet.
QWidget* FrontWindow() {
  QWidget* active = QApplication::activeWindow();
  return active ? active : MainWindow();
}

MsgAnswer ShowMessage(const Message& message) {
  QMessageBox box(BoxIcon(message.Icon), message.Title, message.Text, QMessageBox::NoButton,
                  FrontWindow());
  box.setTextFormat(Qt::PlainText);
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

QString ChooseFile(const FileRequest& request) {
  QFileDialog dialog(FrontWindow());
  dialog.setNameFilters(NameFilters(request.Filter));
  const bool open = request.Mode == FileRequest::Kind::Open;
  dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  const QString current = CurrentFileName == NoFileName ? DataPath({}) : CurrentFileName;
  const QString folder =
      QFileInfo(request.FileName.isEmpty() ? current : request.FileName).absolutePath();
  dialog.setDirectory(QDir(folder).exists() ? folder : QDir::homePath());
  if (dialog.exec() != QDialog::Accepted) return {};
  return QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
}

}  // namespace

std::function<MsgAnswer(const Message&)> MsgBoxSeam = ShowMessage;
std::function<QString(const FileRequest&)> FileDialogSeam = ChooseFile;
std::function<void()> HandlersDoneSeam;
std::function<void(const QString&)> OpenUrlSeam = [](const QString& address) {
  QDesktopServices::openUrl(QUrl::fromUserInput(address));
};

MsgAnswer MsgBox(const QString& text, MsgIcon icon, const QString& title, MsgButtons buttons) {
  if (ProgramEnding()) return buttons == MsgButtons::Ok ? MsgAnswer::Ok : MsgAnswer::No;
  return MsgBoxSeam({text, icon, title, buttons});
}

QString FileDialog(const FileRequest& request) {
  return FileDialogSeam(request);
}

void OpenUrl(const QString& address) {
  OpenUrlSeam(address);
}

void RunHandler(const std::function<void()>& handler) {
  if (!handler) return;
  ++handlerDepth;
  QString failure;
  try {
    handler();
  } catch (const std::exception& error) {
    failure = QString::fromUtf8(error.what());
  }
  --handlerDepth;
  if (!failure.isEmpty()) MsgBox(failure, MsgIcon::Critical, ProgramTitle);
  if (handlerDepth == 0 && HandlersDoneSeam) HandlersDoneSeam();
}

int HandlerDepth() {
  return handlerDepth;
}
