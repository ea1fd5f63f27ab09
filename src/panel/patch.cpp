#include "panel/patch.h"

#include <algorithm>

Patch::Patch(std::string_view before, std::string_view after) {
  const auto add = [&](std::size_t at, std::size_t lengthBefore, std::size_t lengthAfter) {
    hunks_.push_back({at, std::string(before.substr(at, lengthBefore)),
                      std::string(after.substr(at, lengthAfter))});
  };
  const std::size_t common = std::min(before.size(), after.size());
  const auto differs = [&](std::size_t from) {
    // Stretch by stretch, as most is equal.
    constexpr std::size_t stretch = 256;
    while (from + stretch <= common &&
           before.substr(from, stretch) == after.substr(from, stretch)) {
      from += stretch;
    }
    const auto at = std::mismatch(before.begin() + static_cast<std::ptrdiff_t>(from), before.end(),
                                  after.begin() + static_cast<std::ptrdiff_t>(from), after.end());
    return static_cast<std::size_t>(at.first - before.begin());
  };
  const std::size_t first = differs(0);
  if (before.size() != after.size()) {
    const auto same = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
    const std::size_t end =
        std::min(static_cast<std::size_t>(same.first - before.rbegin()), common - first);
    add(first, before.size() - first - end, after.size() - first - end);
    return;
  }
  // What is equal for less than this costs more told apart than taken along.
  constexpr std::size_t gap = 32;
  for (std::size_t at = first; at < before.size();) {
    std::size_t end = at + 1;
    std::size_t next = differs(end);
    while (next < before.size() && next - end < gap) {
      end = next + 1;
      next = differs(end);
    }
    add(at, end - at, end - at);
    at = next;
  }
  hunks_.shrink_to_fit();
}

std::string Patch::Before(std::string content) const {
  for (const Hunk& hunk : hunks_) content.replace(hunk.At, hunk.After.size(), hunk.Before);
  return content;
}

std::string Patch::After(std::string content) const {
  for (const Hunk& hunk : hunks_) content.replace(hunk.At, hunk.Before.size(), hunk.After);
  return content;
}

std::size_t Patch::Size() const {
  std::size_t size = sizeof(Patch) + hunks_.capacity() * sizeof(Hunk);
  for (const Hunk& hunk : hunks_) size += hunk.Before.capacity() + hunk.After.capacity();
  return size;
}
