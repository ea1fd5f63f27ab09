#pragma once

#include <array>

#include "panel/numbers.h"

[[noreturn]] void SubscriptOutOfRange(int first, int second);

/// A flat table of fixed size, addressed as people talk about it: Table(source, target).
/// The first index runs fastest, so all sources of one target are adjacent. One-dimensional
/// arrays leave `Second` at 1. An index outside the table throws RunTimeFailure.
template <typename T, int First, int Second = 1>
class FixedArray {
 public:
  T& operator()(int first, int second = 0) { return elements[Flat(first, second)]; }
  const T& operator()(int first, int second = 0) const { return elements[Flat(first, second)]; }

  bool operator==(const FixedArray&) const = default;

  static constexpr int Size = First * Second;
  static constexpr bool IsTable = Second > 1;
  std::array<T, static_cast<std::size_t>(Size)> elements{};

 private:
  static std::size_t Flat(int first, int second) {
    if (first < 0 || first >= First || second < 0 || second >= Second) {
      SubscriptOutOfRange(first, second);
    }
    const int flat = second * First + first;
    return static_cast<std::size_t>(flat);
  }
};
