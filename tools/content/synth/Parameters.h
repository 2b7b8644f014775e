// The parameters of one wave: what a row of the designers' tables sets, and the defaults of its model for the rest.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace sivray::content {

/// A parameter that a model has. A fallback of several numbers marks a list.
struct ParameterRule {
  std::string name;
  std::vector<double> fallback;
  double low = 0.0;
  double high = 0.0;
};

class Parameters {
 public:
  explicit Parameters(const std::vector<ParameterRule>& rules);

  /// Takes a value out of a table: a number, or numbers with colons between them for a list. Returns why it cannot be
  /// taken, or an empty text.
  std::string set(std::string_view name, std::string_view text);

  /// A number; the name must be one of the rules.
  double operator[](std::string_view name) const { return find(name).front(); }

  /// A number given in milliseconds, in seconds.
  double seconds(std::string_view name) const { return (*this)[name] * 0.001; }

  const std::vector<double>& list(std::string_view name) const { return find(name); }

 private:
  struct Slot {
    ParameterRule rule;
    std::vector<double> values;
  };

  const std::vector<double>& find(std::string_view name) const;

  std::map<std::string, Slot, std::less<>> slots;
};

}  // namespace sivray::content
