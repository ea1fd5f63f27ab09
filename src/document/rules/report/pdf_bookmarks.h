#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <vector>

// What Qt's writer leaves out of a PDF.

/// A place that a reader of the PDF lists and jumps to.
struct PdfBookmark {
  QString Title;
  int Page;    ///< From 1.
  double Top;  ///< In points above the lower edge of the page.
};

/// A PDF, as Qt has written it, with bookmarks, and with `date` as the moment of its making. Throws
/// RunTimeFailure where its parts are not found.
QByteArray WithBookmarks(const QByteArray& pdf, const std::vector<PdfBookmark>& bookmarks,
                         const QDateTime& date);
