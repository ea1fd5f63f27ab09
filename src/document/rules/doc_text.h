#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

/// The text document while it grows: rows of cells with a tab between them, each row ended by
/// carriage return and line feed. Texts are Windows-1252 bytes and are written as they stand, a tab
/// or a line end in a name included, so that no name is told otherwise than it is stored.
class DocumentText {
 public:
  /// A row of the title in square brackets.
  void Title(std::string_view title);

  /// A row of column titles.
  void Header(std::initializer_list<std::string_view> titles);

  // Each begins the next cell of the row.
  DocumentText& Cell();
  DocumentText& Cell(std::string_view text) { return Cell().Text(text); }
  DocumentText& Cell(int number, int digits = 1) { return Cell().Number(number, digits); }

  // Each adds to the cell. Numbers have at least `digits` digits.
  DocumentText& Text(std::string_view text);
  DocumentText& Number(int number, int digits = 1);

  // Each adds an item to the list in the cell: a comma unless it is the first, then the item.
  DocumentText& Item(std::string_view letter, int number, int digits = 2);
  DocumentText& FennlinkItem(int device, int input);

  /// The items of a list: number i + 1 for each i below `count` that `includes` holds for.
  template <typename Filter>
  DocumentText& Items(std::string_view letter, int count, Filter includes, int digits = 2) {
    for (int i = 0; i < count; ++i) {
      if (includes(i)) Item(letter, i + 1, digits);
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
  void NextItem();
  void AddDevice(int device);
  void AddDeviceInput(int device, int input);

  std::string bytes_;
  bool rowBegun_ = false;
  bool listBegun_ = false;
};
