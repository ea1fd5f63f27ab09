#include "project/each_file.h"

#include <sys/wait.h>
#include <unistd.h>

#include <QThread>
#include <algorithm>
#include <array>
#include <deque>

#include "project/output.h"

namespace {

/// A process that works on one file, and the end of a pipe that its output comes from.
struct Worker {
  QString File;
  pid_t Process;
  int Output;
};

Worker Start(const QString& file, const std::function<int(const QString&)>& work) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return {file, -1, -1};
  FlushOutput();
  const pid_t process = fork();
  if (process != 0) {
    close(ends[1]);
    return {file, process, ends[0]};
  }
  dup2(ends[1], STDOUT_FILENO);
  close(ends[0]);
  close(ends[1]);
  _exit(StatusOf([&] {
    const int status = work(file);
    FlushOutput();
    return status;
  }));
}

/// Passes the worker's output on and gives its status.
int Finish(const Worker& worker) {
  if (worker.Process < 0) return TellFailure("no more processes can be started");
  std::array<char, 65536> bytes;
  for (ssize_t count = 0; (count = read(worker.Output, bytes.data(), bytes.size())) > 0;) {
    Print(QByteArray::fromRawData(bytes.data(), count));
  }
  close(worker.Output);
  int status = 0;
  waitpid(worker.Process, &status, 0);
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  return TellFailure(qUtf8Printable(worker.File + ": its process was killed"));
}

}  // namespace

int ForEachFile(const QStringList& files, const std::function<int(const QString& file)>& work) {
  const auto atATime = static_cast<std::size_t>(std::max(QThread::idealThreadCount(), 1));
  std::deque<Worker> running;
  int highest = 0;
  for (const QString& file : files) {
    if (running.size() == atATime) {
      highest = std::max(highest, Finish(running.front()));
      running.pop_front();
    }
    running.push_back(Start(file, work));
  }
  for (const Worker& worker : running) highest = std::max(highest, Finish(worker));
  return highest;
}
