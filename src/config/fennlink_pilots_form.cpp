#include "config/fennlink_pilots_form.h"

#include "panel/code_page.h"
#include "panel/fennlink_types.h"
#include "panel/input_actions.h"
#include "panel/live_project.h"
#include "panel/pilot_code.h"
#include "panel/pilot_source.h"
#include "panel/program_state.h"
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

  grid = new RowGrid(DeviceInputCount, QStringLiteral("Input "));
  lblInputName = grid->AddNames("lblInputName", 14);
  lblPilotSource = grid->Add<Label>("lblPilotSource", {.Chars = 16,
                                                       .HeaderText = QStringLiteral("Source"),
                                                       .Act = CellAct::OpensList,
                                                       .Words = Items(FennlinkPilotSources)});
  lblPilotNumber =
      grid->Add<Label>("lblPilotNumber", {.Chars = 8,
                                          .HeaderText = QStringLiteral("Number"),
                                          .Act = CellAct::OpensList,
                                          .Words = {QStringLiteral("On"), QStringLiteral("Off")}});
  lblPilotSource.OnEach(&Label::Click, this, &frmT3FennlinkPilots::lblPilotSource_Click);
  lblPilotNumber.OnEach(&Label::Click, this, &frmT3FennlinkPilots::lblPilotNumber_Click);
  AddWidget(grid);

  auto* buttons = AddRow();
  cmdAutoMapThisFL = Add<Button>(buttons, "cmdAutoMapThisFL",
                                 QStringLiteral("Auto Map Pilots For This Fennlink Device"));
  cmdAutoMapThisFL->Click = [this] { cmdAutoMapThisFL_Click(); };
  cmdAutoMapAllFL = Add<Button>(buttons, "cmdAutoMapAllFL",
                                QStringLiteral("Auto Map Pilots For All Fennlink Devices"));
  cmdAutoMapAllFL->Click = [this] { cmdAutoMapAllFL_Click(); };

  cboNewSource = new InPlaceList(this, "cboNewSource", Items(FennlinkPilotSources));
  cboNewSource->Click = [this] { cboNewSource_Click(); };
  cboNewNumber = new InPlaceList(this, "cboNewNumber", NumberItems(1, ItemCount));
  cboNewNumber->Click = [this] { cboNewNumber_Click(); };
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
  cmdAutoMapThisFL->setVisible(hasPilots);
  cmdAutoMapAllFL->setVisible(hasPilots);
  for (int input = 0; input < DeviceInputCount; ++input) {
    lblInputName(input).SetCaption(u' ' + DeviceInputText(ToUnicode(device.DeviceName), input));
    const Int16 pilot = Pilot(input);
    const int source = PilotSource(pilot);
    lblPilotSource(input).SetCaption(cboNewSource->ValueText(source));
    lblPilotNumber(input).SetAct(source == PilotStatic ? CellAct::Cycles : CellAct::OpensList);
    if (source == PilotStatic) {
      lblPilotNumber(input).SetCaption((pilot & 1) != 0 ? QStringLiteral(" On")
                                                        : QStringLiteral(" Off"));
    } else {
      lblPilotNumber(input).SetCaption(QStringLiteral(" %1").arg(PilotNumber(pilot) + 1));
    }
  }
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

void frmT3FennlinkPilots::lblPilotSource_Click(int index) {
  SelectedRow = static_cast<Int16>(index);
  cboNewSource->Open(lblPilotSource(index), PilotSource(Pilot(index)));
}

void frmT3FennlinkPilots::lblPilotNumber_Click(int index) {
  SelectedRow = static_cast<Int16>(index);
  Int16& pilot = Pilot(index);
  if (PilotSource(pilot) == PilotStatic) {
    CloseLists();
    pilot = pilot == 0 ? 1 : 0;
    ShowPilotConfiguration();
  } else {
    cboNewNumber->Open(lblPilotNumber(index), PilotNumber(pilot));
  }
}

void frmT3FennlinkPilots::cboNewSource_Click() {
  Int16& pilot = Pilot(SelectedRow);
  pilot = WithPilotSource(pilot, cboNewSource->ListIndex());
  cboNewSource->Close();
  ShowPilotConfiguration();
  DataChanged = -1;
}

void frmT3FennlinkPilots::cboNewNumber_Click() {
  Int16& pilot = Pilot(SelectedRow);
  pilot = WithPilotNumber(pilot, cboNewNumber->ListIndex());
  cboNewNumber->Close();
  ShowPilotConfiguration();
  DataChanged = -1;
}
