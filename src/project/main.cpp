#include <QCoreApplication>
#include <cstdio>
#include <stdexcept>

#include "project/commands.h"

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("tamberloom3-project"));
  try {
    const CommandLine line = ParseCommandLine(QCoreApplication::arguments());
    if (line.Say.isEmpty()) return RunCommand(line);
    std::fputs(line.Say.toUtf8().constData(), stdout);
    return StatusGood;
  } catch (const std::invalid_argument& wrong) {
    std::fprintf(stderr, "tamberloom3-project: %s\n", wrong.what());
    return StatusFailed;
  }
}
