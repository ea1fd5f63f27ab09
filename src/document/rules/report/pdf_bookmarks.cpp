#include "document/rules/report/pdf_bookmarks.h"

#include <QRegularExpression>
#include <algorithm>
#include <map>

#include "panel/fixed_array.h"

// A PDF is a row of numbered objects, a table of their places and a trailer that names the first
// one, the catalog. All objects but a few are taken as they stand; the table is written anew.

namespace {

using PdfObjects = std::map<int, QByteArray>;

[[noreturn]] void FailToReadPdf(const char* what) {
  throw RunTimeFailure(std::string("the PDF has no ") + what);
}

int IntAfter(const QByteArray& text, const char* name, qsizetype from = 0) {
  const qsizetype at = text.indexOf(name, from);
  const auto match = QRegularExpression(QStringLiteral("^\\s*(\\d+)"))
                         .match(QString::fromLatin1(
                             at < 0 ? QByteArray() : text.mid(at + QByteArray(name).size(), 24)));
  if (!match.hasMatch()) FailToReadPdf(name);
  return match.captured(1).toInt();
}

class PdfFile {
 public:
  explicit PdfFile(const QByteArray& pdf) {
    const qsizetype end = pdf.lastIndexOf("startxref");
    if (end < 0) FailToReadPdf("startxref");
    const int table = IntAfter(pdf, "startxref", end);
    const qsizetype trailer = pdf.indexOf("trailer", table);
    if (trailer < 0) FailToReadPdf("trailer");
    trailer_ = pdf.mid(trailer, end - trailer);
    ReadObjects(pdf, table, trailer);
  }

  int NumberOf(const char* name) const { return IntAfter(trailer_, name); }

  QByteArray& Object(int number) {
    const auto found = objects_.find(number);
    if (found == objects_.end()) FailToReadPdf("object that it names");
    return found->second;
  }

  /// The numbers of the pages, in their order.
  std::vector<int> Pages() {
    const QString tree = QString::fromLatin1(Object(IntAfter(Object(NumberOf("/Root")), "/Pages")));
    const qsizetype kids = tree.indexOf(QLatin1StringView("/Kids"));
    if (kids < 0) FailToReadPdf("/Kids");
    static const QRegularExpression reference(QStringLiteral("(\\d+) 0 R"));
    std::vector<int> pages;
    auto match = reference.globalMatch(tree.mid(kids, tree.indexOf(u']', kids) - kids));
    while (match.hasNext()) pages.push_back(match.next().captured(1).toInt());
    return pages;
  }

  /// The number that the next object would have.
  int NextNumber() const { return objects_.rbegin()->first + 1; }

  void Add(const QByteArray& content) {
    const int number = NextNumber();
    objects_[number] = QByteArray::number(number) + " 0 obj\n" + content + "\nendobj\n";
  }

  QByteArray Bytes() const {
    QByteArray pdf = header_;
    QByteArray table;
    int number = 0;
    const auto addPlace = [&](const QByteArray& place) { table += place; };
    for (const auto& [known, object] : objects_) {
      for (; number < known; ++number) addPlace("0000000000 65535 f \n");
      addPlace(QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n");
      pdf += object;
      ++number;
    }
    const QByteArray size = QByteArray::number(number);
    const QByteArray start = QByteArray::number(pdf.size());
    return pdf + "xref\n0 " + size + '\n' + table + "trailer\n<<\n/Size " + size + "\n/Info " +
           QByteArray::number(NumberOf("/Info")) + " 0 R\n/Root " +
           QByteArray::number(NumberOf("/Root")) + " 0 R\n>>\nstartxref\n" + start + "\n%%EOF\n";
  }

 private:
  /// An object reaches to the next one.
  void ReadObjects(const QByteArray& pdf, int table, qsizetype trailer) {
    std::map<qsizetype, int> places;
    const auto lines = pdf.mid(table, trailer - table).split('\n');
    constexpr qsizetype titles = 2;  // "xref", "0 12"
    for (qsizetype i = titles; i < lines.size(); ++i) {
      const qsizetype place = lines[i].first(std::min<qsizetype>(10, lines[i].size())).toLongLong();
      if (place > 0 && lines[i].trimmed().endsWith('n')) {
        places[place] = static_cast<int>(i - titles);
      }
    }
    if (places.empty()) FailToReadPdf("objects");
    header_ = pdf.first(places.begin()->first);
    for (auto at = places.begin(); at != places.end(); ++at) {
      const auto next = std::next(at);
      const qsizetype end = next == places.end() ? table : next->first;
      objects_[at->second] = pdf.mid(at->first, end - at->first);
    }
  }

  QByteArray header_;
  QByteArray trailer_;
  PdfObjects objects_;
};

/// A text as PDF takes it: UTF-16, in hexadecimal digits.
QByteArray PdfText(const QString& text) {
  QByteArray digits = "<FEFF";
  for (const QChar& character : text) {
    digits += QByteArray::number(character.unicode(), 16).rightJustified(4, '0').toUpper();
  }
  return digits + '>';
}

QByteArray Reference(const char* name, int number) {
  return QByteArray(" /") + name + ' ' + QByteArray::number(number) + " 0 R";
}

void AddOutlines(PdfFile& pdf, const std::vector<PdfBookmark>& bookmarks) {
  const std::vector<int> pages = pdf.Pages();
  const int root = pdf.NextNumber();
  const auto count = static_cast<int>(bookmarks.size());
  pdf.Add("<< /Type /Outlines" + Reference("First", root + 1) + Reference("Last", root + count) +
          " /Count " + QByteArray::number(count) + " >>");
  for (int i = 0; i < count; ++i) {
    const PdfBookmark& mark = bookmarks[static_cast<std::size_t>(i)];
    if (mark.Page < 1 || mark.Page > static_cast<int>(pages.size())) FailToReadPdf("such page");
    QByteArray item = "<< /Title " + PdfText(mark.Title) + Reference("Parent", root);
    if (i > 0) item += Reference("Prev", root + i);
    if (i + 1 < count) item += Reference("Next", root + i + 2);
    item += " /Dest [" + QByteArray::number(pages[static_cast<std::size_t>(mark.Page) - 1]) +
            " 0 R /XYZ null " + QByteArray::number(mark.Top, 'f', 1) + " null] >>";
    pdf.Add(item);
  }
  QByteArray& catalog = pdf.Object(pdf.NumberOf("/Root"));
  catalog.insert(catalog.lastIndexOf(">>"),
                 Reference("Outlines", root) + " /PageMode /UseOutlines\n");
}

}  // namespace

QByteArray WithBookmarks(const QByteArray& pdf, const std::vector<PdfBookmark>& bookmarks,
                         const QDateTime& date) {
  PdfFile file(pdf);
  if (!bookmarks.empty()) AddOutlines(file, bookmarks);
  QByteArray& facts = file.Object(file.NumberOf("/Info"));
  const qsizetype made = facts.indexOf("/CreationDate");
  if (made < 0) FailToReadPdf("/CreationDate");
  const qsizetype end = facts.indexOf(')', made);
  facts.replace(
      made, end + 1 - made,
      "/CreationDate (D:" + date.toString(QStringLiteral("yyyyMMddHHmmss")).toLatin1() + ")");
  return file.Bytes();
}
