#pragma once

#include <vector>

#include "document/rules/item_names.h"
#include "link/rules/panel_image.h"
#include "panel/project_document.h"

/// One setting that differs.
struct Difference {
  QString Area;  ///< "Relays", "Bus devices".
  Item Where;
  QString Field;
  QString This;
  QString Other;

  bool operator==(const Difference&) const = default;
};

/// The settings in which two projects differ, in the order of the file; names only when asked.
/// Spare elements, which mean nothing, are left out.
std::vector<Difference> CompareProjects(const ProjectDocument& one, const ProjectDocument& other,
                                        bool names);

/// The project as an upload reads it after a download: names cut and filled to ten characters,
/// flags -1, and whatever else a transfer changes lawfully. Throws RunTimeFailure for a project
/// that cannot be downloaded.
ProjectDocument AsPanelKeeps(const ProjectDocument& project);

/// The project as an upload of that memory, names too, makes it of this one.
ProjectDocument UploadedOver(const ProjectDocument& project, const PanelImageType& memory);

/// The project in memory.
ProjectDocument ThisProject();
