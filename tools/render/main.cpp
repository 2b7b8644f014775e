// sivray-render: plays MIDI files through the plug-in, and checks it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "render/RenderProgram.h"

int main(int argc, char** argv) { return sivray::render::runProgram({argv + 1, argv + argc}); }
