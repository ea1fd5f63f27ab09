#pragma once

#include <QByteArray>
#include <QDateTime>
#include <vector>

#include "document/rules/text/doc_text.h"

/// An .xlsx workbook with a sheet a table, made at `date`. Throws RunTimeFailure.
QByteArray WorkbookOf(const std::vector<DocumentTable>& sheets, const QDateTime& date);
