#include "simulator/window/switch_view.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

#include "simulator/memory/digits.h"

namespace simulator {

namespace {

bool StaysClosed(InputKind kind) {
  return kind == InputKind::MaintainedOnOff || kind == InputKind::MaintainedMultiWay ||
         ActsWhileClosed(kind);
}

bool DoesSomething(const Configuration& settings, int input) {
  const auto at = static_cast<std::size_t>(input);
  const SwitchSetting& setting = settings.Inputs.Each[at];
  return setting.All() != 0 || setting.Kind == InputKind::SetPreset ||
         settings.Dimmers.SlotSwitches[at];
}

}  // namespace

SwitchView::SwitchView(Panel& panel) : BuiltView(panel) {}

std::vector<SwitchView::Box> SwitchView::BoxesOf(const Configuration& settings) const {
  Box used{QStringLiteral("Inputs"), 0, {}};
  Box idle{QStringLiteral("Inputs That Do Nothing"), 0, {}};
  for (int i = 0; i < ShownPoints(Source); ++i) {
    const auto at = static_cast<std::size_t>(i);
    const InputKind kind = settings.Inputs.Each[at].Kind;
    const QString name = NumberedName("Input", i, settings.Names.Input[at]);
    Box& local = DoesSomething(settings, i) ? used : idle;
    local.Places.push_back({0, i, Contact::On, kind, name});
    if (kind == InputKind::MomentaryOnOff) {
      local.Places.push_back({0, i, Contact::Off, kind, QStringLiteral("%1 Off").arg(name)});
    }
  }
  std::vector<Box> boxes;
  if (!used.Places.empty()) boxes.push_back(used);
  for (int device = 1; device <= Devices; ++device) {
    const auto at = static_cast<std::size_t>(device);
    const QString title = NumberedName("Device", device - 1, settings.Names.Device[at]);
    Box box{title, settings.Inputs.IsPhotocell[at] ? device : 0, {}};
    for (int i = 0; i < settings.Inputs.Buttons[at]; ++i) {
      const InputKind kind =
          settings.Inputs.Each[static_cast<std::size_t>(SwitchOf(device, i))].Kind;
      box.Places.push_back({device, i, Contact::On, kind, QString::number(i + 1)});
    }
    if (box.Photocell != 0 || !box.Places.empty()) boxes.push_back(box);
  }
  if (!idle.Places.empty()) boxes.push_back(idle);
  return boxes;
}

void SwitchView::ShowSettings(const Configuration& settings) {
  const std::vector<Box> boxes = BoxesOf(settings);
  if (boxes == Known) return;  // a button keeps its focus
  Known = boxes;
  QVBoxLayout& column = BuildAnew();
  for (const Box& box : Known) {
    auto* group = new QGroupBox(box.Title);
    auto* grid = new QGridLayout(group);
    if (box.Photocell != 0) AddPhotocell(*grid, box);
    for (const Place& place : box.Places) AddButton(*grid, place);
    column.addWidget(group);
  }
  column.addStretch(1);
  ShowStates();
}

void SwitchView::AddButton(QGridLayout& grid, const Place& place) {
  constexpr int stationColumns = 4;
  const bool second = place.Which == Contact::Off;
  auto* button = new LampButton(second ? QStringLiteral("Off") : place.Text);
  button->setAccessibleName(
      place.Device == 0 ? SpokenName("Input", place.Text)
                        : QStringLiteral("Device %1 Input %2")
                              .arg(QString::fromStdString(TwoDigits(place.Device)), place.Text));
  button->setObjectName(
      place.Device == 0 ? QStringLiteral("input%1%2")
                              .arg(place.Input + 1)
                              .arg(second ? QLatin1String("off") : QLatin1String())
                        : QStringLiteral("device%1input%2").arg(place.Device).arg(place.Input + 1));
  const int row = place.Device == 0 ? place.Input : place.Input / stationColumns;
  const int column = place.Device == 0 ? (second ? 1 : 0) : place.Input % stationColumns;
  const bool alone = place.Device == 0 && place.Kind != InputKind::MomentaryOnOff;
  grid.addWidget(button, row, column, 1, alone ? 2 : 1);
  if (StaysClosed(place.Kind)) {
    button->setCheckable(true);
    connect(button, &QAbstractButton::clicked, this,
            [this, place](bool checked) { Close(place, checked); });
  } else {
    connect(button, &QAbstractButton::pressed, this, [this, place] { Close(place, true); });
    connect(button, &QAbstractButton::released, this, [this, place] { Close(place, false); });
  }
  Showers.emplace_back([button, place, second](const Engine& runner) {
    const bool lit = place.Device == 0 ? runner.Pilot(place.Input)
                                       : runner.DevicePilot(place.Device, place.Input);
    button->SetLamp(lit && !second,
                    lit ? QStringLiteral("pilot lit") : QStringLiteral("pilot dark"));
    if (!button->isCheckable()) return;
    button->setChecked(place.Device == 0 ? (runner.InputState(place.Input) & 1) != 0
                                         : runner.DeviceInput(place.Device, place.Input));
  });
}

void SwitchView::AddPhotocell(QGridLayout& grid, const Box& box) {
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setRange(0, FullLevel);
  slider->setAccessibleName(QStringLiteral("Light on %1").arg(box.Title));
  slider->setObjectName(QStringLiteral("photocell%1").arg(box.Photocell));
  auto* level = new QLabel(QStringLiteral("0"));
  level->setMinimumWidth(level->fontMetrics().horizontalAdvance(QStringLiteral("0000")));
  level->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  grid.addWidget(new QLabel(QStringLiteral("Dark")), 0, 0);
  grid.addWidget(slider, 0, 1);
  grid.addWidget(new QLabel(QStringLiteral("Bright")), 0, 2);
  grid.addWidget(level, 0, 3);
  connect(slider, &QSlider::valueChanged, this, [this, level, device = box.Photocell](int value) {
    level->setNum(value);
    if (value != Source.DeviceLevel(device)) Source.SetDeviceLevel(device, value);
  });
  Showers.emplace_back([slider, device = box.Photocell](const Engine& runner) {
    if (!slider->isSliderDown()) slider->setValue(runner.PhotocellLevel(device));
  });
}

void SwitchView::Close(const Place& place, bool closed) {
  if (place.Device == 0) {
    Source.SetContact(place.Input, place.Which, closed);
  } else {
    Source.SetDeviceInput(place.Device, place.Input, closed);
  }
  ShowStates();
}

}  // namespace simulator
