#pragma once

#include <QString>

#include "panel/project.h"

/// Has a timer switch what people write: "OFFICES and HALLS on, GATE off; activates NIGHT", by
/// names or codes ("GROUP 03", "R8"), "on" or "off" alone for all that it switches, "-" for
/// nothing. Dimmers stay. False, and nothing is changed, for other texts.
bool PutTypedActs(Project& project, int timer, const QString& typed);
