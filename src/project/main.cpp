#include <QCoreApplication>

#include "panel/program_state.h"
#include "project/commands.h"
#include "project/output.h"

namespace {

/// Standard error holds what the program says, and nothing of what it is made of.
void TellFatalOnly(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtFatalMsg) TellFailure(qUtf8Printable(message));
}

/// The application ends with it: a report makes one of its own that knows fonts.
CommandLine ReadCommandLine(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("tamberloom3-project"));
  return ParseCommandLine(QCoreApplication::arguments());
}

int Run(const CommandLine& line) {
  if (line.Say.isEmpty()) return RunCommand(line);
  Print(line.Say.toUtf8());
  return StatusGood;
}

}  // namespace

int main(int argc, char** argv) {
  qInstallMessageHandler(TellFatalOnly);
  UseAccountHome();
  return StatusOf([&] {
    const int status = Run(ReadCommandLine(argc, argv));
    FlushOutput();
    return status;
  });
}
