#include "dimmer/dimmer_relay_control_form.h"

#include <QPainter>
#include <algorithm>

#include "dimmer/dimmer_lists.h"
#include "panel/code_page.h"
#include "panel/format.h"
#include "panel/live_dimmers.h"
#include "panel/live_project.h"
#include "shell/controls/editor_rows.h"

namespace {

const QString LitWord = QStringLiteral("Included");
const QString DarkWord = QStringLiteral("Not included");

}  // namespace

void IncludePicture::SetLit(bool lit) {
  SetChecked(lit);
  SetCaption(lit ? LitWord : DarkWord);
  update();
}

void IncludePicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (underMouse()) DrawHoverShade(painter, *this);
  if (hasFocus()) DrawFocusRing(painter, *this);
  const double size = std::min(width(), height()) - 8;
  QRectF lamp(0, 0, size, size);
  lamp.moveCenter(QRectF(rect()).center());
  painter.setPen(QPen(palette().color(QPalette::Text), 1.5));
  painter.setBrush(Lit() ? QColor(Colors::Green) : QColor(Qt::transparent));
  painter.drawEllipse(lamp);
}

frmT3DimmerRelayControl::frmT3DimmerRelayControl()
    : ChildForm(Screen::DimmerRelayControl, QStringLiteral("Dimmer Output / Relay Control")) {}

void frmT3DimmerRelayControl::Form_Load() {
  auto* row = AddRow();
  cboDDev = AddDeviceList(row);
  cboDDev->Click = [this] { cboDDev_Click(); };
  cboDOut = AddOutputList(row);
  AddSelector(cboDDev);
  AddSelector(cboDOut);
  cboDOut->Click = [this] { cboDOut_Click(); };
  cboOnLevel = AddTitledList(row, "cboOnLevel", "On Level", PercentItems("On Level"));
  cboOnLevel->Click = [this] { cboOnLevel_Click(); };
  cboOffLevel = AddTitledList(row, "cboOffLevel", "Off Level", PercentItems("Off Level"));
  cboOffLevel->Click = [this] { cboOffLevel_Click(); };

  lblNotEnabled =
      AddLabel(AddRow(), "lblNotEnabled",
               QStringLiteral("It is not enabled: check Device Enabled in Dimmer Outputs."));
  lblNotEnabled->SetLook(Label::Look::Quiet);

  frmConfig = new RowGrid(ItemCount, QStringLiteral("Relay "));
  frmConfig->setObjectName(QStringLiteral("frmConfig"));
  imgInclude = frmConfig->Add<IncludePicture>("imgInclude", {.Chars = 1,
                                                             .Act = CellAct::Toggles,
                                                             .Words = {DarkWord, LitWord},
                                                             .Put = [this](int relay, int) {
                                                               ShiftDown = 0;
                                                               IncCnt(relay);
                                                             }});
  lblRelayName = frmConfig->AddNames("lblRelayName", 16);
  imgInclude.OnEach(&Label::Click, this, &frmT3DimmerRelayControl::imgInclude_Click);
  imgInclude.OnEach(&Label::MouseDown, this, &frmT3DimmerRelayControl::Row_MouseDown);
  lblRelayName.OnEach(&Label::Click, this, &frmT3DimmerRelayControl::lblRelayName_Click);
  lblRelayName.OnEach(&Label::MouseDown, this, &frmT3DimmerRelayControl::Row_MouseDown);
  for (int relay = 0; relay < ItemCount; ++relay) {
    imgInclude(relay).setFixedWidth(imgInclude(relay).sizeHint().width());
    // One stop of the keyboard a row is enough: the picture is it.
    lblRelayName(relay).ensurePolished();
    lblRelayName(relay).setFocusPolicy(Qt::NoFocus);
  }
  AddWidget(frmConfig);
  AddHint(
      QStringLiteral("A click with Shift held, or Shift+Space, gives the last change to all "
                     "relays from the last one to this."));
}

void frmT3DimmerRelayControl::Form_Activate() {
  for (int relay = 0; relay < ItemCount; ++relay) {
    const QString name = ToUnicode(PanelRecord.RelayName(relay));
    lblRelayName(relay).SetCaption(name + u' ');
    lblRelayName(relay).setToolTip(QStringLiteral("Relay %1 : %2").arg(TwoDigits(relay + 1), name));
  }
  frmConfig->ShowRows(PanelIOCount());
  Dev = Out = 0;
  for (ComboBox* list : {cboDDev, cboDOut}) list->setCurrentIndex(0);
  ShowControl();
}

void frmT3DimmerRelayControl::ShowControl() {
  const bool enabled = DimGetEnabled(Dev) != 0;
  frmConfig->setVisible(enabled);
  lblNotEnabled->setVisible(!enabled);
  cboOnLevel->setVisible(enabled);
  cboOffLevel->setVisible(enabled);
  ShownValues shown;
  shown.Index(*cboOnLevel, [this] { return DimGetOnLevel(Dev, Out); });
  shown.Index(*cboOffLevel, [this] { return DimGetOffLevel(Dev, Out); });
  for (Int16 relay = 0; relay < ItemCount; ++relay) {
    imgInclude(relay).SetLit(DimGetRelay(Dev, Out, relay) != 0);
  }
  shown.TellFailure();
}

void frmT3DimmerRelayControl::Row_MouseDown(int, int, int shift) {
  ShiftDown = shift & 1;
}

void frmT3DimmerRelayControl::IncCnt(int index) {
  const auto relay = static_cast<Int16>(index);
  if (ShiftDown == 0) {
    DimSetRelay(Dev, Out, relay, DimGetRelay(Dev, Out, relay) == 0 ? -1 : 0);
    LastValue = DimGetRelay(Dev, Out, relay);
  } else {
    const auto [first, last] = std::minmax(LastRelay, relay);
    for (Int16 i = first; i <= last; ++i) DimSetRelay(Dev, Out, i, LastValue);
  }
  LastRelay = relay;
  ShowControl();
}

void frmT3DimmerRelayControl::cboDDev_Click() {
  Dev = static_cast<Int16>(cboDDev->ListIndex());
  ShowControl();
}

void frmT3DimmerRelayControl::cboDOut_Click() {
  Out = static_cast<Int16>(cboDOut->ListIndex());
  ShowControl();
}

void frmT3DimmerRelayControl::cboOnLevel_Click() {
  DimSetOnLevel(Dev, Out, static_cast<Int16>(cboOnLevel->ListIndex()));
}

void frmT3DimmerRelayControl::cboOffLevel_Click() {
  DimSetOffLevel(Dev, Out, static_cast<Int16>(cboOffLevel->ListIndex()));
}
