#pragma once

#include <QString>
#include <string_view>

#include "panel/fixed_array.h"

/// How a file gets its new content.
enum class Saving {
  Aside,    ///< Written beside it and renamed over it: the disk holds the old file or the new one.
  InPlace,  ///< Written over the old content. A disk that fails meanwhile leaves neither.
};

enum class Readers {
  AsBefore,    ///< Those of the file that is replaced, or of any new file.
  OwnerAlone,  ///< What is private, such as a copy of unsaved work.
};

/// The file itself may be written, but no new one beside it, so that only InPlace is left.
class FolderRefuses : public RunTimeFailure {
 public:
  using RunTimeFailure::RunTimeFailure;
};

/// Puts a file of these bytes at `path`, through links, and removes what killed saves have left
/// beside it. Throws RunTimeFailure or FolderRefuses, which name the file and the reason, with the
/// old file untouched where it was written aside.
void ReplaceFile(const QString& path, std::string_view bytes, Saving saving = Saving::Aside,
                 Readers readers = Readers::AsBefore);
