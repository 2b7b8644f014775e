// The findings of an inspection, as a tree that prints as text or as JSON.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sivray::content {

/// A node: a number, a text, a list or an object with its members in the order in which they were found.
class Report {
 public:
  static Report list() { return Report(Kind::list); }
  static Report object() { return Report(Kind::object); }
  static Report text(std::string_view characters);
  static Report number(std::uint64_t value);
  static Report real(double value);

  /// Adds a member to an object. The reference is valid until the next member is added.
  Report& add(std::string_view name, Report value);
  Report& addText(std::string_view name, std::string_view characters) { return add(name, text(characters)); }
  Report& addNumber(std::string_view name, std::uint64_t value) { return add(name, number(value)); }
  /// Adds an item to a list. The reference is valid until the next item is added.
  Report& add(Report value) { return add({}, std::move(value)); }

  std::string toText() const;
  std::string toJson() const;

 private:
  enum class Kind { number, text, list, object };

  explicit Report(Kind nodeKind) : kind(nodeKind) {}
  bool isLeaf() const { return kind == Kind::number || kind == Kind::text; }
  bool fitsOnALine() const;
  void print(std::string& out, std::size_t depth) const;
  void printJson(std::string& out) const;

  Kind kind;
  std::string words;
  std::vector<std::string> names;  ///< Of the members; empty texts in a list.
  std::vector<Report> members;
};

}  // namespace sivray::content
