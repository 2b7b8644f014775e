// Converts samples to the integers of a WAV file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace sivray::render {

/// Writes each sample times 2^(bits - 1), rounded to the nearest integer (halves to even), limited to `bits` bits, and
/// left-aligned in 32 bits. NaN becomes the lowest integer.
void toWords(const float* samples, int frames, int bits, int* words);

}  // namespace sivray::render
