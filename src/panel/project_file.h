#pragma once

/// Loads CurrentFileName into PanelRecord, FennlinkRecords and DimmerBlock, then calls
/// CheckLoadedData. Throws RunTimeFailure, which names the file and the reason, with the document
/// in memory untouched.
void ReadProjectFile();

/// Saves the document to CurrentFileName. At any instant the disk holds the old file or the new
/// one; where the old file was longer its tail stays behind the new end. Throws RunTimeFailure,
/// which names the file and the reason, with the file on disk untouched.
void WriteProjectFile();

/// Called at the end of a load and after an upload. Loaded values are taken as they are, so there
/// is nothing to do.
void CheckLoadedData();
