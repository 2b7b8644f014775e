// The commands of sivray-content. Each takes the program's arguments and, if it fails, ends the program with one line
// on standard error.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

namespace sivray::content {

inline constexpr const char* kWavesUsage = "waves TABLES -o DIR [--notes FILE --code FILE]";
void runWaves(const juce::ArgumentList& list);

inline constexpr const char* kBankUsage = "bank TABLES KITS -o DIR";
void runBank(const juce::ArgumentList& list);

inline constexpr const char* kDemoUsage = "demo GROOVES -o FILE";
void runDemo(const juce::ArgumentList& list);

// Both commands play the content below $BRAMEL_COMMON_FILES, or else the installed content.
inline constexpr const char* kLevelsUsage = "levels";
void runLevels(const juce::ArgumentList& list);

inline constexpr const char* kBalanceUsage = "balance KITS";
void runBalance(const juce::ArgumentList& list);

inline constexpr const char* kPackUsage = "pack FOLDER -o DIR [--with-factory]";
void runPack(const juce::ArgumentList& list);

inline constexpr const char* kAddUsage = "add FILES|FOLDERS...|--from FILE [--pad N | --category NAME] [--fields]";
void runAdd(const juce::ArgumentList& list);

inline constexpr const char* kListUsage = "list [--fields]";
void runList(const juce::ArgumentList& list);

inline constexpr const char* kRemoveUsage = "remove NAMES|NUMBERS... | --all";
void runRemove(const juce::ArgumentList& list);

inline constexpr const char* kExportUsage = "export STATE|PROGRAM -o FOLDER";
void runExport(const juce::ArgumentList& list);

inline constexpr const char* kConvertUsage = "convert FOLDER [FILES...]";
void runConvert(const juce::ArgumentList& list);

inline constexpr const char* kRefreshUsage = "refresh";
void runRefresh(const juce::ArgumentList& list);

inline constexpr const char* kSimilarUsage = "similar DIR";
void runSimilar(const juce::ArgumentList& list);

inline constexpr const char* kMeasureUsage =
    "measure [WAVES] [--against FOLDER] [--tuning FOLDER] [--judging FOLDER] [--half tune|judge] [--wave NAME] "
    "[--brief] [--sheets FOLDER [--small]] [--targets] | "
    "--kits [--sheets FOLDER] | --grooves FOLDER";
void runMeasure(const juce::ArgumentList& list);

inline constexpr const char* kKitsUsage = "kits [--restore NUMBER]";
void runKits(const juce::ArgumentList& list);

inline constexpr const char* kControllersUsage = "controllers [--set CC=MACRO] [--remove CC] [--reset]";
void runControllers(const juce::ArgumentList& list);

inline constexpr const char* kInspectUsage = "inspect FILE [--json]";
void runInspect(const juce::ArgumentList& list);

}  // namespace sivray::content
