#pragma once

#include <vector>

#include "panel/setting.h"

/// What both sides of a merge changed, each in its own way.
struct MergeConflict {
  QString Area;
  Item Where;
  QString Field;
  QString Base;
  QString Ours;
  QString Theirs;
};

struct MergedProject {
  Project Content;
  std::vector<MergeConflict> Conflicts;
};

/// Merges what was changed in two projects that both began as `base`: what one side changed is
/// taken, and where both changed the same thing differently ours stays. What a user takes for one
/// thing is never mixed.
MergedProject MergeProjects(const Project& base, const Project& ours, const Project& theirs);
