#include "panel/fennlink_record.h"

FennlinkRecordsType FennlinkRecords;
