#include <QProcess>

#include "screen_test.h"

// The program itself, started where something is missing.

namespace {

struct Start {
  const char* Program;
  QStringList Arguments;
  const char* Told;
};

}  // namespace

TEST(ProgramTest, WithoutADisplayItEndsWithOneSentence) {
  const Start starts[]{
      {MAIN_PROGRAM, {}, "Orv Tamberloom 3 needs a display, and none can be reached.\n"},
      {PANEL_PROGRAM,
       {"--window"},
       "tamberloom3-panel --window needs a display, and none can be reached.\n"},
  };
  for (const Start& start : starts) {
    QProcess program;
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) environment.remove(name);
    environment.insert("DISPLAY", ":12345");
    environment.remove("HOME");
    program.setProcessEnvironment(environment);
    program.start(QString::fromLatin1(start.Program), start.Arguments);
    ASSERT_TRUE(program.waitForFinished(60'000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(program.readAllStandardError(), start.Told);
  }
}
