#include "project/output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>

#include "panel/fixed_array.h"

namespace {

[[noreturn]] void FailToPrint() {
  throw RunTimeFailure(std::string("standard output: ") + std::strerror(errno));
}

}  // namespace

void Print(const QByteArray& bytes) {
  const auto size = static_cast<std::size_t>(bytes.size());
  if (std::fwrite(bytes.constData(), 1, size, stdout) != size) FailToPrint();
}

void FlushOutput() {
  if (std::fflush(stdout) != 0) FailToPrint();
}

int TellFailure(const char* reason) {
  std::fprintf(stderr, "tamberloom3-project: %s\n", reason);
  return StatusFailed;
}

int StatusOf(const std::function<int()>& work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return TellFailure("there is not enough memory");
  } catch (const std::exception& failure) {
    return TellFailure(failure.what());
  }
}
