// Hands the whole channel to libsamplerate.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/RateConverter.h"

#include <samplerate.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

namespace sivray::content {

std::vector<float> atRate(std::span<const float> channel, double ratio, RateQuality quality) {
  std::vector<float> result(static_cast<std::size_t>(std::ceil(static_cast<double>(channel.size()) * ratio)));
  SRC_DATA job{};
  job.data_in = channel.data();
  job.input_frames = static_cast<long>(channel.size());
  job.data_out = result.data();
  job.output_frames = static_cast<long>(result.size());
  job.src_ratio = ratio;
  const int converter = quality == RateQuality::best ? SRC_SINC_BEST_QUALITY : SRC_SINC_FASTEST;
  if (const int error = src_simple(&job, converter, 1); error != 0) {
    throw std::runtime_error(std::string("could not be converted: ") + src_strerror(error));
  }
  result.resize(std::max<std::size_t>(static_cast<std::size_t>(job.output_frames_gen), 1));
  return result;
}

}  // namespace sivray::content
