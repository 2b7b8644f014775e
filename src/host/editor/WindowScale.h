// The scale that the system wants for the content of a host's window.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

/// Screen pixels per pixel at 96 dots an inch in this window. On Windows: the scale that the window's thread has
/// declared that it draws at, and 1 where the system stretches the window itself. On other systems always 1.
float scaleOfWindow(void* window);

}  // namespace tesh::bramel::vst
