// The parser of the tables' text.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/waves/WaveTable.h"

#include <algorithm>
#include <array>
#include <map>
#include <sstream>

#include "content/library/Wave.h"
#include "content/waves/Finish.h"
#include "core/Text.h"

namespace sivray::content {
namespace {

using tesh::cofu::core::trimmed;

constexpr std::string_view kDefaultsName = "*";

/// Removes and returns the text before the separator, or all text if there is none.
std::string_view takeUntil(std::string_view& text, char separator) {
  const std::size_t end = std::min(text.find(separator), text.size());
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return part;
}

std::string placed(std::string_view file, int line, std::string_view reason) {
  std::ostringstream text;
  text << file << ':' << line << ": " << reason;
  return text.str();
}

std::string quoted(std::string_view text) {
  std::string result;
  result += '\'';
  result += text;
  result += '\'';
  return result;
}

class TableReader {
 public:
  explicit TableReader(std::string_view fileName) : file(fileName) {}

  void readLine(std::string_view text) {
    ++line;
    std::string_view rest = trimmed(takeUntil(text, '#'));
    if (rest.empty()) {
      return;
    }
    if (std::count(rest.begin(), rest.end(), '|') != 2) {
      fail("a row is 'name | model | parameter=value ...'");
    }
    const std::string_view name = trimmed(takeUntil(rest, '|'));
    const std::string_view modelName = trimmed(takeUntil(rest, '|'));
    const Model* model = findModel(modelName);
    if (model == nullptr) {
      fail(quoted(modelName) + " is no model; there are " + modelNames());
    }
    Parameters parameters = defaultsOf(*model);
    while (!(rest = trimmed(rest)).empty()) {
      setOne(parameters, takeUntil(rest, ' '));
    }
    if (name == kDefaultsName) {
      defaults.insert_or_assign(model->name, std::move(parameters));
      return;
    }
    checkName(name);
    rows.push_back({std::string(name), line, model, std::move(parameters)});
  }

  std::vector<WaveRow> take() { return std::move(rows); }

 private:
  [[noreturn]] void fail(const std::string& reason) const { throw TableError(file, line, reason); }

  Parameters defaultsOf(const Model& model) const {
    const auto changed = defaults.find(model.name);
    if (changed != defaults.end()) {
      return changed->second;
    }
    std::vector<ParameterRule> rules = commonRules();
    rules.insert(rules.end(), model.rules.begin(), model.rules.end());
    return Parameters(rules);
  }

  void setOne(Parameters& parameters, std::string_view setting) const {
    if (setting.find('=') == std::string_view::npos) {
      fail(quoted(setting) + " is not 'parameter=value'");
    }
    const std::string_view name = takeUntil(setting, '=');
    const std::string reason = parameters.set(name, setting);
    if (!reason.empty()) {
      fail(reason);
    }
  }

  void checkName(std::string_view name) const {
    const auto isPlain = [](char c) { return c >= ' ' && c <= '~'; };
    if (name.empty() || name.size() > kLongestWaveName || !std::all_of(name.begin(), name.end(), isPlain)) {
      fail(quoted(name) + " is no name; those have 1 to 12 plain characters");
    }
    const auto isSame = [name](const WaveRow& row) { return row.name == name; };
    if (std::any_of(rows.begin(), rows.end(), isSame)) {
      fail(quoted(name) + " stands above already");
    }
  }

  std::string_view file;
  int line = 0;
  std::map<std::string, Parameters, std::less<>> defaults;
  std::vector<WaveRow> rows;
};

}  // namespace

TableError::TableError(std::string_view file, int line, std::string_view reason)
    : std::runtime_error(placed(file, line, reason)) {}

std::vector<WaveRow> parseWaveTable(std::string_view text, std::string_view file) {
  TableReader reader(file);
  while (!text.empty()) {
    reader.readLine(takeUntil(text, '\n'));
  }
  return reader.take();
}

}  // namespace sivray::content
