#include "document/rules/text/doc_file.h"

#include <QLocale>

#include "panel/code_page.h"
#include "panel/panel_record.h"
#include "panel/program_state.h"
#include "panel/replace_file.h"
#include "panel/words.h"

namespace {

/// Says which section a damaged number stands in.
void WriteSection(const DocumentSection& section, DocumentText& text, const Project& project) {
  try {
    section.Write(text, project);
  } catch (const RunTimeFailure& failure) {
    throw RunTimeFailure("Cannot write the section \"" + std::string(section.Caption) +
                         "\": " + failure.what());
  }
}

}  // namespace

std::string DocumentTimeStamp(const QDateTime& time) {
  return QLocale::c().toString(time, QStringLiteral("hh:mm AP MM/dd/yyyy")).toStdString();
}

std::string RenderDocument(const Project& project, const QString& fileName,
                           std::string_view timeStamp, const DocumentChoice& chosen) {
  DocumentText text;
  text.Title("Orv Tamberloom 3 Configuration Documentation File");
  text.Cell("Host Software").Cell(FromUnicode(HostSoftwareVersion)).EndRow();
  text.Cell("Tamberloom 3 File Name").Cell(FromUnicode(fileName)).EndRow();
  text.Cell("Document Created").Cell(timeStamp).EndRow();
  for (std::size_t i = 0; i < DocumentSections.size(); ++i) {
    const bool offered = i != DMXSection || project.Panel.AddOnModuleType == AddOnModuleDMX;
    if (chosen[i] && offered) WriteSection(DocumentSections[i], text, project);
  }
  text.Title("End Of File");
  return text.Take();
}

std::vector<DocumentTable> BuildSheets(const Project& project) {
  std::vector<DocumentTable> tables;
  for (std::size_t i = 0; i < DocumentSections.size(); ++i) {
    if (i == DMXSection && project.Panel.AddOnModuleType != AddOnModuleDMX) continue;
    DocumentText text(&tables);
    DocumentSections[i].Write(text, project);
  }
  return tables;
}

void WriteDocumentFile(std::string_view document) {
  ReplaceFile(DocumentFileName, document);
}
