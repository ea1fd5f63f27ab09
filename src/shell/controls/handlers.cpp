#include "shell/controls/handlers.h"

#include <exception>

#include "panel/program_texts.h"
#include "shell/controls/dialogs.h"

namespace {

int handlerDepth = 0;

}  // namespace

std::function<void()> HandlersDoneSeam;

void RunHandler(const std::function<void()>& handler) {
  if (!handler) return;
  ++handlerDepth;
  QString failure;
  try {
    handler();
  } catch (const std::exception& error) {
    failure = QString::fromUtf8(error.what());
  }
  --handlerDepth;
  if (!failure.isEmpty()) MsgBox(failure, MsgIcon::Critical, ProgramTitle);
  if (handlerDepth == 0 && HandlersDoneSeam) HandlersDoneSeam();
}

int HandlerDepth() {
  return handlerDepth;
}
