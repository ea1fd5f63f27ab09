#include "link/panel_queue.h"

#include <deque>
#include <utility>

#include "panel/live_project.h"
#include "shell/controls/dialogs.h"
#include "shell/shell.h"

namespace {

std::deque<std::function<void()>> waiting;
bool busy = false;

}  // namespace

void AskPanel(std::function<void()> request) {
  waiting.push_back(std::move(request));
  if (busy) return;
  busy = true;
  while (!waiting.empty()) {
    const auto next = std::move(waiting.front());
    waiting.pop_front();
    // A serial wait delivers no events, and it may be long.
    if (ConnectionType() < ConnectionTCP) KeepUnsavedWork();
    // The handler that asks counts as one.
    RunEvent(next);
  }
  busy = false;
}

bool PanelBusy() {
  return busy;
}

bool ForgetRequests() {
  return !std::exchange(waiting, {}).empty();
}
