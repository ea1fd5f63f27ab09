#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A cell of the document as a spreadsheet takes it.
struct DocumentCell {
  enum class Kind { Text, Number, Time };

  std::string Text;
  Kind Type = Kind::Text;
  int Value = 0;   ///< A number, or a time in minutes since midnight.
  int Digits = 1;  ///< Of a number, zeros in front.
};

/// The rows below one row of column titles, or below every such row that is repeated.
struct DocumentTable {
  std::string Name;
  std::vector<std::string> Columns;
  std::vector<std::vector<DocumentCell>> Rows;
};

/// The text document while it grows: rows of cells with a tab between them, each row ended by
/// carriage return and line feed. Texts are Windows-1252 bytes and are written as they stand, a tab
/// or a line end in a name included, so that no name is told otherwise than it is stored.
class DocumentText {
 public:
  /// Adds the rows to `tables` too, when there are any to add to.
  explicit DocumentText(std::vector<DocumentTable>* tables = nullptr) : tables_(tables) {}

  /// A row of the title in square brackets.
  void Title(std::string_view title);

  /// A row of column titles. The name is for the table alone; without one it has the title's.
  void Header(std::initializer_list<std::string_view> titles, std::string_view tableName = {});

  /// The rows of all further tables, not of the text, begin with the last row's first cells.
  void LeadFurtherTables(int cells);

  // Each begins the next cell of the row.
  DocumentText& Cell();
  DocumentText& Cell(std::string_view text) { return Cell().Text(text); }
  DocumentText& Cell(int number, int digits = 1) { return Cell().Number(number, digits); }

  // Each adds to the cell. Numbers have at least `digits` digits.
  DocumentText& Text(std::string_view text);
  DocumentText& Number(int number, int digits = 1);
  /// Minutes since midnight.
  DocumentText& Time(int minutes);
  DocumentText& QuarterHours(int quarterHours);

  /// What a spreadsheet has in the cell in place of the document's number.
  template <typename Teller>
  DocumentText& InSheet(Teller words) {
    if (tables_) sheetWords_ = words();
    return *this;
  }

  // Each adds an item to the list in the cell: a separator unless it is the first, then the item.
  DocumentText& Item(std::string_view letter, int number, int digits = 2, char separator = ',');
  DocumentText& FennlinkItem(int device, int input);

  /// The items of a list: number i + 1 for each i below `count` that `includes` holds for.
  template <typename Filter>
  DocumentText& Items(std::string_view letter, int count, Filter includes, int digits = 2,
                      char separator = ',') {
    for (int i = 0; i < count; ++i) {
      if (includes(i)) Item(letter, i + 1, digits, separator);
    }
    return *this;
  }

  /// Begins the next cell with a bus device, "FL-1A" for device 26, or with one of its inputs,
  /// "FL-1A.3" for its input 2.
  DocumentText& DeviceCell(int device);
  DocumentText& DeviceInputCell(int device, int input);

  /// Writes `count` empty cells.
  DocumentText& Skip(int count);

  void EndRow();

  /// The finished document; the text is used up.
  std::string Take() { return std::move(bytes_); }

 private:
  void EndCell();
  void NextItem(char separator);
  void AddDevice(int device);
  void AddDeviceInput(int device, int input);
  void Become(DocumentCell::Kind kind, int value, int digits);
  void BeginTable(std::string_view name, std::vector<std::string> columns);
  void AddRow();

  std::string bytes_;
  bool rowBegun_ = false;
  bool listBegun_ = false;

  static constexpr auto NoTable = static_cast<std::size_t>(-1);
  std::vector<DocumentTable>* tables_;
  std::size_t table_ = NoTable;  ///< The one that rows are added to.
  std::string title_;
  std::size_t cellStart_ = 0;
  std::vector<DocumentCell> row_;          ///< The texts are filled in as the cells end.
  std::optional<std::string> sheetWords_;  ///< In place of the text of the last cell.
  std::vector<DocumentCell> lead_;
  std::vector<std::string> leadColumns_;
  std::size_t leader_ = NoTable;  ///< The table that gives the lead and has none.
};
