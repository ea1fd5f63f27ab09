#pragma once

#include <QDateTime>
#include <QLockFile>
#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "panel/project.h"

// Unsaved work, kept aside for the case that the program ends without its own exit.

/// The recovery copy of this program: the project and the name of its file, in the data folder.
/// What counts is the content that a save would write, not whether it is marked as changed.
class RecoveryCopy {
 public:
  /// The project as it is now is saved, opened or new: nothing of it can be lost.
  void Settle(const Project& project);
  /// The project holds unsaved work, although it may equal what was there before.
  void Unsettle() { settled_.clear(); }
  /// Whether the project is not what was saved, opened or new.
  bool IsUnsaved(const Project& project) const;
  /// What was saved, opened or new; null while all that is known is that the project is not.
  std::unique_ptr<Project> Saved() const;
  /// Writes the copy when there is unsaved work that it does not hold, and removes it when there is
  /// none. A disk that does not take it is tried again.
  void Update(const Project& project);
  void Remove();
  /// What the copy holds stays behind as kept work, as of a program that has ended.
  void Leave();
  bool HoldsWork() const { return !kept_.empty(); }
  /// Why the last Update could not keep the unsaved work, if it could not.
  const std::optional<std::string>& Trouble() const { return trouble_; }

 private:
  void Keep(const std::string& content);

  std::string settled_;  ///< The project's bytes when nothing of it was unsaved.
  std::string kept_;     ///< What the copy holds, with the file's name.
  QString path_;
  std::optional<std::string> trouble_;
  std::unique_ptr<QLockFile> alive_;  ///< Held as long as this program lives.
};

/// Unsaved work of a program that has ended.
struct KeptWork {
  QString Path;         ///< Of the copy.
  QString ProjectName;  ///< CurrentFileName of the program that ended; empty in a damaged copy.
  QDateTime Time;
  bool Damaged = false;  ///< It can only be deleted.
};

/// Newest first. Tidies away what else dead programs left there.
std::vector<KeptWork> FindKeptWork();

/// Puts the kept project in the place of the live one, with the name of its file. Throws
/// RunTimeFailure, with everything as it was, when it cannot be read.
void TakeUpKeptWork(const KeptWork& work);

void DeleteKeptWork(const KeptWork& work);
