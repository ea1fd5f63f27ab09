#include "panel/live_project.h"

Project LiveProject;

Int16 PanelIOCount() {
  return PanelIOCount(PanelRecord);
}
