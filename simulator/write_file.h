#pragma once

#include <QString>
#include <string_view>

namespace simulator {

/// Writes a file whole or not at all. Throws std::runtime_error, whose text begins with `what`, as
/// in "The memory file".
void WriteFile(const QString& path, std::string_view content, std::string_view what);

}  // namespace simulator
