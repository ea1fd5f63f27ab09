#pragma once

#include "project/command_line.h"
#include "project/output.h"

// The commands that talk to a panel. Each throws RunTimeFailure, which names panel and cause.

extern const QStringList ClockColumns;
extern const QStringList StatusColumns;
extern const QStringList WatchColumns;

/// The panel's time beside this computer's; with --set after setting it.
ExitStatus ShowClock(const CommandLine& line, const QStringList& places);

/// A row for each item.
ExitStatus ShowStatus(const CommandLine& line, const QStringList& places);

/// A row for each change, until interrupted.
ExitStatus WatchPanel(const CommandLine& line, const QStringList& places);

/// Switches a relay or a group, or what the lines of standard input say.
ExitStatus SwitchItems(const CommandLine& line, const QStringList& places);

/// The panel's memory as a project.
ExitStatus ReadPanel(const CommandLine& line, const QStringList& places);

/// A project, or what has changed of it, into the panel.
ExitStatus SendToPanel(const CommandLine& line, const QStringList& places);
