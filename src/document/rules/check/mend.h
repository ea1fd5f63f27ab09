#pragma once

#include <functional>
#include <optional>

#include "document/rules/check/check.h"

/// What puts a finding right, where there is one right answer.
struct Mending {
  QString Words;  ///< What it will do: "Cuts the name to "FOYER LEFT"."
  std::function<void(Project& project)> Apply;
};

/// None for a finding that needs a decision.
std::optional<Mending> MendingOf(const Project& project, const Finding& finding);
