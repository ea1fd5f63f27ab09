#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <system_error>

#include "simulator/program/command_line.h"
#include "simulator/program/console.h"
#include "simulator/program/end_signals.h"

namespace {

/// Feeds standard input to the console line by line; its end leaves the program running.
void ReadCommands(simulator::Console& console) {
  auto* notifier =
      new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, QCoreApplication::instance());
  QObject::connect(
      notifier, &QSocketNotifier::activated, notifier,
      [notifier, &console, pending = QByteArray()]() mutable {
        constexpr qsizetype longestLine = 4096;
        std::array<char, 1024> bytes{};
        const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count <= 0) {
          notifier->setEnabled(false);
          return;
        }
        pending.append(bytes.data(), count);
        for (auto end = pending.indexOf('\n'); end >= 0; end = pending.indexOf('\n')) {
          std::fputs(console.Execute(QString::fromLocal8Bit(pending.left(end))).c_str(), stdout);
          pending.remove(0, end + 1);
        }
        std::fflush(stdout);
        if (pending.size() > longestLine) pending.clear();
      });
}

/// What the options, the settings or the files of a rehearsal have wrong ends with a status that a
/// script can tell.
constexpr int WrongInput = 2;

int Failed(const std::exception& failure, int status) {
  std::fprintf(stderr, "tamberloom3-panel: %s\n", failure.what());
  return status;
}

int Rehearse(const simulator::CommandLine& line) {
  for (const std::string& note : line.Notes) {
    std::fprintf(stderr, "tamberloom3-panel: %s\n", note.c_str());
  }
  try {
    const QString& file = line.Wanted.MemoryFile;
    if (!file.isEmpty() && !QFile::exists(file)) {
      throw std::invalid_argument("The memory file " + file.toStdString() + " is not there");
    }
    simulator::Rehearse(
        simulator::StartMemory(line.Wanted), *line.Rehearsal, [](std::string_view text) {
          const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
          if (written && std::fflush(stdout) == 0) return;
          throw std::system_error(errno, std::generic_category(), "The output cannot be written");
        });
    return 0;
  } catch (const std::exception& failure) {
    return Failed(failure, WrongInput);
  }
}

/// Becomes the program with the window, which gets the same words.
[[noreturn]] void BecomeWindow(char** argv) {
  const QByteArray path =
      QFile::encodeName(QCoreApplication::applicationDirPath() + "/../" TAMBERLOOM_WINDOW_DIR
                                                                 "/tamberloom3-panel-window");
  execv(path.constData(), argv);
  throw std::runtime_error(std::string("the window cannot be started: ") + std::strerror(errno) +
                           ". Install the program again.");
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  try {
    const simulator::CommandLine line = simulator::ParseCommandLine(QCoreApplication::arguments());
    if (line.Say) {
      std::fputs(line.Say->c_str(), stdout);
      return 0;
    }
    if (line.Window) BecomeWindow(argv);
    if (line.Rehearsal) return Rehearse(line);
    simulator::QuitOnSignals();
    simulator::Simulator panel(line.Wanted);
    if (panel.TcpPort() != 0) {
      std::printf("TCP: %s port %d\n", qPrintable(line.Wanted.Host), panel.TcpPort());
    }
    if (line.Wanted.Pty) {
      const QString& link = line.Wanted.Pty->Link;
      std::printf("Serial: %s%s%s\n", qPrintable(panel.PtyPath()),
                  link.isEmpty() ? "" : " linked as ", qPrintable(link));
    }
    std::fflush(stdout);
    simulator::Console console(panel, [] { QCoreApplication::quit(); });
    ReadCommands(console);
    return QCoreApplication::exec();
  } catch (const std::invalid_argument& failure) {
    return Failed(failure, WrongInput);
  } catch (const std::exception& failure) {
    return Failed(failure, 1);
  }
}
