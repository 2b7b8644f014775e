// The functions through which the plug-in adapter reaches the editor. WithEditor.cpp implements them, or
// WithoutEditor.cpp in a build without an editor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "core/Boxed.h"
#include "host/shell/BramelInstrument.h"
#include "host/vst/AudioEffect.h"

namespace tesh::bramel::vst {

class BramelInstrumentEditor;

/// Makes the editor of `instrument`, closed, and sets it as the instrument's UI callback, which the instrument holds
/// weakly. Returns null in a build without an editor. On the thread that loads the plug-in.
std::shared_ptr<BramelInstrumentEditor> makeInstrumentEditor(const std::shared_ptr<BramelInstrument>& instrument);

/// Makes a view model of `instrument` without a view: a boxed std::shared_ptr<IPluginEditViewModelOwner>, or null in a
/// build without an editor. Message thread.
cofu::core::boxed::Box makeInstrumentViewModel(const std::shared_ptr<BramelInstrument>& instrument);

/// Makes the host's side of `editor`, for AudioEffect::setEditor, or returns null in a build without an editor.
/// `editor` is not null; the result may be its last holder. `effect` outlives the result.
std::unique_ptr<AEffEditor> makeVstEditor(AudioEffect& effect, std::shared_ptr<BramelInstrumentEditor> editor);

}  // namespace tesh::bramel::vst
