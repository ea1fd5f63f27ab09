#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

/// The best time of one call in microseconds; a busy machine only ever makes a run slower.
template <typename Work>
double BestMicroseconds(Work work, int runs = 300) {
  double best = 1e12;
  for (int run = 0; run < runs; ++run) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::micro> spent =
        std::chrono::steady_clock::now() - start;
    best = std::min(best, spent.count());
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

  /// For main to return.
  int ExitCode() const { return missed_ ? 1 : 0; }

 private:
  bool missed_ = false;
};
