#include "schedule/astro_clock_form.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QCoreApplication>
#include <QLocale>
#include <QMouseEvent>
#include <QWindow>

#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/stopwatch.h"
#include "panel/words.h"
#include "schedule/rules/city_table.h"
#include "schedule/rules/panel_days.h"
#include "schedule/rules/sun_times.h"
#include "schedule/rules/time_zones.h"
#include "shell/controls/row_grid.h"

namespace {

QStringList CityItems() {
  QStringList items;
  for (const City& city : CityTable) items << ToUnicode(city.CityName);
  return items;
}

}  // namespace

frmT3AstroClockSettings::frmT3AstroClockSettings()
    : ChildForm(Screen::AstroClockSettings, QStringLiteral("Astro Clock Settings")) {}

void frmT3AstroClockSettings::Form_Load() {
  BuildSettings();
  BuildCityPicker();
  AddHint(
      QStringLiteral("Latitude is in degrees north, longitude in degrees west. A city sets both, "
                     "but not the time zone."));
}

void frmT3AstroClockSettings::BuildSettings() {
  fraAstroSettings = AddFrame("fraAstroSettings", Caption());
  new QVBoxLayout(fraAstroSettings);
  auto& panel = PanelRecord;
  cboLatitude =
      AddSetting("cboLatitude", QStringLiteral("Latitude"), panel.Latitude, LatitudeRange.First,
                 NumberItems(LatitudeRange.First, LatitudeRange.Last));
  cboLongitude =
      AddSetting("cboLongitude", QStringLiteral("Longitude"), panel.Longitude, LongitudeRange.First,
                 NumberItems(LongitudeRange.First, LongitudeRange.Last));
  cboTimeZone =
      AddSetting("cboTimeZone", QStringLiteral("Time Zone"), panel.TimeZone, 0, Items(TimeZones));
  auto* column = static_cast<QVBoxLayout*>(fraAstroSettings->layout());
  constexpr int daysTold = 3;
  for (int i = 0; i < daysTold; ++i) {
    auto* line = new Label;
    line->SetLook(Label::Look::Quiet);
    column->addWidget(line);
    lblSun.Add(line, QStringLiteral("lblSun"));
  }
  lblZoneDoubt = AddLabel(column, "lblZoneDoubt", {});
}

ComboBox* frmT3AstroClockSettings::AddSetting(const char* name, const QString& caption,
                                              Int16& field, int first, const QStringList& items) {
  constexpr int captionChars = 12;
  auto* row = new QHBoxLayout;
  row->setAlignment(Qt::AlignLeft);
  static_cast<QVBoxLayout*>(fraAstroSettings->layout())->addLayout(row);
  auto* list = AddList(row, name, caption, captionChars);
  list->SetItems(items);
  list->Click = [this, list, &field, first] {
    field = static_cast<Int16>(list->ListIndex() + first);
    DataChanged = -1;
    ShowSun();
  };
  return list;
}

/// By the place and the zone on show, with daylight saving as it is set.
void frmT3AstroClockSettings::ShowSun() {
  const auto& panel = PanelRecord;
  const PanelDays days(panel);
  const QDate today = Now().date();
  const auto ofYear =
      IsOnTheMap(panel) ? DaysOfSunIn(today.year(), panel.Latitude, panel.Longitude) : std::nullopt;
  const auto tell = [&](int line, const QString& words, QDate day) {
    const auto sun = days.SunOf(day);
    const auto time = [](WallMinute minute) {
      return QLocale::c().toString(
          QTime(0, 0).addSecs(static_cast<int>((minute - FirstMinuteOf(DayOf(minute))) * 60)),
          QStringLiteral("h:mm AP"));
    };
    lblSun(line).SetCaption(QStringLiteral("%1, %2: sunrise %3, sunset %4")
                                .arg(words, QLocale::c().toString(day, QStringLiteral("MMMM d")),
                                     time(sun.Rise.value_or(0)), time(sun.Set.value_or(0))));
  };
  for (int line = 0; line < lblSun.Count(); ++line) lblSun(line).setVisible(ofYear.has_value());
  const QString doubt = ZoneDoubt(panel);
  lblZoneDoubt->SetCaption(doubt);
  lblZoneDoubt->setVisible(!doubt.isEmpty());
  if (!ofYear) return;
  tell(0, QStringLiteral("Today"), today);
  tell(1, QStringLiteral("Shortest day"), ofYear->Shortest);
  tell(2, QStringLiteral("Longest day"), ofYear->Longest);
}

void frmT3AstroClockSettings::BuildCityPicker() {
  cmdFindLatLon =
      Add<Button>(AddRow(), "cmdFindLatLon", QStringLiteral("Find Latitude / Longitude By City"));
  cmdFindLatLon->Click = [this] { cmdFindLatLon_Click(); };

  auto* pick = AddRow();
  constexpr int cityChars = 32;
  txtFindCity = Add<TextBox>(pick, "txtFindCity");
  txtFindCity->UndoesItself = true;
  txtFindCity->setPlaceholderText(QStringLiteral("Search for a city"));
  txtFindCity->setAccessibleName(txtFindCity->placeholderText());
  txtFindCity->setFixedWidth(fontMetrics().averageCharWidth() * cityChars);
  txtFindCity->Change = [this] { txtFindCity_Change(); };
  cboFindLatLon = Add<ComboBox>(pick, "cboFindLatLon");
  cboFindLatLon->setAccessibleName(QStringLiteral("City"));
  cboFindLatLon->SetItems(CityItems());
  cboFindLatLon->SetListIndex(0);
  cmdAccept = Add<Button>(pick, "cmdAccept", QStringLiteral("Accept"));
  cmdAccept->Click = [this] { cmdAccept_Click(); };
  cmdCancel = Add<Button>(pick, "cmdCancel", QStringLiteral("Cancel"));
  cmdCancel->Click = [this] { cmdCancel_Click(); };
  lblNoCity = AddLabel(AddRow(), "lblNoCity", QStringLiteral("No city has this in its name."));

  auto* found = new QCompleter(cboFindLatLon->model(), txtFindCity);
  found->setFilterMode(Qt::MatchContains);
  found->setCaseSensitivity(Qt::CaseInsensitive);
  const auto choose = [this](const QString& city) {
    cboFindLatLon->SetListIndex(cboFindLatLon->findText(city));
  };
  connect(found, qOverload<const QString&>(&QCompleter::highlighted), this, choose);
  connect(found, qOverload<const QString&>(&QCompleter::activated), this, choose);
  txtFindCity->setCompleter(found);
  found->popup()->installEventFilter(this);
  connect(txtFindCity, &QLineEdit::returnPressed, this, [this] {
    if (lblNoCity->isHidden()) cmdAccept->click();
  });
}

/// A press beside the cities that are offered closes them, and is no less a press on what lies
/// there.
bool frmT3AstroClockSettings::eventFilter(QObject* watched, QEvent* event) {
  auto* offered = qobject_cast<QAbstractItemView*>(watched);
  if (!offered || event->type() != QEvent::MouseButtonPress || offered->underMouse()) {
    return ChildForm::eventFilter(watched, event);
  }
  offered->hide();
  const auto* press = static_cast<QMouseEvent*>(event);
  const QPointF at = press->globalPosition();
  QWindow* under = window()->windowHandle();
  if (under->geometry().contains(at.toPoint())) {
    QCoreApplication::postEvent(
        under, new QMouseEvent(QEvent::MouseButtonPress, under->mapFromGlobal(at), at,
                               press->button(), press->buttons(), press->modifiers()));
  }
  return true;
}

void frmT3AstroClockSettings::Form_Activate() {
  cboLatitude->SetListIndex(PanelRecord.Latitude - LatitudeRange.First);
  cboLongitude->SetListIndex(PanelRecord.Longitude - LongitudeRange.First);
  cboTimeZone->SetListIndex(PanelRecord.TimeZone);
  ShowSun();
  RestoreControls();
}

void frmT3AstroClockSettings::SetPicking(bool picking) {
  fraAstroSettings->setEnabled(!picking);
  cmdFindLatLon->setEnabled(!picking);
  const std::array<QWidget*, 4> pickingControls = {txtFindCity, cboFindLatLon, cmdAccept,
                                                   cmdCancel};
  for (QWidget* control : pickingControls) control->setVisible(picking);
  txtFindCity->clear();
  lblNoCity->hide();
  if (picking) {
    txtFindCity->setFocus();
  } else {
    cmdFindLatLon->setFocus();
  }
}

void frmT3AstroClockSettings::cmdFindLatLon_Click() {
  SetPicking(true);
}

void frmT3AstroClockSettings::RestoreControls() {
  SetPicking(false);
}

void frmT3AstroClockSettings::txtFindCity_Change() {
  const QString part = txtFindCity->Text();
  const int first = cboFindLatLon->findText(part, Qt::MatchContains);
  lblNoCity->setVisible(first < 0);
  if (first >= 0 && !part.isEmpty()) cboFindLatLon->SetListIndex(first);
}

void frmT3AstroClockSettings::cmdAccept_Click() {
  const City& city = CityTable.at(static_cast<std::size_t>(cboFindLatLon->ListIndex()));
  cboLatitude->SetListIndex(city.CityLatitude - LatitudeRange.First);
  cboLongitude->SetListIndex(city.CityLongitude - LongitudeRange.First);
  DataChanged = -1;
  RestoreControls();
}

void frmT3AstroClockSettings::cmdCancel_Click() {
  RestoreControls();
}

/// An open list takes Escape for itself.
void frmT3AstroClockSettings::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && cmdCancel->isVisible()) {
    cmdCancel->click();
  } else {
    ChildForm::keyPressEvent(event);
  }
}
