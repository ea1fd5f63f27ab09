#pragma once

#include <QDateTime>
#include <array>
#include <string>
#include <string_view>

#include "document/rules/text/doc_sections.h"
#include "panel/program_state.h"

struct DocumentSection {
  std::string_view Caption;
  void (*Write)(DocumentText& text, const Project& project);
};

/// The sections in the order of the file and of the check boxes that choose them.
inline constexpr auto DocumentSections = std::to_array<DocumentSection>({
    {"Panel Settings", DocPanelSettings},
    {"Relay Schedule", DocRelaySchedule},
    {"Group Schedule", DocGroupSchedule},
    {"Local Input Schedule", DocLocalInputSchedule},
    {"Fennlink Input Schedule", DocFennlinkInputSchedule},
    {"Local Input Pilot Schedule", DocLocalInputPilotSchedule},
    {"Fennlink Pilot Schedule", DocFennlinkPilotSchedule},
    {"Timer Schedule", DocTimerSchedule},
    {"Preset Schedule", DocPresetSchedule},
    {"Off Hours Sweeps Schedule", DocOffHoursSweepsSchedule},
    {"Open Close Times Schedule", DocOpenCloseTimesSchedule},
    {"Dimmer Outputs", DocDimmers},
    {"DMX Schedule", DocDMXSchedule},
});

/// Written only for a panel with a DMX module, and the one section without a DocumentSectionOff.
constexpr int DMXSection = DocumentSections.size() - 1;
static_assert(DocumentSections[DMXSection].Write == DocDMXSchedule);
static_assert(decltype(DocumentSectionOff)::Size == DMXSection);

/// Which sections to write, by index in DocumentSections.
using DocumentChoice = std::array<bool, DocumentSections.size()>;

/// The time as the document tells it: "03:05 PM 07/04/2026".
std::string DocumentTimeStamp(const QDateTime& time);

/// The whole document of a project, which is called `fileName`, as Windows-1252 bytes. Throws
/// RunTimeFailure, which names the section, when a damaged project overflows a number.
std::string RenderDocument(const Project& project, const QString& fileName,
                           std::string_view timeStamp, const DocumentChoice& chosen);

/// The sections, one table a sheet of a spreadsheet; the same failures.
std::vector<DocumentTable> BuildSheets(const Project& project);

/// Writes `document` to DocumentFileName in place of any old file. At any instant the disk holds
/// the old file or the new one. Throws RunTimeFailure, which names the file and the reason, with
/// the old file untouched.
void WriteDocumentFile(std::string_view document);
