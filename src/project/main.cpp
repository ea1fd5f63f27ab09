#include <QCoreApplication>
#include <cstdio>
#include <stdexcept>

#include "project/commands.h"

namespace {

/// The application ends with it: a report makes one of its own that knows fonts.
CommandLine ReadCommandLine(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("tamberloom3-project"));
  return ParseCommandLine(QCoreApplication::arguments());
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const CommandLine line = ReadCommandLine(argc, argv);
    if (line.Say.isEmpty()) return RunCommand(line);
    std::fputs(line.Say.toUtf8().constData(), stdout);
    return StatusGood;
  } catch (const std::invalid_argument& wrong) {
    std::fprintf(stderr, "tamberloom3-project: %s\n", wrong.what());
    return StatusFailed;
  }
}
