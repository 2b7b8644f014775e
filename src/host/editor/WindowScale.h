// The scale that the system wants for the content of a host's window.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

/// Pixels of the screen that a pixel at the usual 96 dots an inch takes in this window: on Windows what the window's
/// thread has said that it can draw, 1 where the system stretches the window itself. Elsewhere always 1.
float scaleOfWindow(void* window);

}  // namespace tesh::bramel::vst
