#pragma once

#include <string>
#include <vector>

namespace workbench {

/// What the command line asks for.
struct Options {
    /// A MEL file ("-" is standard input) or MEL text; they run in the order given, files and texts mixed.
    struct Task {
        enum class Kind { kFile, kText };
        Kind kind;
        std::string value;
    };

    std::string scene; ///< empty = a new scene
    std::vector<Task> tasks;
    bool batch = false;
    std::string plugIn; ///< empty = the one built beside the program
    bool noPlugIn = false;
    int width = 960, height = 540;  ///< viewport, pixels
    double scale = 1;               ///< pixels of the picture per pixel of the viewport
    std::string image, save, trace; ///< files to write; empty = not asked for
    double seconds = 0;             ///< the window closes after so long; 0 = never
};

/// How reading the command line ended: go on, or exit now with that status (after --help, --version or wrong
/// usage, whose texts are already written).
struct ParseResult {
    Options options;
    bool proceed = false;
    int status = 0;
};

ParseResult parseCommandLine(int argc, const char* const* argv);

} // namespace workbench
