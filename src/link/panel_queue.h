#pragma once

#include <functional>

// A wait for the panel over TCP delivers events, so that a click or a tick can come while an
// earlier request is under way. What screens ask of the panel goes through here, one request at a
// time, in the order in which it was asked.

/// Runs `request` at once, or when those before it have ended.
void AskPanel(std::function<void()> request);

/// Whether a request is under way; a timer's tick passes over then.
bool PanelBusy();

/// Forgets the requests that have not begun; whether there were any. A screen that leaves calls
/// this.
bool ForgetRequests();
