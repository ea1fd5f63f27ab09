#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What differs between two contents, by which one becomes the other.
class Patch {
 public:
  Patch() = default;
  Patch(std::string_view before, std::string_view after);

  bool Empty() const { return hunks_.empty(); }
  /// The content before, from that after.
  std::string Before(std::string content) const;
  /// The content after, from that before.
  std::string After(std::string content) const;
  /// Bytes of memory, roughly.
  std::size_t Size() const;

 private:
  /// Contents of one length differ in several places, others in one stretch.
  struct Hunk {
    std::size_t At;
    std::string Before;
    std::string After;
  };
  std::vector<Hunk> hunks_;
};
