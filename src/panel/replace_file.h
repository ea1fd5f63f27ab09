#pragma once

#include <QString>
#include <string_view>

/// Puts a file of these bytes at `path`, through links, with the rights of the file that is there.
/// At any instant the disk holds the old file or the new one; what a killed save has left beside it
/// is removed. Gives the reason of a failure, which leaves the old file untouched; empty when all
/// went well.
QString ReplaceFile(const QString& path, std::string_view bytes);
