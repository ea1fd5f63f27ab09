#include <QProcess>

#include "screen_test.h"

// The program itself, started where something is missing.

TEST(ProgramTest, WithoutADisplayItEndsWithOneSentence) {
  QProcess program;
  auto environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) environment.remove(name);
  environment.insert("DISPLAY", ":12345");
  environment.remove("HOME");
  program.setProcessEnvironment(environment);
  program.start(QStringLiteral(MAIN_PROGRAM), QStringList());
  ASSERT_TRUE(program.waitForFinished(60'000));
  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program.exitCode(), 1);
  EXPECT_EQ(program.readAllStandardError(),
            "Orv Tamberloom 3 needs a display, and none can be reached.\n");
}
