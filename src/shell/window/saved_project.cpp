#include "shell/window/saved_project.h"

#include <QFileInfo>
#include <QStringList>

#include "panel/defaults.h"
#include "panel/difference.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/project_file.h"

std::unique_ptr<Project> SavedProject(const RecoveryCopy& recovery) {
  if (auto saved = recovery.Saved()) return saved;
  auto saved = std::make_unique<Project>(NewProject());
  if (CurrentFileName != NoFileName && QFileInfo::exists(CurrentFileName)) {
    *saved = ReadProject(CurrentFileName, *saved).Content;
  }
  return saved;
}

bool AnythingChanged(const RecoveryCopy& recovery) {
  if (FileNotInMemory) return true;
  const auto saved = recovery.Saved();
  return !saved || !DifferentSettings(LiveProject, *saved, true).empty();
}

QString WhatHasChanged(const RecoveryCopy& recovery) {
  constexpr std::size_t most = 12;
  const auto changes = CompareProjects(LiveProject, *SavedProject(recovery), true);
  QStringList lines;
  for (std::size_t i = 0; i < std::min(changes.size(), most); ++i) {
    lines << QStringLiteral("%1 %2: %3, was %4")
                 .arg(ItemCode(changes[i].Where), changes[i].Field, changes[i].This.trimmed(),
                      changes[i].Other.trimmed());
  }
  if (changes.empty()) lines << QStringLiteral("No setting differs for a user, only its bytes do.");
  if (changes.size() > most) lines << QStringLiteral("and %1 more").arg(changes.size() - most);
  return lines.join(u'\n');
}
