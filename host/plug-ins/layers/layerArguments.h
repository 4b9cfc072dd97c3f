#pragma once

#include <maya/MApiNamespace.h>
#include <maya/MString.h>

#include <map>
#include <string>

namespace layers {

/// The arguments of one call. A flag with a value stands in `values` under its long name without the dash,
/// one without a value is there with an empty text.
struct LayerArguments {
    enum Mode { kPlain, kQuery, kEdit };

    Mode mode = kPlain;
    std::map<std::string, MString> values;
    MString object; ///< empty when none was given

    bool has(const char* flag) const { return values.count(flag) != 0; }
    /// Throw std::runtime_error when the flag is not there or holds no number.
    const MString& text(const char* flag) const;
    int integer(const char* flag) const;
    double real(const char* flag) const;
};

/// Sorts the arguments. The interface's own syntax objects cannot tell these calls: in a query some flags
/// take a value and others do not. Throws std::runtime_error for what the command does not know.
LayerArguments sortArguments(const MArgList& list);

} // namespace layers
