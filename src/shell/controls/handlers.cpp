#include "shell/controls/handlers.h"

#include <exception>
#include <utility>

#include "panel/program_texts.h"
#include "shell/controls/dialogs.h"

namespace {

int handlerDepth = 0;
bool handled = false;  ///< By a handler within the outermost.

}  // namespace

std::function<void(bool handled)> HandlersDoneSeam;

void RunHandler(const std::function<void()>& handler) {
  if (!handler) return;
  handled = true;
  RunEvent(handler);
}

void RunEvent(const std::function<void()>& deliver) {
  ++handlerDepth;
  QString failure;
  try {
    deliver();
  } catch (const std::exception& error) {
    failure = QString::fromUtf8(error.what());
  }
  --handlerDepth;
  if (!failure.isEmpty()) MsgBox(failure, MsgIcon::Critical, ProgramTitle);
  if (handlerDepth == 0 && HandlersDoneSeam) HandlersDoneSeam(std::exchange(handled, false));
}

int HandlerDepth() {
  return handlerDepth;
}
