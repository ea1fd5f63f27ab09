#pragma once

#include <QString>

#include "panel/project.h"

/// Has a timer switch what people write: "OFFICES and HALLS on, GATE off; activates NIGHT", "-GATE"
/// for off, by names, by their beginnings where no other name begins so, or by codes ("GROUP 03",
/// "R8"); a beginning is first looked for among groups and presets. Names alone are turned as the
/// timer turns all else, on if it turns nothing; "on" or "off" alone is for all that it switches,
/// "-" for nothing. Dimmers stay. For other texts nothing is changed, and why is what it gives.
QString PutTypedActs(Project& project, int timer, const QString& typed);

/// Has a timer turn off what it turns on, and the other way round.
void TurnOtherWay(Project& project, int timer);
