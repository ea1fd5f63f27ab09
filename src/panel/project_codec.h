#pragma once

#include <string>
#include <string_view>

#include "panel/project.h"

/// The bytes of a project file. Throws RunTimeFailure for a name above 32,767 bytes, which the
/// format cannot hold.
std::string EncodeProject(const Project& project);

/// Lays the bytes of a project file over `project`. Bytes that end early leave the rest of it as it
/// was, and give false; bytes behind the end are not looked at. No value is checked. Throws
/// RunTimeFailure for a string of negative length; the project is then half overwritten.
[[nodiscard]] bool DecodeProject(std::string_view bytes, Project& project);
