#pragma once

#include <QFile>
#include <QString>
#include <string_view>

namespace simulator {

/// For what holds the password.
constexpr QFileDevice::Permissions OwnersAlone = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Opens a device or a pipe for writing; one that nobody reads fails in place of waiting for its
/// reader. Throws std::runtime_error with the reason alone.
void OpenInPlace(QFile& file, const QString& path);

/// Writes a file whole or not at all; permissions of none are those of any new file. Throws
/// std::runtime_error, whose text begins with `what`, as in "The memory file".
void WriteFile(const QString& path, std::string_view content, std::string_view what,
               QFileDevice::Permissions permissions = {});

}  // namespace simulator
