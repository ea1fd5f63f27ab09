#pragma once

#include <QStackedLayout>

#include "panel/time_values.h"
#include "shell/controls/child_form.h"

/// When each timer runs: its kind of time, the time, and its weekdays or its one date of the year.
class frmT3TimersConfigure : public ChildForm {
 public:
  frmT3TimersConfigure();
  void Form_Load() override;
  void Form_Activate() override;

  void ShowTimerSettings();
  void cboTimerNumber_Click();
  void optTimeType_Click(int index);
  void optDaysType_Click(int index);
  void chkDays_Click(int index);
  void cboNormalTimeHour_Click();
  void cboNormalTimeAmPm_Click() { cboNormalTimeHour_Click(); }
  void cboNormalTimeMinute_Click();
  void cboAstroType_Click() { StoreEvent(*cboAstroType); }
  void cboMinuteFromAstro_Click() { StoreOffset(*cboMinuteFromAstro); }
  void cboOpenCloseType_Click() { StoreEvent(*cboOpenCloseType); }
  void cboMinuteFromOpenClose_Click() { StoreOffset(*cboMinuteFromOpenClose); }
  void cboHolidayMonth_Click();
  void cboHolidayDate_Click();
  void lblTimerTime_Click();
  void lblTimerActs_Click(int index);

 private:
  using Handler = void (frmT3TimersConfigure::*)();

  void AddNext();
  void BuildTimeFrame();
  void BuildDayFrame();
  ComboBox* AddTimerList(QBoxLayout* row, const char* name, const QString& title,
                         const QStringList& items, Handler click);
  int SelectedTimer() const { return cboTimerNumber->ListIndex(); }
  void ShowRelativeTime(ComboBox& type, ComboBox& minutes);
  void StoreEvent(const ComboBox& list);
  void StoreOffset(const ComboBox& list);
  TimerTimeValue TimeOfTimer() const;
  void StoreTime(TimerTimeValue time);
  void ShowInWords();
  void ShowNext();

  Int16 Loading = 0;      ///< -1 while the lists are filled; silences their handlers.
  Int16 ShowingTime = 0;  ///< -1 while the hour's two lists disagree; silences these two.
  ComboBox* cboTimerNumber = nullptr;
  ControlArray<OptionButton> optTimeType;
  QStackedLayout* timeLists = nullptr;  ///< One page for each kind of time.
  ComboBox* cboNormalTimeHour = nullptr;
  ComboBox* cboNormalTimeMinute = nullptr;
  ComboBox* cboNormalTimeAmPm = nullptr;
  ComboBox* cboAstroType = nullptr;
  ComboBox* cboMinuteFromAstro = nullptr;
  ComboBox* cboOpenCloseType = nullptr;
  ComboBox* cboMinuteFromOpenClose = nullptr;
  ControlArray<OptionButton> optDaysType;
  QStackedLayout* dayLists = nullptr;  ///< The eight boxes, or the date of the year.
  ControlArray<CheckBox> chkDays;
  ComboBox* cboHolidayMonth = nullptr;
  ComboBox* cboHolidayDate = nullptr;
  Label* lblTimerInWords = nullptr;
  Label* lblTimerNext = nullptr;     ///< When it fires next, by this computer's clock.
  Label* lblTimerTime = nullptr;     ///< That time, where it is set on another screen.
  ControlArray<Label> lblTimerActs;  ///< What it does then; each leads to its screen.
};
