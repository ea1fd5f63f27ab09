#include "shell/window/findings_count.h"

FindingsCount::FindingsCount(std::function<QString()> count, const std::function<void()>& list) {
  setObjectName(QStringLiteral("lblFindings"));
  setAccessibleName(QStringLiteral("Findings of the check"));
  SetLook(Look::WebLink);
  setToolTip(QStringLiteral("What the check finds in this project. A press lists it."));
  SetWidthInChars(26);
  Click = list;
  constexpr int secondMs = 1000;
  auto* tmrFindings = new Timer(this, "tmrFindings", secondMs);
  tmrFindings->Tick = [this, count = std::move(count)] { SetCaption(count()); };
  tmrFindings->SetEnabled(true);
}
