#include "document/rules/text/doc_text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "panel/format.h"
#include "panel/hex.h"
#include "panel/time_values.h"

void DocumentText::Title(std::string_view title) {
  bytes_.append("[").append(title).append("]\r\n");
  title_ = title;
  table_ = NoTable;
}

void DocumentText::Header(std::initializer_list<std::string_view> titles,
                          std::string_view tableName) {
  for (auto title = titles.begin(); title != titles.end(); ++title) {
    if (title != titles.begin()) bytes_ += '\t';
    bytes_ += *title;
  }
  bytes_ += "\r\n";
  if (tables_) BeginTable(tableName.empty() ? title_ : tableName, {titles.begin(), titles.end()});
}

void DocumentText::LeadFurtherTables(int cells) {
  if (!tables_) return;
  const DocumentTable& table = (*tables_)[table_];
  leader_ = table_;
  leadColumns_.assign(table.Columns.begin(), table.Columns.begin() + cells);
  lead_.assign(table.Rows.back().begin(), table.Rows.back().begin() + cells);
}

void DocumentText::BeginTable(std::string_view name, std::vector<std::string> columns) {
  const auto known = std::find_if(tables_->begin(), tables_->end(),
                                  [&](const DocumentTable& table) { return table.Name == name; });
  table_ = static_cast<std::size_t>(known - tables_->begin());
  if (known != tables_->end()) return;
  columns.insert(columns.begin(), leadColumns_.begin(), leadColumns_.end());
  tables_->push_back({std::string(name), std::move(columns), {}});
}

DocumentText& DocumentText::Cell() {
  if (tables_) {
    if (rowBegun_) EndCell();
    row_.emplace_back();
  }
  if (rowBegun_) bytes_ += '\t';
  cellStart_ = bytes_.size();
  rowBegun_ = true;
  listBegun_ = false;
  return *this;
}

/// A cell that holds one number or time and nothing else is one.
void DocumentText::Become(DocumentCell::Kind kind, int value, int digits) {
  if (row_.empty()) return;
  const bool alone = cellStart_ == bytes_.size() && !listBegun_;
  row_.back() = alone ? DocumentCell{{}, kind, value, digits} : DocumentCell{};
}

DocumentText& DocumentText::Text(std::string_view text) {
  if (tables_ && !text.empty()) Become(DocumentCell::Kind::Text, 0, 1);
  bytes_ += text;
  return *this;
}

DocumentText& DocumentText::Number(int number, int digits) {
  if (tables_) Become(DocumentCell::Kind::Number, number, digits);
  AppendNumber(bytes_, number, digits);
  return *this;
}

DocumentText& DocumentText::Time(int minutes) {
  const auto kind = minutes >= 0 ? DocumentCell::Kind::Time : DocumentCell::Kind::Text;
  if (tables_) Become(kind, minutes % MinutesPerDay, 1);
  bytes_ += MinuteText(minutes);
  return *this;
}

DocumentText& DocumentText::QuarterHours(int quarterHours) {
  return Time(quarterHours % QuarterHoursPerDay * (MinutesPerDay / QuarterHoursPerDay));
}

DocumentText& DocumentText::Item(std::string_view letter, int number, int digits, char separator) {
  NextItem(separator);
  return Text(letter).Number(number, digits);
}

DocumentText& DocumentText::FennlinkItem(int device, int input) {
  NextItem(',');
  AddDeviceInput(device, input);
  return *this;
}

DocumentText& DocumentText::DeviceCell(int device) {
  Cell();
  AddDevice(device);
  return *this;
}

DocumentText& DocumentText::DeviceInputCell(int device, int input) {
  Cell();
  AddDeviceInput(device, input);
  return *this;
}

DocumentText& DocumentText::Skip(int count) {
  for (int i = 0; i < count; ++i) Cell();
  return *this;
}

void DocumentText::EndRow() {
  if (tables_ && rowBegun_) AddRow();
  bytes_ += "\r\n";
  rowBegun_ = false;
}

void DocumentText::AddRow() {
  EndCell();
  if (table_ == NoTable) BeginTable(title_, {"Setting", "Value", "Points"});
  if (table_ != leader_) row_.insert(row_.begin(), lead_.begin(), lead_.end());
  (*tables_)[table_].Rows.push_back(std::move(row_));
  row_.clear();
}

void DocumentText::EndCell() {
  row_.back().Text = bytes_.substr(cellStart_);
  if (const auto words = std::exchange(sheetWords_, std::nullopt)) row_.back() = {*words};
}

void DocumentText::NextItem(char separator) {
  if (listBegun_) bytes_ += separator;
  listBegun_ = true;
}

void DocumentText::AddDevice(int device) {
  bytes_ += "FL-";
  bytes_ += HexByte(device);
}

void DocumentText::AddDeviceInput(int device, int input) {
  AddDevice(device);
  bytes_ += '.';
  AppendNumber(bytes_, input + 1);
}
