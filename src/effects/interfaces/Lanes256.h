// The lanes of SampleLanes.h in registers of 256 bits. Must be included between the marks of core/VectorCode.h, before
// all other templates.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "registers/Registers256.h"

#include "effects/interfaces/SampleLanes.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

/// Sixteen samples.
using Samples256 = lanes::SamplesIn<cofu::registers::Registers256>;

// GCC lays out a class for the instructions that are allowed where the class is first needed. If that is after the
// marks, a function that returns it loses the upper half.
static_assert(lanes::SampleKind<Samples256>);
static_assert(sizeof(Samples256) == 32 && sizeof(Samples256::Words) == 32);

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
