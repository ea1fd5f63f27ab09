#pragma once

#include <QTemporaryDir>
#include <memory>

#include "screen_table.h"
#include "shell/window/application.h"
#include "shell/window/main_window.h"

/// The program with a data folder of its own; its questions are answered with `answer`.
class BenchProgram {
 public:
  BenchProgram(int& argc, char** argv, MsgAnswer answer)
      : home_(OwnHome()), application_(argc, argv) {
    MsgBoxSeam = [answer](const Message&) { return answer; };
    Window.MDIForm_Load();
  }

 private:
  static std::unique_ptr<QTemporaryDir> OwnHome() {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    auto home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", home->path().toLocal8Bit());
    return home;
  }

  std::unique_ptr<QTemporaryDir> home_;
  Application application_;

 public:
  frmT3MasterMDI Window{AllScreens()};
};
