#pragma once

#include "document/rules/text/doc_text.h"
#include "panel/project.h"

// The sections of the text document, each from its title to its last row, of a project. A
// damaged project whose numbers overflow makes them throw RunTimeFailure.

void DocPanelSettings(DocumentText& text, const Project& project);
void DocRelaySchedule(DocumentText& text, const Project& project);
void DocGroupSchedule(DocumentText& text, const Project& project);
void DocLocalInputSchedule(DocumentText& text, const Project& project);
void DocFennlinkInputSchedule(DocumentText& text, const Project& project);
void DocLocalInputPilotSchedule(DocumentText& text, const Project& project);
void DocFennlinkPilotSchedule(DocumentText& text, const Project& project);
void DocTimerSchedule(DocumentText& text, const Project& project);
void DocPresetSchedule(DocumentText& text, const Project& project);
void DocOffHoursSweepsSchedule(DocumentText& text, const Project& project);
void DocOpenCloseTimesSchedule(DocumentText& text, const Project& project);
void DocDimmers(DocumentText& text, const Project& project);
void DocDMXSchedule(DocumentText& text, const Project& project);
