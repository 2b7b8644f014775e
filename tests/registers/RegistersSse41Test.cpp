// The register tests for SSE4.1.
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

SIVRAY_COMPILE_FOR("sse4.1")

#include "registers/Registers128Sse41.h"

#include "registers/RegisterLaws.h"

namespace tesh::cofu::registers {

void keepLawsSse41(const Row& a, const Row& b) { keepLaws<Registers128Sse41>(a, b); }

}  // namespace tesh::cofu::registers

SIVRAY_COMPILE_FOR_ALL
