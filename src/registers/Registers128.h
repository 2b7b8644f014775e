// Names the registers of 128 bits that every processor of the target architecture has.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#if defined(__aarch64__)
#include "registers/Registers128Neon.h"
#else
#include "registers/Registers128Sse2.h"
#endif

namespace tesh::cofu::registers {

#if defined(__aarch64__)
using Registers128 = Registers128Neon;
#else
using Registers128 = Registers128Sse2;
#endif

}  // namespace tesh::cofu::registers
