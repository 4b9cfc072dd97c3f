#pragma once

#include <maya/MString.h>

// What every source file of the plug-in shares. Each file that includes this holds its own copy of the texts,
// built when the library is loaded and destroyed when it is unloaded.

/// Name of the heads-up display that shows what is being sculpted.
const MString morvaneHUD("morvaneHUD");
/// Name of the hotkey set that is current while the tool is active.
const MString morvaneTemp("morvaneTemp");

// Source names in reports of failed calls. They stay what they are when files move, so that reports of
// different releases can be compared.
constexpr const char* kPluginSource = "src/pluginMain";
constexpr const char* kContextCommandSource = "src/morvaneContextCommand";
constexpr const char* kContextSource = "src/morvaneContext";
constexpr const char* kToolCommandSource = "src/morvaneToolCommand";
constexpr const char* kHelperSource = "src/helperFunctions";
