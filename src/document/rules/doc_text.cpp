#include "document/rules/doc_text.h"

#include "panel/format.h"
#include "panel/hex.h"

void DocumentText::Title(std::string_view title) {
  Cell("[").Text(title).Text("]").EndRow();
}

void DocumentText::Header(std::initializer_list<std::string_view> titles) {
  for (const std::string_view title : titles) Cell(title);
  EndRow();
}

DocumentText& DocumentText::Cell() {
  if (rowBegun_) bytes_ += '\t';
  rowBegun_ = true;
  listBegun_ = false;
  return *this;
}

DocumentText& DocumentText::Text(std::string_view text) {
  bytes_ += text;
  return *this;
}

DocumentText& DocumentText::Number(int number, int digits) {
  AppendNumber(bytes_, number, digits);
  return *this;
}

DocumentText& DocumentText::Item(std::string_view letter, int number, int digits) {
  NextItem();
  return Text(letter).Number(number, digits);
}

DocumentText& DocumentText::FennlinkItem(int device, int input) {
  NextItem();
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
  bytes_ += "\r\n";
  rowBegun_ = false;
}

void DocumentText::NextItem() {
  if (listBegun_) bytes_ += ',';
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
