#pragma once

#include <functional>

/// Runs an event handler. A run-time failure in it is shown as one message and ends the handler,
/// not the program.
void RunHandler(const std::function<void()>& handler);

/// The like for an event that is delivered, which runs handlers or none.
void RunEvent(const std::function<void()>& deliver);

/// How many handlers are running inside each other. Above zero, a screen may be in use by a handler
/// that waits further down the stack.
int HandlerDepth();

/// Called when the outermost handler or event has ended, with whether there was a handler.
extern std::function<void(bool handled)> HandlersDoneSeam;
