#pragma once

#include "mel/evaluation.h"

#include <limits>
#include <string>
#include <unordered_map>
#include <vector>

namespace host::mel {

class CommandRegistry;
class Interpreter;

/// A call of a function of the language, as the function sees it. Getters convert; the number of arguments
/// has been checked already.
class FunctionCall {
public:
    FunctionCall(Interpreter& runner, const std::string& calledName, std::vector<Argument>& given)
        : interpreter(runner), name(calledName), arguments(given)
    {}

    int count() const { return static_cast<int>(arguments.size()); }
    const Value& value(int index) const { return at(index).get(); }
    int integer(int index) const { return value(index).toInt(); }
    double number(int index) const { return value(index).toFloat(); }
    std::string text(int index) const { return value(index).toString(); }
    Vector vector(int index) const { return value(index).toVector(); }
    StringArray texts(int index) const
    {
        return value(index).convertedTo(Type::kStringArray).get<StringArray>();
    }
    /// An argument that the function changes; throws host::Error when it is no array variable.
    Value& array(int index) const;
    StringArray& textArray(int index) const;

    Interpreter& interpreter;
    const std::string& name;

private:
    Argument& at(int index) const { return arguments[static_cast<std::size_t>(index)]; }

    std::vector<Argument>& arguments;
};

/// A function of the language: one that takes arrays whole, or changes them, or is called so often that flags
/// would be in the way. Functions with flags are commands (languageCommands).
struct Function {
    static constexpr int kAnyNumber = std::numeric_limits<int>::max();

    int least = 0;
    int most = 0;
    Value (*work)(FunctionCall& call) = nullptr;
};
using FunctionTable = std::unordered_map<std::string, Function>;

void addMathFunctions(FunctionTable& table);   ///< abs, sin, clamp, rand, mag, cross, ...
void addStringFunctions(FunctionTable& table); ///< substring, match, tokenize, strip, format, ...
void addArrayFunctions(FunctionTable& table);  ///< size, clear, sort, stringArrayCatenate, ...

void addSystemFunctions(FunctionTable& table); ///< print, eval, source, exists, getenv, ...

/// The commands that belong to the language and take flags: error, warning, evalDeferred, optionVar, ...
void addLanguageCommands(CommandRegistry& registry);

} // namespace host::mel
