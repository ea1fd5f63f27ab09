#include <QFileInfo>

#include "panel/defaults.h"
#include "panel/difference.h"
#include "panel/program_state.h"
#include "panel/project_file.h"
#include "shell/window/main_window.h"

// What stands beside the caption of the screen on show: what has just been done, and whether
// something is unsaved.

/// The mark of unsaved changes, or for some seconds what has just been done.
void frmT3MasterMDI::ShowMarks() {
  constexpr qint64 momentMs = 4000;
  const bool news = !news_.isEmpty() && (newsStays_ || newsShown_.ElapsedMs() < momentMs);
  if (!news) news_.clear();
  const auto& trouble = recovery_.Trouble();
  lblMark_->SetCaption(news      ? news_
                       : trouble ? QStringLiteral("No copy of unsaved work can be kept")
                       : recovery_.IsUnsaved(LiveProject) ? QStringLiteral("Unsaved changes")
                                                          : QString());
}

void frmT3MasterMDI::ShowMarkTip() {
  const auto& trouble = recovery_.Trouble();
  try {
    lblMark_->setToolTip(trouble ? QString::fromStdString(*trouble) : WhatHasChanged());
  } catch (const RunTimeFailure& failure) {
    lblMark_->setToolTip(QString::fromUtf8(failure.what()));
  }
}

void frmT3MasterMDI::TellNews(const QString& news, bool stays) {
  news_ = news;
  newsStays_ = stays;
  newsShown_.Restart();
  ShowMarks();
}

/// Of work that was taken up the file is asked, if there is one.
std::unique_ptr<Project> frmT3MasterMDI::SavedProject() const {
  if (auto saved = recovery_.Saved()) return saved;
  auto saved = std::make_unique<Project>(NewProject());
  if (CurrentFileName != NoFileName && QFileInfo::exists(CurrentFileName)) {
    *saved = ReadProject(CurrentFileName, *saved).Content;
  }
  return saved;
}

/// Whether a setting differs from the project as it was saved, for all that is known.
bool frmT3MasterMDI::AnythingChanged() const {
  if (FileNotInMemory) return true;
  const auto saved = recovery_.Saved();
  return !saved || !DifferentSettings(LiveProject, *saved, true).empty();
}

/// What has changed since the last save, as far as a tooltip has room.
QString frmT3MasterMDI::WhatHasChanged() const {
  constexpr std::size_t most = 12;
  const auto changes = CompareProjects(LiveProject, *SavedProject(), true);
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
