#include "document/report_workbook.h"

#include <locale.h>
#include <xlsxwriter.h>

#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <map>

#include "panel/code_page.h"
#include "panel/fixed_array.h"
#include "panel/time_values.h"

namespace {

constexpr int WidestColumn = 80;          ///< In characters.
constexpr qsizetype LongestText = 32767;  ///< Of a cell.

/// The library prints numbers with the decimal sign of the country, which no reader takes.
class DecimalPoints {
 public:
  DecimalPoints() : plain_(newlocale(LC_NUMERIC_MASK, "C", nullptr)), old_(uselocale(plain_)) {}
  ~DecimalPoints() {
    uselocale(old_);
    freelocale(plain_);
  }
  DecimalPoints(const DecimalPoints&) = delete;
  DecimalPoints& operator=(const DecimalPoints&) = delete;

 private:
  locale_t plain_;
  locale_t old_;
};

/// UTF-8 without the control characters that a name may have and a workbook may not.
QByteArray SheetText(const std::string& bytes) {
  QString text = ToUnicode(bytes).left(LongestText);
  for (QChar& character : text) {
    if (character.unicode() < u' ') character = u' ';
  }
  return text.toUtf8();
}

class WorkbookWriter {
 public:
  explicit WorkbookWriter(lxw_workbook* book) : book_(book) {
    header_ = workbook_add_format(book);
    format_set_bold(header_);
    time_ = workbook_add_format(book);
    format_set_num_format(time_, "h:mm AM/PM");
  }

  void AddSheet(const DocumentTable& table) {
    lxw_worksheet* sheet = workbook_add_worksheet(book_, table.Name.c_str());
    std::vector<std::size_t> widths;
    lxw_col_t column = 0;
    for (const std::string& title : table.Columns) {
      worksheet_write_string(sheet, 0, column++, SheetText(title), header_);
      widths.push_back(title.size());
    }
    lxw_row_t row = 0;
    for (const auto& cells : table.Rows) {
      ++row;
      for (std::size_t i = 0; i < cells.size() && i < widths.size(); ++i) {
        Write(sheet, row, static_cast<lxw_col_t>(i), cells[i]);
        widths[i] = std::max(widths[i], cells[i].Text.size());
      }
    }
    for (std::size_t i = 0; i < widths.size(); ++i) {
      constexpr int filterButton = 3;
      const double width = std::min<double>(static_cast<double>(widths[i]), WidestColumn);
      worksheet_set_column(sheet, static_cast<lxw_col_t>(i), static_cast<lxw_col_t>(i),
                           width + filterButton, nullptr);
    }
    worksheet_freeze_panes(sheet, 1, 0);
    worksheet_autofilter(sheet, 0, 0, row, static_cast<lxw_col_t>(widths.size() - 1));
  }

 private:
  void Write(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, const DocumentCell& cell) {
    switch (cell.Type) {
      case DocumentCell::Kind::Number:
        worksheet_write_number(sheet, row, column, cell.Value, NumberFormat(cell.Digits));
        break;
      case DocumentCell::Kind::Time:
        worksheet_write_number(sheet, row, column, static_cast<double>(cell.Value) / MinutesPerDay,
                               time_);
        break;
      case DocumentCell::Kind::Text:
        if (!cell.Text.empty()) {
          worksheet_write_string(sheet, row, column, SheetText(cell.Text), nullptr);
        }
        break;
    }
  }

  lxw_format* NumberFormat(int digits) {
    lxw_format*& format = digits_[digits];
    if (format == nullptr) {
      format = workbook_add_format(book_);
      format_set_num_format(format, std::string(static_cast<std::size_t>(digits), '0').c_str());
    }
    return format;
  }

  lxw_workbook* book_;
  lxw_format* header_;
  lxw_format* time_;
  std::map<int, lxw_format*> digits_;
};

}  // namespace

QByteArray WorkbookOf(const std::vector<DocumentTable>& sheets, const QDateTime& date) {
  const DecimalPoints points;
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("workbook")));
  QByteArray place = QFile::encodeName(folder.path());
  lxw_workbook_options options{};
  options.tmpdir = place.data();
  lxw_workbook* book = workbook_new_opt(QFile::encodeName(file.fileName()), &options);
  if (book == nullptr) throw RunTimeFailure("there is not enough memory");
  lxw_doc_properties made{};
  // The writer tells it as it stands, wherever the computer is.
  made.created = QDateTime(date.date(), date.time(), Qt::UTC).toSecsSinceEpoch();
  workbook_set_properties(book, &made);
  WorkbookWriter writer(book);
  for (const DocumentTable& table : sheets) writer.AddSheet(table);
  const lxw_error error = workbook_close(book);
  if (error != LXW_NO_ERROR) throw RunTimeFailure(lxw_strerror(error));
  if (!file.open(QIODevice::ReadOnly)) throw RunTimeFailure(file.errorString().toStdString());
  return file.readAll();
}
