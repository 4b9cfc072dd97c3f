#pragma once

#include "types/error.h"

#include <string>

namespace host::mel {

/// An error in a script with its place. what() is the whole text as the person sees it:
/// "file: NAME line N: text", or "line N: text" for text that came from no file.
class ScriptError : public Error {
public:
    ScriptError(const std::string& text, const std::string& fileName, int lineNumber)
        : Error((fileName.empty() ? "" : "file: " + fileName + " ") + "line " + std::to_string(lineNumber) +
                ": " + text),
          plainText(text), file(fileName), line(lineNumber)
    {}

    const std::string plainText; ///< without the place
    const std::string file;      ///< empty for text that came from no file
    const int line;              ///< counted from 1
};

} // namespace host::mel
