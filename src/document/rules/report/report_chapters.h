#pragma once

#include "document/rules/report/report.h"
#include "document/rules/report/report_uses.h"

// The report's chapters, each from what it is about. One without rows is left out.

ReportChapter PanelChapter(const Project& project);
ReportChapter RelayChapter(const Project& project, const ReportUses& uses);
ReportChapter GroupChapter(const Project& project, const ReportUses& uses);
ReportChapter InputChapter(const Project& project, const ReportUses& uses);
ReportChapter DeviceChapter(const Project& project, const ReportUses& uses);
ReportChapter TimerChapter(const Project& project, const ReportUses& uses);
ReportChapter PresetChapter(const Project& project, const ReportUses& uses);
ReportChapter SweepChapter(const Project& project, const ReportUses& uses);
ReportChapter OpenCloseChapter(const Project& project);
/// When timers fire, and when relays are on by them.
ReportChapter YearChapter(const Project& project, const ReportUses& uses, int year);
ReportChapter DimmerChapter(const Project& project, const ReportUses& uses);

/// What the check finds and nobody has accepted.
ReportChapter CheckChapter(const std::vector<Finding>& open);
ReportChapter AcceptedChapter(const std::vector<AcceptedFinding>& accepted);

/// For the inside of the panel's door: voltage and circuit are for the reader's pen.
ReportChapter DoorChapter(const Project& project);
/// A row for each relay, and for each input, station and dimmer output in use, to be tested.
ReportChapter CommissioningChapter(const Project& project, const ReportUses& uses,
                                   std::span<const TestedItem> tested);

/// The word of a code, as a screen shows it.
QString WordText(WordTable table, int code);
