// The interface http://ardour.org/lv2/midnam, by which a plug-in names its keys, as Ardour publishes it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/client/KeyNames.h"

namespace tesh::bramel::lv2 {

inline constexpr const char* kMidnamInterface = "http://ardour.org/lv2/midnam#interface";
inline constexpr const char* kMidnamUpdate = "http://ardour.org/lv2/midnam#update";

/// The feature kMidnamUpdate of hosts that show key names. The plug-in calls `update` from `run`.
struct MidnamUpdate {
  void* handle;
  void (*update)(void* handle);
};

/// The plug-in's extension data kMidnamInterface. `instance` is the plug-in's handle. `freeText` frees the results of
/// the other two, also after the instance has gone.
struct MidnamInterface {
  char* (*midnam)(void* instance);
  char* (*model)(void* instance);
  void (*freeText)(char* text);
};

/// The names of all keys that have one as a MIDI name document, for every channel; null without `names`. The caller
/// frees it by freeText.
char* midnamOf(const vst::KeyNames* names, const void* instance);

/// The model name in the document, unique to this instance. The caller frees it by freeText.
char* midnamModelOf(const void* instance);

void freeText(char* text);

}  // namespace tesh::bramel::lv2
