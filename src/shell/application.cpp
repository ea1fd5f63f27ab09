#include "shell/application.h"

#include <QStyleFactory>
#include <exception>

#include "panel/dimmer_block.h"
#include "panel/program_state.h"
#include "shell/dialogs.h"

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  setApplicationName(ProgramTitle);
  setDesktopFileName(QStringLiteral("tamberloom3"));
  DimmerAddressAlert = [](Int32 addr) {
    MsgBox(QString::number(addr), MsgIcon::None, ProgramTitle);
  };
}

bool Application::notify(QObject* receiver, QEvent* event) {
  bool result = true;
  RunHandler([&] { result = QApplication::notify(receiver, event); });
  return result;
}
