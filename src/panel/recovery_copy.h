#pragma once

#include <QDateTime>
#include <QLockFile>
#include <QString>
#include <memory>
#include <string>
#include <vector>

// Unsaved work, kept aside for the case that the program ends without its own exit.

/// The recovery copy of this program: the project and the name of its file, in the data folder.
/// What counts is the content that a save would write, not whether it is marked as changed.
class RecoveryCopy {
 public:
  /// The project as it is now is saved, opened or new: nothing of it can be lost.
  void Settle();
  /// The project holds unsaved work, although it may equal what was there before.
  void Unsettle() { settled_.clear(); }
  /// Writes the copy when there is unsaved work that it does not hold, and removes it when there is
  /// none. A disk that does not take it is tried again.
  void Update();
  void Remove();
  bool HoldsWork() const { return !kept_.empty(); }

 private:
  std::string settled_;  ///< The project's bytes when nothing of it was unsaved.
  std::string kept_;     ///< What the copy holds, with the file's name.
  QString path_;
  std::unique_ptr<QLockFile> alive_;  ///< Held as long as this program lives.
};

/// Unsaved work of a program that has ended.
struct KeptWork {
  QString Path;         ///< Of the copy.
  QString ProjectName;  ///< CurrentFileName of the program that ended.
  QDateTime Time;
};

/// Newest first. Tidies away what else dead programs left there.
std::vector<KeptWork> FindKeptWork();

/// Puts the kept project in the place of the one in memory, as changed, with the name of its file.
/// Throws RunTimeFailure, with everything as it was, when it cannot be read.
void TakeUpKeptWork(const KeptWork& work);

void DeleteKeptWork(const KeptWork& work);
