#pragma once

#include "document/rules/doc_text.h"

// The sections of the text document, each from its title to its last row, written from the live
// document. A damaged document whose numbers overflow makes them throw RunTimeFailure.

void DocPanelSettings(DocumentText& text);
void DocRelaySchedule(DocumentText& text);
void DocGroupSchedule(DocumentText& text);
void DocLocalInputSchedule(DocumentText& text);
void DocFennlinkInputSchedule(DocumentText& text);
void DocLocalInputPilotSchedule(DocumentText& text);
void DocFennlinkPilotSchedule(DocumentText& text);
void DocTimerSchedule(DocumentText& text);
void DocPresetSchedule(DocumentText& text);
void DocOffHoursSweepsSchedule(DocumentText& text);
void DocOpenCloseTimesSchedule(DocumentText& text);
void DocDimmers(DocumentText& text);
void DocDMXSchedule(DocumentText& text);
