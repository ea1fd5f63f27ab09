#pragma once

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

/// The processor time of this thread in microseconds.
inline double ProcessorMicroseconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

/// The least processor time of one call in microseconds; a busy machine only ever makes a run
/// slower.
template <typename Work>
double BestMicroseconds(Work work, int runs = 300) {
  double best = 1e12;
  for (int run = 0; run < runs; ++run) {
    const double start = ProcessorMicroseconds();
    work();
    best = std::min(best, ProcessorMicroseconds() - start);
  }
  return best;
}

/// The middle one of several times, for work whose speed depends on how the system places several
/// threads or processes: the best run would be a lucky one.
inline double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// The processor time in microseconds of a bare loop that takes about a millisecond on a machine of
/// today: what a limit in milliseconds is counted in, so that a slower machine is no fault.
inline double BareMillisecond() {
  constexpr int steps = 700'000;
  static const double measured = BestMicroseconds(
      [] {
        unsigned long long state = 1;
        for (int i = 0; i < steps; ++i) {
          state = state * 6364136223846793005ULL + 1442695040888963407ULL;
          asm volatile("" : "+r"(state));
        }
      },
      50);
  return measured;
}

/// Keeps the compiler from dropping work whose result nobody reads.
inline void Keep(const void* data) {
  asm volatile("" : : "r"(data) : "memory");
}

/// Prints one line a comparison and remembers whether a limit was missed.
class RatioReport {
 public:
  /// `measured` against `base`, both in `unit`; must stay within `limit` times.
  void Line(const char* topic, double measured, const char* baseName, double base, double limit,
            const char* unit = "us") {
    const double ratio = base > 0 ? measured / base : (measured > 0 ? 1e9 : 0);
    const bool within = ratio <= limit;
    std::printf("%-28s %10.1f %-3s  %-22s %10.1f %-3s  ratio %6.2f (limit %g)  %s\n", topic,
                measured, unit, baseName, base, unit, ratio, limit, within ? "ok" : "MISSED");
    missed_ = missed_ || !within;
  }

  /// `milliseconds` of processor time must stay within `limit` bare milliseconds.
  void Within(const char* topic, double milliseconds, double limit) {
    Line(topic, milliseconds, "bare milliseconds", limit * BareMillisecond() / 1000, 1, "ms");
  }

  /// A time without a limit.
  void Tell(const char* topic, double milliseconds) {
    std::printf("%-28s %10.1f ms   without a limit\n", topic, milliseconds);
  }

  /// For main to return.
  int ExitCode() const { return missed_ ? 1 : 0; }

 private:
  bool missed_ = false;
};
