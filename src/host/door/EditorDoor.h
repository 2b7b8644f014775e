// The way from the plug-in adapter to the editor. The editor implements these functions; a build without it takes those
// of host/noeditor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "core/Boxed.h"
#include "host/shell/BramelInstrument.h"
#include "host/vst/AudioEffect.h"

namespace tesh::bramel::vst {

class BramelInstrumentEditor;

/// The editor of `instrument`, closed. It is already the instrument's UI callback, which the instrument holds weakly.
/// Null in a build without an editor. On the thread that loads the plug-in.
std::shared_ptr<BramelInstrumentEditor> makeInstrumentEditor(const std::shared_ptr<BramelInstrument>& instrument);

/// The view model of `instrument` without a view: a boxed std::shared_ptr<IPluginEditViewModelOwner>, or null in a
/// build without an editor. Message thread.
cofu::core::boxed::Box makeInstrumentViewModel(const std::shared_ptr<BramelInstrument>& instrument);

/// The editor as the host of `effect` sees it, or null in a build without an editor. `editor` is not null; it and
/// `effect` outlive every call of the host, but `editor` may lose all other holders before the result is destroyed.
std::unique_ptr<AEffEditor> makeVstEditor(AudioEffect& effect, std::shared_ptr<BramelInstrumentEditor> editor);

}  // namespace tesh::bramel::vst
