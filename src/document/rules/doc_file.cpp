#include "document/rules/doc_file.h"

#include <QLocale>

#include "panel/code_page.h"
#include "panel/panel_record.h"
#include "panel/program_state.h"
#include "panel/replace_file.h"
#include "panel/words.h"

namespace {

/// Says which section a damaged number stands in.
void WriteSection(const DocumentSection& section, DocumentText& text) {
  try {
    section.Write(text);
  } catch (const RunTimeFailure& failure) {
    throw RunTimeFailure("Cannot write the section \"" + std::string(section.Caption) +
                         "\": " + failure.what());
  }
}

}  // namespace

std::string DocumentTimeStamp(const QDateTime& time) {
  return QLocale::c().toString(time, QStringLiteral("hh:mm AP MM/dd/yyyy")).toStdString();
}

std::string RenderDocument(std::string_view timeStamp, const DocumentChoice& chosen) {
  DocumentText text;
  text.Title("Orv Tamberloom 3 Configuration Documentation File");
  text.Cell("Host Software").Cell(FromUnicode(HostSoftwareVersion)).EndRow();
  text.Cell("Tamberloom 3 File Name").Cell(FromUnicode(CurrentFileName)).EndRow();
  text.Cell("Document Created").Cell(timeStamp).EndRow();
  for (std::size_t i = 0; i < DocumentSections.size(); ++i) {
    const bool offered = i != DMXSection || PanelRecord.AddOnModuleType == AddOnModuleDMX;
    if (chosen[i] && offered) WriteSection(DocumentSections[i], text);
  }
  text.Title("End Of File");
  return text.Take();
}

std::vector<DocumentTable> BuildSheets() {
  std::vector<DocumentTable> tables;
  for (std::size_t i = 0; i < DocumentSections.size(); ++i) {
    if (i == DMXSection && PanelRecord.AddOnModuleType != AddOnModuleDMX) continue;
    DocumentText text(&tables);
    DocumentSections[i].Write(text);
  }
  return tables;
}

void WriteDocumentFile(std::string_view document) {
  ReplaceFile(DocumentFileName, document);
}
