// Parses parameter values and checks them against their rules.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/synth/Parameters.h"

#include <sstream>
#include <stdexcept>

#include "core/Text.h"

namespace sivray::content {
namespace {

constexpr std::size_t kLongestList = 32;

std::string rangeOf(const ParameterRule& rule) {
  std::ostringstream text;
  text << (rule.fallback.size() > 1 ? "numbers with ':' between them, each from " : "a number from ") << rule.low
       << " to " << rule.high;
  return text.str();
}

}  // namespace

Parameters::Parameters(const std::vector<ParameterRule>& rules) {
  for (const ParameterRule& rule : rules) {
    slots.insert_or_assign(rule.name, Slot{rule, rule.fallback});
  }
}

std::string Parameters::set(std::string_view name, std::string_view text) {
  const auto slot = slots.find(name);
  if (slot == slots.end()) {
    std::string known;
    for (const auto& [other, unused] : slots) {
      known += (known.empty() ? "" : ", ") + other;
    }
    return "there is no parameter '" + std::string(name) + "' here; known are " + known;
  }
  const ParameterRule& rule = slot->second.rule;
  std::vector<double> values;
  while (true) {
    const std::size_t colon = text.find(':');
    const auto value = tesh::cofu::core::readNumber<double>(text.substr(0, colon));
    if (!value || !(*value >= rule.low && *value <= rule.high)) {
      return "'" + rule.name + "' takes " + rangeOf(rule) + ", not '" + std::string(text) + "'";
    }
    values.push_back(*value);
    if (colon == std::string_view::npos) {
      break;
    }
    text.remove_prefix(colon + 1);
  }
  if (values.size() > (rule.fallback.size() > 1 ? kLongestList : 1)) {
    return "'" + rule.name + "' takes " + rangeOf(rule) + "; these are too many";
  }
  slot->second.values = std::move(values);
  return {};
}

std::string Parameters::text() const {
  std::ostringstream all;
  all << std::hexfloat;
  for (const auto& [name, slot] : slots) {
    all << name;
    for (const double value : slot.values) {
      all << ':' << value;
    }
    all << ' ';
  }
  return all.str();
}

const std::vector<double>& Parameters::find(std::string_view name) const {
  const auto slot = slots.find(name);
  if (slot == slots.end()) {
    throw std::logic_error("a model asks for the parameter '" + std::string(name) + "' that it does not declare");
  }
  return slot->second.values;
}

}  // namespace sivray::content
