#pragma once

#include <QString>

#include "panel/panel_image.h"
#include "panel/project_file.h"

// Where a project stands, as scripts write it: a file, a panel's address, "image:FILE" for a
// panel's memory, "-" for standard input and, of what is written, standard output.

inline const QString StandardPlace = QStringLiteral("-");
constexpr const char* StandardInputOnce = "standard input, -, can stand for one thing alone";

/// Whether a project there is as a panel keeps it.
bool IsPanelMemory(const QString& place);

/// The project of a place; what is missing in a file is as in a new panel. A panel's memory becomes
/// one as an upload makes it, names and all. Throws RunTimeFailure.
ProjectRead LoadProject(const QString& place);

/// The project alone. One that ends early, or is empty, is told of on standard error.
Project LoadContent(const QString& place);

/// The like of what a panel is to hold: a project that ends early, or is empty, is refused.
Project LoadWhole(const QString& place);

/// The like of a side of a merge: of a panel's memory, another project with what the panel has
/// otherwise, as it does not keep all of a project.
Project LoadSide(const QString& place, const Project& other);

/// A project file as it stands.
struct ProjectFile {
  Project Content;
  std::string Tail;  ///< What an older, longer project has left behind it.
};

/// Throws RunTimeFailure for standard input and for a panel or its memory.
void RefuseAllButFile(const QString& place);

/// The like of a file that is to be changed: nothing but a file, and a whole one.
ProjectFile LoadProjectFile(const QString& file);
void StoreProjectFile(const QString& file, const Project& project, const std::string& tail);

/// All that a file or standard input holds, up to `most` bytes. Throws RunTimeFailure.
std::string LoadBytes(const QString& file, qint64 most);

/// The memory of a panel, or that of 40,960 bytes that a file, "image:FILE" or "-" holds. Throws
/// RunTimeFailure.
PanelImageType LoadMemory(const QString& place);

/// Puts bytes at a place, whole or not at all. Throws RunTimeFailure.
void StoreBytes(const QString& place, const std::string& bytes);
void StoreProject(const QString& place, const Project& project);

/// Throws RunTimeFailure where what is to be written would take the place of `other`, or is no
/// file.
void RefuseOutput(const QString& output, const QString& other);
