#pragma once

#include <sys/resource.h>

#include <csignal>

/// Sets one of the process's limits for as long as it lives; a file that is too large is a failure
/// of the write, not the end.
class Limited {
 public:
  Limited(decltype(RLIMIT_FSIZE) what, rlim_t most) : What(what) {
    getrlimit(What, &Usual);
    const rlimit small{most, Usual.rlim_max};
    setrlimit(What, &small);
  }
  ~Limited() {
    setrlimit(What, &Usual);
    std::signal(SIGXFSZ, Signal);
  }
  Limited(const Limited&) = delete;
  Limited& operator=(const Limited&) = delete;

 private:
  decltype(RLIMIT_FSIZE) What;
  rlimit Usual{};
  void (*Signal)(int) = std::signal(SIGXFSZ, SIG_IGN);
};
