#include "document/rules/report/pdf_bookmarks.h"

#include <gtest/gtest.h>

#include "panel/fixed_array.h"

namespace {

const QDateTime Made(QDate(2026, 11, 25), QTime(10, 0));

/// Two pages, the second one first in the file, and a number that no object has.
QByteArray TwoPages() {
  QByteArray pdf = "%PDF-1.4\n%\xe2\xe3\n";
  QList<qsizetype> places = {0, 0, 0, 0, 0, 0, 0};
  for (const auto& [number, content] :
       {std::pair{3, "<<\n/Title (\\(a\\))\n/CreationDate (D:20200101000000+01'00')\n>>"},
        {6, "<< /Type /Page /Parent 2 0 R >>"},
        {1, "<<\n/Type /Catalog\n/Pages 2 0 R\n>>"},
        {4, "<< /Type /Page /Parent 2 0 R >>"},
        {2, "<< /Type /Pages /Count 2 /Kids [\n4 0 R\n6 0 R\n] >>"}}) {
    places[number] = pdf.size();
    pdf += QByteArray::number(number) + " 0 obj\n" + content + "\nendobj\n";
  }
  const QByteArray start = QByteArray::number(pdf.size());
  pdf += "xref\n0 7\n0000000000 65535 f \n";
  for (int number = 1; number < 7; ++number) {
    pdf += QByteArray::number(places[number]).rightJustified(10, '0') + " 00000 n \n";
  }
  return pdf + "trailer\n<<\n/Size 7\n/Info 3 0 R\n/Root 1 0 R\n>>\nstartxref\n" + start +
         "\n%%EOF\n";
}

/// What the table of a PDF leads to, by number; a place that holds another object is told.
std::map<int, QByteArray> ObjectsOf(const QByteArray& pdf) {
  std::map<int, QByteArray> objects;
  const auto start = pdf.mid(pdf.lastIndexOf("startxref") + 10).split('\n')[0].toLongLong();
  EXPECT_TRUE(pdf.mid(start).startsWith("xref\n0 "));
  const QList<QByteArray> lines = pdf.mid(start).split('\n');
  const int count = lines[1].mid(2).toInt();
  for (int number = 0; number < count; ++number) {
    const QByteArray line = lines[number + 2];
    EXPECT_EQ(line.size(), 19) << "a row of the table has 20 bytes with its end";
    if (!line.endsWith("n ")) continue;
    const qsizetype at = line.first(10).toLongLong();
    EXPECT_TRUE(pdf.mid(at).startsWith(QByteArray::number(number) + " 0 obj\n")) << number;
    objects[number] = pdf.mid(at, pdf.indexOf("endobj", at) - at);
  }
  return objects;
}

TEST(PdfBookmarksTest, AddsAListThatReadersFindAndLeavesTheRest) {
  const QByteArray pdf =
      WithBookmarks(TwoPages(), {{"Relays", 1, 700}, {"K\u00fcche", 2, 12.25}}, Made);
  const auto objects = ObjectsOf(pdf);
  ASSERT_EQ(objects.size(), 8U);
  EXPECT_TRUE(objects.at(1).contains("/Outlines 7 0 R"));
  EXPECT_TRUE(objects.at(7).contains("/First 8 0 R /Last 9 0 R /Count 2"));
  EXPECT_TRUE(objects.at(8).contains("/Title <FEFF00520065006C006100790073>"));
  EXPECT_TRUE(objects.at(8).contains("/Parent 7 0 R /Next 9 0 R"));
  EXPECT_TRUE(objects.at(8).contains("/Dest [4 0 R /XYZ null 700.0 null]"));
  EXPECT_TRUE(objects.at(9).contains("/Title <FEFF004B00FC006300680065>"));
  EXPECT_TRUE(objects.at(9).contains("/Prev 8 0 R /Dest [6 0 R"));
  EXPECT_EQ(objects.at(6), "6 0 obj\n<< /Type /Page /Parent 2 0 R >>\n");
  EXPECT_TRUE(objects.at(3).contains("/Title (\\(a\\))\n/CreationDate (D:20261125100000)\n>>"));
  EXPECT_EQ(ObjectsOf(WithBookmarks(pdf, {}, Made)), objects) << "its own bytes can be read again";
}

TEST(PdfBookmarksTest, RefusesWhatItCannotRead) {
  const QByteArray pdf = TwoPages();
  for (QByteArray damaged :
       {QByteArray(), QByteArray("%PDF-1.4"), pdf.first(pdf.indexOf("trailer")),
        QByteArray(pdf).replace("startxref\n", "startxref\n9"),
        QByteArray(pdf).replace("/Root 1", "/Root 5"), QByteArray(pdf).replace("/Kids", "/Gone"),
        QByteArray(pdf).replace("/CreationDate", "/ModifyDate")}) {
    EXPECT_THROW(WithBookmarks(damaged, {{"Relays", 1, 700}}, Made), RunTimeFailure)
        << damaged.toStdString();
  }
  EXPECT_THROW(WithBookmarks(pdf, {{"Relays", 3, 700}}, Made), RunTimeFailure);
}

}  // namespace
