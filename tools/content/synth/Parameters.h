// The parameters of one wave: the values from its table row, and the model's defaults for the others.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace sivray::content {

/// A parameter of a model. A default of several numbers makes it a list.
struct ParameterRule {
  std::string name;
  std::vector<double> fallback;
  double low = 0.0;
  double high = 0.0;
};

class Parameters {
 public:
  explicit Parameters(const std::vector<ParameterRule>& rules);

  /// Sets a value from a table's text: a number, or for a list numbers separated by colons. Returns an empty text, or
  /// the reason why the value is not valid.
  std::string set(std::string_view name, std::string_view text);

  /// Returns a number; the first one of a list. The name must be in the rules.
  double operator[](std::string_view name) const { return find(name).front(); }

  /// Returns a parameter in milliseconds, converted to seconds.
  double seconds(std::string_view name) const { return (*this)[name] * 0.001; }

  const std::vector<double>& list(std::string_view name) const { return find(name); }

  /// Returns all values as a text; equal texts mean equal parameters.
  std::string text() const;

 private:
  struct Slot {
    ParameterRule rule;
    std::vector<double> values;
  };

  const std::vector<double>& find(std::string_view name) const;

  std::map<std::string, Slot, std::less<>> slots;
};

}  // namespace sivray::content
