// The program lists for a view: banks by name, programs by position.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "viewmodels/IProgramListViewModelListener.h"

namespace tesh::bramel {

/// Message thread only. The banks "Factory", "Factory2" and "User" can be listed. The bank "Ghost", which is current
/// after the selected program was deleted, and unknown names list no programs. For operations that change a bank, an
/// unknown name counts as "Factory". An operation that the instrument refuses changes nothing.
class IProgramListViewModel {
 public:
  virtual ~IProgramListViewModel() = default;

  /// The listener is held weakly, by its `getWeakSelf`. Null for none.
  virtual void setListener(IProgramListViewModelListener* listener) = 0;

  virtual std::string getInstrumentName() const = 0;
  /// Ending of exported files: "sivray_programs".
  virtual std::string getExportFileStem() const = 0;

  virtual std::string getCurrentBank() const = 0;
  virtual std::uint32_t getCurrentProgramIndex() const = 0;
  virtual std::string getCurrentProgramName() const = 0;
  /// The name is stored with the next save.
  virtual void renameCurrentProgram(const std::string& name) = 0;

  virtual std::uint64_t getProgramCount(const std::string& bank) const = 0;
  virtual std::string getProgramName(std::uint64_t index, const std::string& bank) const = 0;
  virtual void selectProgram(std::uint64_t index, const std::string& bank) = 0;

  /// Stores the current values as a new program at the end of "User".
  virtual void saveProgramAs(const std::string& name) = 0;
  /// Whether the bank lists a program of exactly this name.
  virtual bool programExists(const std::string& bank, const std::string& name) const = 0;
  virtual void overwriteCurrentProgram() = 0;
  virtual void deleteProgram(std::uint64_t index, const std::string& bank) = 0;
  virtual void moveProgram(std::uint64_t from, std::uint64_t to, const std::string& bank) = 0;

  virtual bool isProgramListEnabled() const = 0;
  /// Ignores a file that does not exist.
  virtual void importPrograms(const std::string& path) = 0;
  /// False if the file could not be written.
  virtual bool exportPrograms(const std::string& path) = 0;
};

}  // namespace tesh::bramel
