// The register tests for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>

#include "core/VectorCode.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "registers/Registers256.h"

#include "registers/RegisterLaws.h"

namespace tesh::cofu::registers {

void keepLawsAvx2(const Row& a, const Row& b) { keepLaws<Registers256>(a, b); }

}  // namespace tesh::cofu::registers

SIVRAY_COMPILE_FOR_ALL
