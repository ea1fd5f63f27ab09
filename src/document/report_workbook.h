#pragma once

#include <QByteArray>
#include <vector>

#include "document/rules/text/doc_text.h"

/// An .xlsx workbook with a sheet a table. Throws RunTimeFailure.
QByteArray WorkbookOf(const std::vector<DocumentTable>& sheets);
