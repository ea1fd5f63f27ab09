#include <cstdlib>

#include "panel/project_codec.h"

namespace {

/// A project with empty names.
constexpr std::size_t ShortestFile = 174'522;

}  // namespace

/// A file that is whole must come back to the byte; any other must do no harm. The document is not
/// reset in between: what an earlier input left in it counts only where this one ends early.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Project document;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    (void)DecodeProject(bytes, document);
  } catch (const RunTimeFailure&) {
    return 0;
  }
  if (size < ShortestFile) return 0;
  const std::string encoded = EncodeProject(document);
  if (encoded.size() <= size && bytes.substr(0, encoded.size()) != encoded) std::abort();
  return 0;
}
