// The interface http://ardour.org/lv2/midnam, by which a plug-in names its keys, as Ardour publishes it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/client/KeyNames.h"

namespace tesh::bramel::lv2 {

inline constexpr const char* kMidnamInterface = "http://ardour.org/lv2/midnam#interface";
inline constexpr const char* kMidnamUpdate = "http://ardour.org/lv2/midnam#update";

/// What a host that takes names offers as the feature kMidnamUpdate. `update` is called from `run`.
struct MidnamUpdate {
  void* handle;
  void (*update)(void* handle);
};

/// The plug-in's extension data kMidnamInterface. `instance` is the plug-in's handle; `freeText` frees what the other
/// two gave, also when the instance has gone.
struct MidnamInterface {
  char* (*midnam)(void* instance);
  char* (*model)(void* instance);
  void (*freeText)(char* text);
};

/// The names of all keys that have one as a MIDI name document, for every channel; null without `names`. The caller
/// frees it by freeText.
char* midnamOf(const vst::KeyNames* names, const void* instance);

/// The model that the document names, which no other instance has. The caller frees it by freeText.
char* midnamModelOf(const void* instance);

void freeText(char* text);

}  // namespace tesh::bramel::lv2
