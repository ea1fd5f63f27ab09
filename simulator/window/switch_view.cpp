#include "simulator/window/switch_view.h"

#include <QGroupBox>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

#include "simulator/watch/why.h"
#include "simulator/window/tile_layout.h"

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

SwitchView::SwitchView(Panel& panel, Narrator& narrator) : BuiltView(panel, narrator) {}

std::vector<SwitchView::Box> SwitchView::BoxesOf(const Configuration& settings) const {
  Box used{QStringLiteral("Inputs"), 0, {}};
  Box idle{QStringLiteral("Inputs That Do Nothing"), 0, {}};
  for (int i = 0; i < ShownPoints(Source); ++i) {
    const auto at = static_cast<std::size_t>(i);
    const InputKind kind = settings.Inputs.Each[at].Kind;
    const QString name = NumberedName("Input", i, settings.Names.Input[at]);
    Box& local = DoesSomething(settings, i) ? used : idle;
    const QString what = QString::fromStdString(WhatItControls(i, settings));
    local.Places.push_back({0, i, Contact::On, kind, name, what});
    if (kind == InputKind::MomentaryOnOff) {
      const QString off = QStringLiteral("%1 Off").arg(name);
      local.Places.push_back({0, i, Contact::Off, kind, off, QStringLiteral("Its Off contact")});
    }
  }
  std::vector<Box> boxes;
  if (!used.Places.empty()) boxes.push_back(used);
  for (int device = 1; device <= Devices; ++device) {
    const auto at = static_cast<std::size_t>(device);
    const QString title =
        QString::fromStdString(NamedText({Subject::Kind::Photocell, device, 0}, settings));
    Box box{title, settings.Inputs.IsPhotocell[at] ? device : 0, {}};
    for (int i = 0; i < settings.Inputs.Buttons[at]; ++i) {
      const int number = SwitchOf(device, i);
      const InputKind kind = settings.Inputs.Each[static_cast<std::size_t>(number)].Kind;
      box.Places.push_back({device, i, Contact::On, kind, QString::number(i + 1),
                            QString::fromStdString(WhatItControls(number, settings))});
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
    auto* inside = new QVBoxLayout(group);
    if (box.Photocell != 0) AddPhotocell(*inside, box);
    if (!box.Places.empty()) {
      auto* tiles = new TileLayout;
      inside->addLayout(tiles);
      for (const Place& place : box.Places) tiles->addWidget(Button(place));
    }
    column.addWidget(group);
  }
  column.addStretch(1);
  ShowStates();
}

LampButton* SwitchView::Button(const Place& place) {
  const bool second = place.Which == Contact::Off;
  const bool local = place.Device == 0;
  auto* button = new LampButton(place.Text);
  const Subject item = local ? Subject{Subject::Kind::Input, place.Input, 0}
                             : Subject{Subject::Kind::DeviceInput, place.Device, place.Input};
  button->setAccessibleName(local ? SpokenName("Input", place.Text)
                                  : QString::fromStdString(Text(item)));
  button->setObjectName(
      local ? QStringLiteral("input%1%2")
                  .arg(place.Input + 1)
                  .arg(second ? QLatin1String("off") : QLatin1String())
            : QStringLiteral("device%1input%2").arg(place.Device).arg(place.Input + 1));
  button->SetNote(place.What);
  button->setMinimumWidth(
      button->fontMetrics().horizontalAdvance(QStringLiteral("Momentary PB: SOME RELAY")));
  Story.Explain(button, item);
  const auto press = [this, place, item](bool closed) {
    if (closed) {
      Story.Press(item, [&] { Close(place, true); });
    } else {
      Close(place, false);
    }
  };
  if (StaysClosed(place.Kind)) {
    button->setCheckable(true);
    connect(button, &QAbstractButton::clicked, this, [press](bool checked) { press(checked); });
  } else {
    connect(button, &QAbstractButton::pressed, this, [press] { press(true); });
    connect(button, &QAbstractButton::released, this, [press] { press(false); });
  }
  Showers.emplace_back([button, place, second, item](const Engine& runner) {
    const bool lit = place.Device == 0 ? runner.Pilot(place.Input)
                                       : runner.DevicePilot(place.Device, place.Input);
    button->SetLamp(lit && !second,
                    lit ? QStringLiteral("pilot lit") : QStringLiteral("pilot dark"));
    const auto contact = static_cast<int>(place.Which);
    const bool closed = place.Device == 0 ? (runner.InputState(place.Input) & contact) != 0
                                          : runner.DeviceInput(place.Device, place.Input);
    if (button->isCheckable()) button->setChecked(closed);
    // A button that somebody presses, or that stays down, shows it.
    const bool unseen = closed && !button->isCheckable() && !button->isDown();
    const QString sign = QString::fromStdString(SignOf(item, runner));
    button->SetSign(sign.isEmpty() && unseen ? QStringLiteral("closed") : sign);
  });
  return button;
}

void SwitchView::AddPhotocell(QVBoxLayout& column, const Box& box) {
  auto* row = new QHBoxLayout;
  column.addLayout(row);
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setRange(0, FullLevel);
  slider->setAccessibleName(QStringLiteral("Light on %1").arg(box.Title));
  slider->setObjectName(QStringLiteral("photocell%1").arg(box.Photocell));
  auto* level = new QLabel(QStringLiteral("0"));
  level->setMinimumWidth(level->fontMetrics().horizontalAdvance(QStringLiteral("0000")));
  level->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  row->addWidget(new QLabel(QStringLiteral("Dark")));
  row->addWidget(slider, 1);
  row->addWidget(new QLabel(QStringLiteral("Bright")));
  row->addWidget(level);
  Story.Explain(slider, {Subject::Kind::Photocell, box.Photocell, 0});
  connect(slider, &QSlider::valueChanged, this, [this, level, device = box.Photocell](int value) {
    level->setNum(value);
    if (value != Source.DeviceLevel(device)) Source.SetDeviceLevel(device, value);
  });
  Showers.emplace_back([slider, device = box.Photocell](const Engine& runner) {
    slider->setEnabled(!runner.FollowsSun());
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
