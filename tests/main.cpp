#include <gtest/gtest.h>

#include "shell/window/application.h"

/// What the sanitizer takes for no leak: one-time allocations of the font library behind Qt.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n";
}

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static QtMessageHandler next = nullptr;
  next = qInstallMessageHandler(
      [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (!text.contains(QLatin1String("propagateSizeHints"))) next(type, context, text);
      });
  testing::InitGoogleTest(&argc, argv);
  Application application(argc, argv);
  return RUN_ALL_TESTS();
}
