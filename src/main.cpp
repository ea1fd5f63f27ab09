#include "screen_table.h"
#include "shell/application.h"
#include "shell/end_signals.h"
#include "shell/main_window.h"

int main(int argc, char** argv) {
  Application application(argc, argv);
  frmT3MasterMDI window(AllScreens());
  window.MDIForm_Load();
  OnEndFromOutside([&window] { window.EndKeepingWork(); });
  return Application::exec();
}
