#pragma once

namespace simulator {

/// SIGINT, SIGTERM and SIGHUP end the event loop, so that the memory is saved and the link removed.
/// Needs the application. Throws std::system_error.
void QuitOnSignals();

}  // namespace simulator
