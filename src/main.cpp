#include "shell/application.h"
#include "shell/main_window.h"

int main(int argc, char** argv) {
  Application application(argc, argv);
  frmT3MasterMDI window;
  window.MDIForm_Load();
  return Application::exec();
}
