// Samples as the whole numbers of a WAV file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace sivray::render {

/// Writes each sample times 2^(bits - 1), rounded to the nearest whole number, halves to even, and limited to `bits`
/// bits, left-aligned in 32 bits. What is no number becomes the lowest one.
void toWords(const float* samples, int frames, int bits, int* words);

}  // namespace sivray::render
