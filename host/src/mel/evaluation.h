#pragma once

#include "mel/command.h"
#include "mel/syntax.h"

#include <string>
#include <vector>

namespace host::mel {

class Interpreter;

/// The storage of a local variable. A void value is a variable that has no type yet: its first value decides.
struct Cell {
    Value own;
    Value* alias = nullptr; ///< an array of the caller, for arguments passed by reference

    Value& value() { return alias ? *alias : own; }
};

/// One argument of a call. Variables are passed by place, so that arrays are neither copied nor cut off from
/// the caller; values in the text, which may be long, are not copied either.
struct Argument {
    Value value;                     ///< when there is neither of the others
    Value* variable = nullptr;       ///< the caller's variable
    const Value* constant = nullptr; ///< a value that stands in the text
    Word::Kind kind = Word::Kind::kComputed;

    const Value& get() const { return variable ? *variable : constant ? *constant : value; }
    /// get(), for callers who need the argument no more.
    Value take()
    {
        if (variable || constant)
            return get();
        return std::move(value);
    }
};

/// One execution of a procedure or of text: what nodes need to do their work. Lives on the stack.
class Evaluation {
public:
    Evaluation(Interpreter& runner, std::string nameOfFile, std::shared_ptr<FileScope> procedures,
               std::size_t cellCount)
        : interpreter(runner), fileName(std::move(nameOfFile)), scope(std::move(procedures)), cells(cellCount)
    {}
    Evaluation(const Evaluation&) = delete;
    Evaluation& operator=(const Evaluation&) = delete;

    /// The storage of a variable; a global one is made (without type) when it does not exist.
    Value& variable(const VariableSlot& slot);
    Value call(const std::string& name, std::vector<Argument>& arguments);
    /// Executes a statement and gives its errors their place in the text.
    Completion execute(const Statement& statement);
    /// Reports an error that a script caught.
    void reportCaught(const std::string& text);

    Interpreter& interpreter;
    const std::string fileName;
    const std::shared_ptr<FileScope> scope;
    std::vector<Cell> cells;
    Value result;    ///< what the procedure returned
    Value lastValue; ///< of the last expression statement
};

} // namespace host::mel
