#pragma once

// Configurations whose documents stand in tests/document/golden. Each changes a new panel.

/// A small office: eight points, one button station, a photocell, an outside light on the sun.
void LoadOffice();

/// Every code that the schedules have a word for, and the neighbours that have none.
void LoadEveryCode();
