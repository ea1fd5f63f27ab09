#include "schedule/rules/timer_moments.h"

#include <gtest/gtest.h>

#include <random>

#include "panel/defaults.h"
#include "panel/dimmer_fields.h"
#include "panel/panel_image.h"
#include "schedule/rules/city_table.h"
#include "simulator/engine/engine.h"

namespace {

/// Projects of timers of every kind, the same ones for the same seed.
class RandomTimers {
 public:
  explicit RandomTimers(unsigned seed) : random_(seed) {}

  int Below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random_); }
  bool OneIn(int chances) { return Below(chances) == 0; }

  Project Make() {
    Project project = NewProject();
    PanelRecordType& panel = project.Panel;
    SetClock(panel);
    for (int day = 0; day < 7; ++day) {
      panel.NormalOpenTime(day) = Quarter();
      panel.NormalCloseTime(day) = Quarter();
    }
    for (int dates = Below(20); dates > 0; --dates) {
      const int month = Below(12);
      const int date = Below(31);
      panel.DateOpenTime(month, date) = Quarter();
      panel.DateCloseTime(month, date) = OneIn(9) ? NoEntry : Quarter();
    }
    project.Dimmers(DimmerElement(dim::DeviceEnabled, {0, 0}, 1)) = -1;
    for (int timer = 0; timer < ItemCount; ++timer) SetTimer(project, timer);
    return project;
  }

 private:
  Int16 Number(int least, int count) { return static_cast<Int16>(least + Below(count)); }
  Int16 Quarter() { return OneIn(20) ? Number(96, 4) : Number(0, QuarterHoursPerDay); }

  void SetClock(PanelRecordType& panel) {
    if (OneIn(2)) {
      const City& city = CityTable.at(static_cast<std::size_t>(Below(260)));
      panel.Latitude = city.CityLatitude;
      panel.Longitude = city.CityLongitude;
    } else {
      panel.Latitude = Number(20, 46);
      panel.Longitude = Number(50, 101);
    }
    panel.TimeZone = Number(0, 5);
    panel.DSTEnabled = OneIn(4) ? Int16{0} : Int16{-1};
    if (OneIn(2)) return;
    panel.DSTStartWeek = Number(1, 5);
    panel.DSTStartMonth = Number(1, 12);
    panel.DSTEndWeek = Number(1, 5);
    panel.DSTEndMonth = Number(1, 12);
  }

  void SetTimer(Project& project, int timer) {
    PanelRecordType& panel = project.Panel;
    if (OneIn(3)) {
      panel.TimerTimeType(timer) = Number(0, 24);
      panel.TimerTime(timer) = Number(0, OneIn(9) ? 62 : 60);
    } else {
      const int offset = OneIn(4) ? 0 : Below(LargestTimerOffset + 1);
      const auto event = static_cast<Int16>(24 + 32 * Below(8));
      const TimerTimeValue time = WithOffset({event, 0}, offset);
      panel.TimerTimeType(timer) = time.Type;
      panel.TimerTime(timer) = time.Time;
    }
    panel.TimerDays(timer) = Number(0, 256);
    if (OneIn(6)) {
      panel.TimerHolidayMonth(timer) = Number(1, 12);
      panel.TimerHolidayDate(timer) = Number(1, 31);
    }
    switch (Below(5)) {
      case 0:
        panel.TimerGroupControl(timer, Below(ItemCount)) = Number(1, 2);
        break;
      case 1:
        panel.TimerPresetControl(timer, Below(ItemCount)) = -1;
        break;
      case 2: {
        const OutputPlace output{1, Number(0, DimmerOutputCount)};
        const int slot = Below(ControlSlotCount);
        SetDimmerValue(project.Dimmers, dim::ControlType, output, ControlTimer, slot);
        SetDimmerValue(project.Dimmers, dim::ControlNumber, output, static_cast<Int16>(timer),
                       slot);
        break;
      }
      case 3:
        panel.TimerRelayControl(timer, Below(ItemCount)) = Number(0, 3);
        break;
      default:
        panel.TimerRelayControl(timer, Below(ItemCount)) = Number(1, 2);
        break;
    }
  }

  std::minstd_rand random_;
};

/// What the simulated panel does, by its own reckoning.
std::vector<TimerMoment> Rehearsed(const Project& project, QDate first, QDate last) {
  simulator::PanelMemory memory;
  memory.SetContent(FreshPanelMemory(project));
  simulator::Engine engine(memory);
  std::vector<TimerMoment> moments;
  engine.SetSink([&](const simulator::Row& row) {
    if (row.Cause.What != simulator::Subject::Kind::Timer) return;
    if (row.What != simulator::Change::Fires || row.Item.What != simulator::Subject::Kind::None) {
      return;
    }
    moments.push_back({engine.Days().Wall(row.Time) / simulator::MinuteMs, row.Cause.Number});
  });
  engine.PowerOn(engine.Days().FromWallMinute(FirstMinuteOf(first)));
  engine.AdvanceTo(engine.Days().FromWallMinute(FirstMinuteOf(last.addDays(1))) - 1);
  return moments;
}

std::string Told(const TimerMoment& moment) {
  return "TIMER " + std::to_string(moment.Timer + 1) + " on " +
         moment.Day().toString(Qt::ISODate).toStdString() + " at minute " +
         std::to_string(moment.MinuteOfDay());
}

/// What the two differ in first; empty for none.
std::string FirstDifference(const std::vector<TimerMoment>& panel,
                            const std::vector<TimerMoment>& reckoned) {
  const auto [is, told] =
      std::mismatch(panel.begin(), panel.end(), reckoned.begin(), reckoned.end());
  std::string difference;
  if (is != panel.end()) difference += "the panel: " + Told(*is) + ' ';
  if (told != reckoned.end()) difference += "reckoned: " + Told(*told);
  return difference;
}

TEST(TimerMomentsTest, ThePanelFiresTheSameTimersAtTheSameTimesAllYear) {
  bool given = false;
  const int wanted = qEnvironmentVariableIntValue("TAMBERLOOM_TIMER_PROJECTS", &given);
  const unsigned projects = given ? static_cast<unsigned>(wanted) : 20;
  for (unsigned seed = 1; seed <= projects; ++seed) {
    RandomTimers random(seed);
    const Project project = random.Make();
    const QDate first(2001 + random.Below(98), 1, 1);
    const QDate last = first.addYears(1).addDays(-1);
    const auto panel = Rehearsed(project, first, last);
    const auto reckoned = TimerMoments(project).Between(first, last);
    EXPECT_GT(panel.size(), 1000U);
    ASSERT_EQ(FirstDifference(panel, reckoned), "") << "seed " << seed;
  }
}

TEST(TimerMomentsTest, TheNextTimeIsTheFirstThatComes) {
  RandomTimers random(7);
  const Project project = random.Make();
  const TimerMoments timers(project);
  const QDate day(2027, 5, 1);
  const auto coming = timers.Between(day, day.addYears(8));
  for (int timer = 0; timer < ItemCount; ++timer) {
    for (const int minute : {0, 437, 1439}) {
      const auto first = std::find_if(coming.begin(), coming.end(), [&](const TimerMoment& one) {
        return one.Timer == timer && one.At > FirstMinuteOf(day) + minute;
      });
      const auto next = timers.Next(timer, day.startOfDay(Qt::UTC).addSecs(minute * 60 + 59));
      EXPECT_EQ(next ? Told(*next) : "", first != coming.end() ? Told(*first) : "");
    }
  }
}

}  // namespace
