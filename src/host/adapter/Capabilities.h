// What the plug-in answers when a host asks for its abilities, in the common way and in the way of one host family.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

/// 1 for what the plug-in can, otherwise 0: don't know. Null is no ability.
std::int32_t answerCanDo(const char* text);

/// A question of the host family: the upper half of `question` is its form, the lower half its number. Writes the
/// answer to `answer` (up to 9 bytes, any alignment) and gives 1, or gives 0 and writes nothing.
std::intptr_t answerVendorQuestion(std::int32_t question, std::intptr_t value, void* answer);

}  // namespace tesh::bramel::vst
