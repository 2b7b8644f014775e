// The JSON files of the macro layer.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <picojson.h>

#include <cmath>
#include <string_view>

#include "content/inspect/Inspectors.h"
#include "core/Utf8.h"
#include "macro/MacroNativeModeMap.h"

namespace sivray::content {
namespace {

constexpr int kMostControllers = 127;  // Numbers 0 to 126 can be mapped.

picojson::value parse(CheckedReader& reader) {
  const std::uint64_t start = reader.offset();
  const auto bytes = reader.take(reader.remaining(), "the text");
  const auto text = tesh::cofu::core::withoutByteOrderMark({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  picojson::value document;
  std::string error;
  const auto* const end = picojson::parse(document, text.begin(), text.end(), &error);
  if (!error.empty()) {
    throw BrokenFile(start + bytes.size() - static_cast<std::uint64_t>(text.end() - end), error);
  }
  return document;
}

/// A JSON text whose errors carry the offset of a member's name, or of the text's start if it has no such member.
class Document {
 public:
  explicit Document(CheckedReader& reader) : start(reader) { root = parse(reader); }

  [[noreturn]] void fail(const std::string& key, const std::string& reason) const {
    CheckedReader place = start;
    const auto bytes = place.take(place.remaining(), "the text");
    const std::string text(bytes.begin(), bytes.end());
    const std::size_t found = text.find(std::string("\"").append(key).append("\""));
    throw BrokenFile(start.offset() + (found == std::string::npos ? 0 : found), reason);
  }

  /// Returns a member that must be an object. Throws BrokenFile if it is not.
  const picojson::object& object(const picojson::value& parent, const std::string& key) const {
    if (!parent.is<picojson::object>()) {
      fail(key, "the text is no object");
    }
    const picojson::value& member = parent.get(key);
    if (!member.is<picojson::object>()) {
      fail(key, "\"" + key + "\" is no object");
    }
    return member.get<picojson::object>();
  }

  picojson::value root;

 private:
  CheckedReader start;
};

/// Converts a JSON value to a report.
Report reportOf(const picojson::value& value) {
  if (value.is<double>()) {
    return Report::real(value.get<double>());
  }
  if (value.is<picojson::object>()) {
    Report report = Report::object();
    for (const auto& [name, member] : value.get<picojson::object>()) {
      report.add(name, reportOf(member));
    }
    return report;
  }
  if (value.is<picojson::array>()) {
    Report report = Report::list();
    for (const picojson::value& item : value.get<picojson::array>()) {
      report.add(reportOf(item));
    }
    return report;
  }
  return Report::text(value.to_str());
}

/// Reports the members whose names are decimal numbers below `count`, in numeric order.
void addNumbered(const picojson::object& members, int count, Report& report) {
  for (int number = 0; number < count; ++number) {
    const auto found = members.find(std::to_string(number));
    if (found != members.end() && found->second.is<double>()) {
      report.add(found->first, Report::real(std::round(found->second.get<double>())));
    }
  }
}

void requireText(const Document& document, const picojson::object& members, const std::string& key, bool isRequired) {
  const auto found = members.find(key);
  if (found == members.end()) {
    if (isRequired) {
      document.fail("processor", "\"" + key + "\" is missing");
    }
  } else if (!found->second.is<std::string>()) {
    document.fail(key, "\"" + key + "\" is no text");
  }
}

}  // namespace

void inspectDescription(CheckedReader reader, Report& report) {
  report.addText("kind", "macro description");
  const Document document(reader);
  const picojson::object& processor = document.object(document.root, "processor");
  report.add("processor", reportOf(document.root.get("processor")));
  for (const char* key : {"plugin_chunk", "macro_chunk"}) {
    requireText(document, processor, key, true);
  }
  for (const char* key : {"cc_map", "native_mode_map", "parameter_description", "misc_chunk"}) {
    requireText(document, processor, key, false);
  }
  const auto patches = processor.find("patches");
  if (patches != processor.end() && !patches->second.is<picojson::array>()) {
    document.fail("patches", "\"patches\" is no array");
  }
}

void inspectParameterDescription(CheckedReader reader, Report& report) {
  report.addText("kind", "parameter description");
  const Document document(reader);
  const picojson::value parameters =
      document.root.is<picojson::object>() ? document.root.get("parameters") : picojson::value();
  if (!parameters.is<picojson::array>()) {
    document.fail("parameters", "\"parameters\" is no array");
  }
  report.add("parameters", reportOf(parameters));
}

void inspectCcMap(CheckedReader reader, Report& report) {
  report.addText("kind", "controller map");
  const Document document(reader);
  const picojson::object& map = document.object(document.root, "cc_map");
  addNumbered(map, kMostControllers, report.add("controllers", Report::object()));
  const picojson::value& bend = document.root.get("pitch_bend");
  if (bend.is<double>()) {
    report.add("pitchBend", Report::real(std::round(bend.get<double>())));
  }
  for (const auto& [name, member] : map) {
    if (!member.is<double>()) {
      document.fail(name, "controller \"" + name + "\" has no number");
    }
  }
}

void inspectNativeModeMap(CheckedReader reader, Report& report) {
  namespace devices = tesh::vimo::midi_controller;
  report.addText("kind", "map of hardware controls");
  const Document document(reader);
  const picojson::object& map = document.object(document.root, "native_mode_map");
  const std::string_view pastTheTable = devices::deviceAt(~0U).name;
  for (std::uint32_t index = 0; devices::deviceAt(index).name != pastTheTable; ++index) {
    const devices::Device device = devices::deviceAt(index);
    const auto found = map.find(device.name);
    if (found == map.end() || !found->second.is<picojson::object>()) {
      continue;
    }
    const picojson::object& members = found->second.get<picojson::object>();
    Report& row = report.add(device.name, Report::object());
    const auto type = members.find("Type");
    row.addText("type", type == members.end() ? "" : type->second.to_str());
    addNumbered(members, static_cast<int>(device.controls), row.add("controls", Report::object()));
  }
}

}  // namespace sivray::content
