#include "project/each_file.h"

#include <sys/wait.h>
#include <unistd.h>

#include <QThread>
#include <algorithm>
#include <array>
#include <cstdio>
#include <deque>

namespace {

/// A process that works on one file, and the end of a pipe that its output comes from.
struct Worker {
  pid_t Process;
  int Output;
};

constexpr int Failed = 2;

Worker Start(const QString& file, const std::function<int(const QString&)>& work) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return {-1, -1};
  std::fflush(nullptr);
  const pid_t process = fork();
  if (process != 0) {
    close(ends[1]);
    return {process, ends[0]};
  }
  dup2(ends[1], STDOUT_FILENO);
  close(ends[0]);
  close(ends[1]);
  const int status = work(file);
  std::fflush(nullptr);
  _exit(status);
}

int Finish(const Worker& worker) {
  if (worker.Process < 0) {
    std::fputs("tamberloom3-project: no more processes can be started\n", stderr);
    return Failed;
  }
  std::array<char, 65536> bytes;
  for (ssize_t count = 0; (count = read(worker.Output, bytes.data(), bytes.size())) > 0;) {
    std::fwrite(bytes.data(), 1, static_cast<std::size_t>(count), stdout);
  }
  close(worker.Output);
  int status = 0;
  waitpid(worker.Process, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : Failed;
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
