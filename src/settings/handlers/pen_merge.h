// How staged attributes become a pen's record.
//
// The service announces a pen and its Bluetooth module attribute by attribute, in any order. The
// attributes are staged until they name a record of the pen table, and are then merged into it.
#pragma once

#include "KorvuTabletSettingsAPI.h"
#include "settings/settings_model.h"

namespace KorvuISD {

// Merges the staged pen attributes, once serial number and pen id are both known. A change of a
// known pen is reported; a new pen is not. Then forgets all that was staged but the serial number,
// so that a change of proximity counts when the pen id follows it.
void MergePen(SettingsModel& model);

// Merges the module's identity and connection into the record of the pen with the module's serial
// number, and reports that record. Waits, and returns false, while serial number or module id or
// that record is missing, and from API version 3 on while the module is not connected.
bool MergeModule(SettingsModel& model);

// The record of the current pen, made empty if there is none yet. The current pen is the one that
// the tablet reported last, or, until it has reported any, the one being announced.
struct CurrentPenRecord {
  PenInfo& pen;
  bool hasNewModule;  // the record has just been made, and took over a module that waited for it
};
CurrentPenRecord CurrentPen(SettingsModel& model);

}  // namespace KorvuISD
