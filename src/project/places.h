#pragma once

#include <QString>

#include "panel/panel_image.h"
#include "panel/project_file.h"

// Where a project stands, as scripts write it: a file, a panel's address, "image:FILE" for a
// panel's memory, "-" for standard input and, of what is written, standard output.

/// Whether a project there is as a panel keeps it.
bool IsPanelMemory(const QString& place);

/// The project of a place; what is missing in a file is as in a new panel. A panel's memory becomes
/// one as an upload makes it, names and all. Throws RunTimeFailure.
ProjectRead LoadProject(const QString& place);

/// The like of what a panel is to hold: a project that ends early, or is empty, is refused.
Project LoadWhole(const QString& place);

/// The memory of 40,960 bytes that a file, or "-", holds. Throws RunTimeFailure.
PanelImageType LoadMemory(const QString& file);

/// Puts bytes at a place, whole or not at all. Throws RunTimeFailure.
void StoreBytes(const QString& place, const std::string& bytes);
void StoreProject(const QString& place, const Project& project);

/// Throws RunTimeFailure where what is to be written would take the place of `other`, or is no
/// file.
void RefuseOutput(const QString& output, const QString& other);
