#include "dimmer/dimmer_lists.h"

#include <QBoxLayout>

#include "panel/dimmer_block.h"
#include "panel/hex.h"

ComboBox* AddTitledList(QBoxLayout* layout, const char* name, const QString& title,
                        const QStringList& items) {
  auto* list = new ComboBox;
  list->setObjectName(QString::fromLatin1(name));
  list->setAccessibleName(title);
  list->setToolTip(title);
  list->SetItems(items);
  list->setPlaceholderText(title);
  if (layout) layout->addWidget(list);
  return list;
}

QStringList CountedItems(const QString& lead, int first, int count, int digits) {
  QStringList items;
  for (int i = first; i < first + count; ++i) {
    items << lead + QStringLiteral("%1").arg(i, digits, 10, QLatin1Char('0'));
  }
  return items;
}

QStringList PercentItems(const QString& title) {
  QStringList items;
  for (int percent = 0; percent <= 100; ++percent) {
    items << QStringLiteral("%1: %2%").arg(title).arg(percent);
  }
  return items;
}

QStringList HexItems(const QString& lead, int count) {
  QStringList items;
  for (int i = 1; i <= count; ++i) items << lead + QString::fromStdString(HexByte(i));
  return items;
}

ComboBox* AddDeviceList(QBoxLayout* layout) {
  const QString title = QStringLiteral("Dimmer Output Device");
  return AddTitledList(layout, "cboDDev", title, HexItems(title + ": ", DimmerDeviceCount));
}

ComboBox* AddOutputList(QBoxLayout* layout) {
  const QString title = QStringLiteral("Output");
  return AddTitledList(layout, "cboDOut", title, CountedItems(title + ": ", 1, DimmerOutputCount));
}

void ShownValues::Index(ComboBox& list, const std::function<int()>& value) {
  Attempt([&] { list.SetListIndex(value()); }, [&] { list.SetListIndex(-1); });
}

void ShownValues::Attempt(const std::function<void()>& show,
                          const std::function<void()>& otherwise) {
  try {
    show();
  } catch (const RunTimeFailure& failure) {
    if (!failure_) failure_ = failure;
    otherwise();
  }
}

void ShownValues::TellFailure() const {
  if (failure_) throw *failure_;
}
