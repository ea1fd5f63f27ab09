#pragma once

/// Puts a small building that uses something of everything in memory: the project of the guide's
/// pictures.
void OpenTownHall();
/// The same with 40 relays, 12 groups, 37 inputs, 15 timers, 6 stations and a photocell.
void OpenTownHallWithAnnex();
