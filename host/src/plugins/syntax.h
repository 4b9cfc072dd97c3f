#pragma once

#include "types/argList.h"

#include <maya/MSyntax.h>

#include <memory>
#include <string>
#include <vector>

namespace host {

/// What an MSyntax holds: the declaration of a command's flags, arguments and objects.
struct Syntax {
    struct Flag {
        std::string shortName; ///< without dash, as longName
        std::string longName;
        std::vector<MSyntax::MArgType> args;
        bool multiUse = false;
    };
    static constexpr unsigned int kNoLimit = 0xFFFFFFFFU;

    std::vector<Flag> flags;
    std::vector<MSyntax::MArgType> arguments; ///< that stand outside the flags, before the objects
    MSyntax::MObjectFormat objectFormat = MSyntax::kNone;
    unsigned int minObjects = 0;
    unsigned int maxObjects = kNoLimit;
    bool selectionAsDefault = false; ///< no objects given: those that are selected
    bool query = false;
    bool edit = false;

    /// By short or long name, with or without dash; null when there is none.
    const Flag* find(const std::string& name) const;
    Flag* find(const std::string& name);
};

/// Arguments sorted by a syntax: what an MArgParser holds.
struct ParsedArgs {
    struct Use {
        std::string longName;           ///< of the flag
        std::vector<mel::Value> values; ///< empty in query mode
        unsigned int position = 0;      ///< of the flag in the list of arguments
    };

    Syntax syntax;
    std::vector<Use> uses; ///< in the order given; of a flag that is no multi-use flag the last use alone
    std::vector<mel::Value> arguments;
    std::vector<std::string> objects;
    bool query = false;
    bool edit = false;

    /// The i-th use of a flag, by either name with or without dash; null when there is none.
    const Use* use(const std::string& flag, unsigned int which = 0) const;
    unsigned int useCount(const std::string& flag) const;
};

/// Sorts arguments. -q, -query, -e and -edit switch the mode when the syntax allows it; with both, edit wins.
/// In query mode flags take no arguments. Whole numbers and texts that are numbers fit number arguments, on,
/// off, true and the like fit bools, everything fits texts; a negative number fits an unsigned one.
/// A text that begins with a dash and a letter where no argument of a flag is due must be a flag.
/// Throws host::Error that names the command and the flag.
std::shared_ptr<const ParsedArgs> parseArguments(const Syntax& syntax, const ArgList& list,
                                                 const std::string& command);

} // namespace host
