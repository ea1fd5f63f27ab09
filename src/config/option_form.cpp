#include "config/option_form.h"

#include "panel/code_page.h"
#include "panel/live_project.h"
#include "panel/program_state.h"
#include "panel/words.h"

struct OptionScreen {
  Screen Name;
  QString Caption;
  QString FrameCaption;
  const char* OptionName;
  WordTable Options;
  std::string_view OptionLead;
  Int16 PanelRecordType::*Field;  ///< Null: the choice is not stored.
  bool IsFlag;                    ///< The second option is stored as -1, any other as its index.
};

namespace {

const auto OptionScreens = std::to_array<OptionScreen>({
    {Screen::PhotocellFilter, QStringLiteral("Photocell Filter"),
     QStringLiteral("Photocell Filter"), "optPhotocellFilter", PhotocellFilters, "",
     &PanelRecordType::PhotocellFilter, true},
    {Screen::RTCSource, QStringLiteral("RTC Source"), QStringLiteral("Real Time Clock Source"),
     "optRTCSource", RTCSources, "", &PanelRecordType::RTCSource, false},
    {Screen::ConfigureTimedOn, QStringLiteral("Configure Timed-On"),
     QStringLiteral("Configure Timed On Operation"), "optTimedOnOperation", TimedOnOperations,
     TimedOnOperationLead, &PanelRecordType::TimedOnOperation, true},
    {Screen::OffHoursSweepInterval, QStringLiteral("Off Hours Sweep Interval"),
     QStringLiteral("Off Hours Sweep Interval"), "optOffHoursSweepInterval", OffHoursSweepIntervals,
     "", &PanelRecordType::OffHoursSweepInterval, false},
    {Screen::RelayDrive, QStringLiteral("Relay Drive"), QStringLiteral("Relay Drive"),
     "optRelayDrive", RelayDrives, "", nullptr, false},
});

}  // namespace

OptionForm::OptionForm(Screen name)
    : ChildForm(name, ScreenRow(OptionScreens, name).Caption),
      Row(ScreenRow(OptionScreens, name)) {}

void OptionForm::Form_Load() {
  auto* options = new QVBoxLayout(AddFrame("fraOptions", Row.FrameCaption));
  for (const std::string_view word : Row.Options) {
    QString text = ToUnicode(word);
    if (!Row.OptionLead.empty()) text.prepend(ToUnicode(Row.OptionLead) + u' ');
    auto* option = new OptionButton(text);
    options->addWidget(option, 0, Qt::AlignLeft);
    optOption.Add(option, QString::fromLatin1(Row.OptionName));
  }
  optOption.OnEach(&OptionButton::Click, this, &OptionForm::optOption_Click);
}

void OptionForm::Form_Activate() {
  if (!Row.Field) return;
  Int16& field = PanelRecord.*Row.Field;
  const Int16 stored = field;
  const int index = Row.IsFlag ? (stored != 0 ? 1 : 0) : stored;
  if (index >= 0 && index < optOption.Count()) optOption(index).Select();
  // A flag may be set by another value than -1; it stays until the user chooses.
  field = stored;
}

void OptionForm::optOption_Click(int index) {
  if (Row.Field) {
    PanelRecord.*Row.Field = static_cast<Int16>(Row.IsFlag && index > 0 ? -1 : index);
  }
  DataChanged = -1;
}
