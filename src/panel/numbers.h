#pragma once

#include <cstdint>
#include <stdexcept>

using Int16 = std::int16_t;
using Int32 = std::int32_t;

/// A failure that ends a handler, not the program; the event loop shows it as one message.
class RunTimeFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
