#include <cstdio>
#include <cstdlib>

#include "panel/program_state.h"
#include "screen_table.h"
#include "shell/window/application.h"
#include "shell/window/end_signals.h"
#include "shell/window/main_window.h"

namespace {

QtMessageHandler usualHandler = nullptr;

/// While the toolkit looks for a display: it would tell much and abort.
void TellNoDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) {
    std::fputs("Orv Tamberloom 3 needs a display, and none can be reached.\n", stderr);
    std::_Exit(1);
  }
  if (!QByteArray(context.category).startsWith("qt.qpa")) usualHandler(type, context, text);
}

}  // namespace

int main(int argc, char** argv) {
  UseAccountHome();
  usualHandler = qInstallMessageHandler(TellNoDisplay);
  Application application(argc, argv);
  qInstallMessageHandler(usualHandler);
  frmT3MasterMDI window(AllScreens());
  window.MDIForm_Load();
  OnEndFromOutside([&window] { window.EndKeepingWork(); });
  return Application::exec();
}
