#pragma once

#include <QString>
#include <bitset>

#include "panel/panel_record.h"
#include "panel/words.h"

/// A bit a time zone, by its code.
using ZoneSet = std::bitset<TimeZones.size()>;

/// The time zones that a place can have: those of the states of the cities around it, or, far from
/// all of them, those that reach its longitude. Where none does, those that are at most two
/// hours off the sun.
ZoneSet PlausibleZones(int latitude, int longitudeWest);

/// The place that a new panel stands at until its own is set.
bool IsNewPanelsPlace(const PanelRecordType& panel);
/// Whether the editor's lists have the place.
bool IsOnTheMap(const PanelRecordType& panel);

/// That the time zone cannot be that of the place; empty where it can, or the place is not known.
QString ZoneDoubt(const PanelRecordType& panel);
