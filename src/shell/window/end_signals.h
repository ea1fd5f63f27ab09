#pragma once

#include <functional>

/// Has `end` run, on the event loop, when the program is told to end from outside: by SIGTERM,
/// SIGHUP or SIGINT, or because the desktop's session ends.
void OnEndFromOutside(const std::function<void()>& end);
