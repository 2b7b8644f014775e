// The answers to a host that asks what the plug-in can do: by canDo, and by the vendor calls of one host family.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

/// Returns 1 for an ability that the plug-in has, otherwise 0 (don't know), also for null.
std::int32_t answerCanDo(const char* text);

/// Answers a vendor call of the host family. The upper 16 bits of `question` are its form, the lower 16 its number.
/// Writes up to 9 bytes to `answer`, at any alignment, and returns 1; or returns 0 and writes nothing.
std::intptr_t answerVendorQuestion(std::int32_t question, std::intptr_t value, void* answer);

}  // namespace tesh::bramel::vst
