#pragma once

#include "panel/recovery_copy.h"

// The live project beside what was saved, opened or new.

/// Of work that was taken up the file is asked, if there is one. Throws RunTimeFailure when it
/// cannot be read.
std::unique_ptr<Project> SavedProject(const RecoveryCopy& recovery);

/// Whether a setting differs from the project as it was saved, for all that is known.
bool AnythingChanged(const RecoveryCopy& recovery);

/// What has changed since the last save, as far as a tooltip has room. Throws as SavedProject.
QString WhatHasChanged(const RecoveryCopy& recovery);
