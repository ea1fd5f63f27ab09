#include "config/fennlink_pilots_form.h"

#include "panel/code_page.h"
#include "panel/fennlink_types.h"
#include "panel/input_actions.h"
#include "panel/live_project.h"
#include "panel/pilot_code.h"
#include "panel/pilot_source.h"
#include "shell/controls/field_column.h"
#include "shell/shell.h"

frmT3FennlinkPilots::frmT3FennlinkPilots()
    : ChildForm(Screen::FennlinkPilots, QStringLiteral("Fennlink Pilots")) {}

void frmT3FennlinkPilots::Form_Load() {
  auto* row = AddRow();
  AddLabel(row, "lblFennlinkDevice", QStringLiteral("Device"));
  cboFennlinkDevice = Add<DeviceList>(row, "cboFennlinkDevice");
  cboFennlinkDevice->Click = [this] { cboFennlinkDevice_Click(); };
  AddSelector(cboFennlinkDevice);
  row->addWidget(cboFennlinkDevice->ChooseHint());
  lblNoPilots = AddLabel(row, "lblNoPilots", QStringLiteral("A photocell has no pilots."));
  lblNoPilots->SetLook(Label::Look::Quiet);

  grid = new RowGrid(DeviceInputCount, QStringLiteral("Input "));
  lblInputName = grid->AddNames("lblInputName", 14);
  const QStringList sources = Items(FennlinkPilotSources);
  lblPilotSource.Add(
      this, grid,
      {.Cells = ControlOf<&FennlinkRecord::DevicePilot>(),
       .List = "cboNewSource",
       .Look = {.Chars = 16, .HeaderText = QStringLiteral("Source"), .Words = sources},
       .Items = sources,
       .Item = [this](int input) { return PilotSource(Pilot(input)); },
       .Store = [this](int input,
                       int item) { Pilot(input) = WithPilotSource(Pilot(input), item); }},
      &frmT3FennlinkPilots::ShowPilotConfiguration, &frmT3FennlinkPilots::lblPilotSource_Click,
      &frmT3FennlinkPilots::cboNewSource_Click);
  const QStringList states{QStringLiteral("On"), QStringLiteral("Off")};
  lblPilotNumber.Add(
      this, grid,
      {.Cells = "lblPilotNumber",
       .List = "cboNewNumber",
       .Look = {.Chars = 8, .HeaderText = QStringLiteral("Number")},
       .ItemsOf = [this, states](
                      int input) { return IsStatic(input) ? states : NumberItems(1, ItemCount); },
       .Item = [this](int input) { return PilotNumber(Pilot(input)); },
       .Store =
           [this](int input, int item) {
             Int16& pilot = Pilot(input);
             pilot = IsStatic(input) ? static_cast<Int16>(item == 0) : WithPilotNumber(pilot, item);
           },
       .Text =
           [this](int input) {
             const Int16 pilot = Pilot(input);
             if (!IsStatic(input)) return QStringLiteral(" %1").arg(PilotNumber(pilot) + 1);
             return (pilot & 1) != 0 ? QStringLiteral(" On") : QStringLiteral(" Off");
           },
       .Note = [this](
                   int input,
                   int item) { return PilotName(LiveProject, PilotSource(Pilot(input)), item); }},
      &frmT3FennlinkPilots::ShowPilotConfiguration, &frmT3FennlinkPilots::lblPilotNumber_Click,
      &frmT3FennlinkPilots::cboNewNumber_Click);
  AddWidget(grid);

  auto* buttons = AddRow();
  cmdAutoMapThisFL = Add<Button>(buttons, "cmdAutoMapThisFL",
                                 QStringLiteral("Auto Map Pilots For This Fennlink Device"));
  cmdAutoMapThisFL->Click = [this] { cmdAutoMapThisFL_Click(); };
  cmdAutoMapAllFL = Add<Button>(buttons, "cmdAutoMapAllFL",
                                QStringLiteral("Auto Map Pilots For All Fennlink Devices"));
  cmdAutoMapAllFL->Click = [this] { cmdAutoMapAllFL_Click(); };

  AddHint(
      QStringLiteral("Auto map lets each pilot follow the preset of its input, else the first "
                     "relay that the input acts on, else the first group."));
}

void frmT3FennlinkPilots::Form_Activate() {
  const int remembered = SelectedDevice;
  cboFennlinkDevice->Fill();
  cboFennlinkDevice->SetListIndex(remembered);
  ShowPilotConfiguration();
}

void frmT3FennlinkPilots::ShowPilotConfiguration() {
  const FennlinkRecord& device = FennlinkRecords(SelectedDevice);
  const bool hasPilots = !FennlinkInputKinds(device.DeviceType).empty();
  grid->ShowRows(hasPilots ? FennlinkDevice(device.DeviceType).InputCount : 0);
  lblNoPilots->setVisible(device.DeviceType == DeviceTypePhotocell);
  cmdAutoMapThisFL->setVisible(hasPilots);
  cmdAutoMapAllFL->setVisible(hasPilots);
  for (int input = 0; input < DeviceInputCount; ++input) {
    lblInputName(input).SetCaption(u' ' + DeviceInputText(ToUnicode(device.DeviceName), input));
    lblPilotNumber(input).SetAct(IsStatic(input) ? CellAct::Cycles : CellAct::OpensList);
  }
  lblPilotSource.Show(DeviceInputCount);
  lblPilotNumber.Show(DeviceInputCount);
}

bool frmT3FennlinkPilots::IsStatic(int input) const {
  return PilotSource(Pilot(input)) == PilotStatic;
}

void frmT3FennlinkPilots::cboFennlinkDevice_Click() {
  SelectedDevice = cboFennlinkDevice->ListIndex();
  ShowPilotConfiguration();
}

void frmT3FennlinkPilots::AutoMapAnInput() {
  FennlinkRecord& device = FennlinkRecords(AutoMapDevice);
  device.DevicePilot(AutoMapInput) = 0;
  device.DeviceOffLevel(AutoMapInput) = 0;
  device.DevicePilot(AutoMapInput) = AutoMappedPilot(device, AutoMapInput);
}

void frmT3FennlinkPilots::AutoMapInputs(int device) {
  AutoMapDevice = static_cast<Int16>(device);
  for (AutoMapInput = 0; AutoMapInput < DeviceInputCount; ++AutoMapInput) AutoMapAnInput();
}

void frmT3FennlinkPilots::cmdAutoMapThisFL_Click() {
  const Hourglass hourglass;
  AutoMapInputs(SelectedDevice);
  ShowPilotConfiguration();
}

void frmT3FennlinkPilots::cmdAutoMapAllFL_Click() {
  const MsgAnswer answer =
      MsgBox(QStringLiteral("This Will Auto Map The Pilots For ALL Fennlink Devices.\nContinue?"),
             MsgIcon::Question, QStringLiteral("Auto Map Verify"), MsgButtons::YesNo);
  const QString title = QStringLiteral("Auto Map");
  if (answer != MsgAnswer::Yes) {
    MsgBox(QStringLiteral("Auto Map Canceled"), MsgIcon::None, title);
    return;
  }
  {
    const Hourglass hourglass;
    for (int device = 1; device <= DeviceCount; ++device) {
      const Int16 type = FennlinkRecords(device).DeviceType;
      if (type >= 1 && type < DeviceTypePhotocell) AutoMapInputs(device);
    }
    ShowPilotConfiguration();
  }
  MsgBox(QStringLiteral("Auto Map Complete"), MsgIcon::None, title);
}

void frmT3FennlinkPilots::lblPilotNumber_Click(int index) {
  if (!IsStatic(index)) {
    lblPilotNumber.Open(index);
    return;
  }
  CloseLists();
  Pilot(index) = Pilot(index) == 0 ? 1 : 0;
  ShowPilotConfiguration();
}
