#include "shell/controls/device_list.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyledItemDelegate>

#include "panel/code_page.h"
#include "panel/fennlink_types.h"
#include "panel/live_project.h"
#include "panel/words.h"

namespace {

constexpr int TypeGap = 16;

/// The type of a device that has one.
QString ConfiguredType(int d) {
  const FennlinkDeviceType& type = FennlinkDevice(FennlinkRecords(d).DeviceType);
  return type.InputCount > 0 ? ToUnicode(type.ListText) : QString();
}

class DeviceDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& item,
             const QModelIndex& index) const override {
    QStyleOptionViewItem option = item;
    initStyleOption(&option, index);
    const QString type = ConfiguredType(index.row());
    const int typeWidth = option.fontMetrics.horizontalAdvance(type) + TypeGap;
    option.text = option.fontMetrics.elidedText(option.text, Qt::ElideRight,
                                                option.rect.width() - typeWidth - TypeGap / 2);
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
    const bool selected = option.state & QStyle::State_Selected;
    painter->setPen(
        option.palette.color(selected ? QPalette::HighlightedText : QPalette::PlaceholderText));
    painter->drawText(option.rect.adjusted(0, 0, -TypeGap / 2, 0),
                      Qt::AlignRight | Qt::AlignVCenter, type);
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QSize name = QStyledItemDelegate::sizeHint(option, index);
    const int type = option.fontMetrics.horizontalAdvance(ConfiguredType(index.row()));
    return {name.width() + type + 2 * TypeGap, name.height()};
  }
};

}  // namespace

DeviceList::DeviceList(QWidget* parent) : ComboBox(parent) {
  setAccessibleName(QStringLiteral("Device"));
  setItemDelegate(new DeviceDelegate(this));
  SetWidthInChars(16);
  hint_ = new Label;
  hint_->setObjectName(QStringLiteral("lblChooseDevice"));
  hint_->SetLook(Label::Look::Quiet);
  hint_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(this, &QComboBox::currentIndexChanged, hint_, [this] { ShowHint(); });
}

QWidget* DeviceList::ChooseHint(bool typeElsewhere) {
  typeElsewhere_ = typeElsewhere;
  return hint_;
}

void DeviceList::ShowHint() {
  const int device = ListIndex();
  const bool typeless = device > 0 && typeElsewhere_ && ConfiguredType(device).isEmpty();
  hint_->SetCaption(
      typeless ? QStringLiteral("It has no type yet: choose one in Configure Fennlink Devices.")
               : QStringLiteral("Choose a device to see what it has."));
  hint_->setVisible(device <= 0 || typeless);
}

void DeviceList::Fill() {
  QStringList items{QStringLiteral("Select Device")};
  for (int d = 1; d <= DeviceCount; ++d) items << ToUnicode(FennlinkRecords(d).DeviceName);
  SetItems(items);
}

void DeviceList::showPopup() {
  view()->setMinimumWidth(std::min(view()->sizeHintForColumn(0) + 2 * TypeGap, window()->width()));
  ComboBox::showPopup();
}
