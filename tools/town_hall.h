#pragma once

/// Puts a small building that uses something of everything in memory: the project of the guide's
/// pictures.
void OpenTownHall();
