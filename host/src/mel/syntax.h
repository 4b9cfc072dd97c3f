#pragma once

#include "mel/value.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host::mel {

class Evaluation;

/// A parsed expression. Nodes are immutable after parsing and are shared by all executions of their text.
class Expression {
public:
    virtual ~Expression();
    virtual Value evaluate(Evaluation& evaluation) const = 0;
    /// The variable that holds the value, for calls that change their arguments; null when the expression is
    /// no variable (or one without a value yet).
    virtual Value* place(Evaluation& evaluation) const;
    /// The value of an expression that is always the same; null for others.
    virtual const Value* constant() const { return nullptr; }

    /// Height of the tree below and with this node; the parser bounds it so that walking a tree is safe.
    int height = 1;
};
using ExpressionRef = std::unique_ptr<Expression>;

/// An expression that can be assigned to: a variable or an element of one.
class Place : public Expression {
public:
    /// Stores the value, converted to the type of the place, and returns what is stored.
    virtual Value assign(Evaluation& evaluation, const Value& value) const = 0;
    /// Stores what `change` makes of the present value. Indices are evaluated once.
    using Change = std::function<Value(const Value& before)>;
    virtual Value modify(Evaluation& evaluation, const Change& change) const = 0;
};

/// How a statement ended.
enum class Completion { kNormal, kBreak, kContinue, kReturn };

class Statement {
public:
    virtual ~Statement();
    virtual Completion execute(Evaluation& evaluation) const = 0;
    /// Whether the text that ends with this statement has a result: Evaluation::lastValue.
    virtual bool hasResult() const { return false; }

    int line = 0; ///< where it begins, counted from 1
};
using StatementRef = std::unique_ptr<Statement>;

/// Where a variable lives, decided when the text is parsed.
struct VariableSlot {
    std::string name; ///< with the dollar sign
    bool isGlobal = false;
    std::size_t cell = 0; ///< in the frame, for local variables
};

struct Parameter {
    Type type = Type::kVoid;
    VariableSlot slot;
};

struct FileScope;

struct Procedure : std::enable_shared_from_this<Procedure> {
    std::string name;
    Type returnType = Type::kVoid;
    std::vector<Parameter> parameters;
    StatementRef body;
    std::size_t cellCount = 0;
    bool isGlobal = false;
    std::string fileName; ///< empty when it came from no file
    std::weak_ptr<FileScope> scope;
};
using ProcedureRef = std::shared_ptr<const Procedure>;

/// The procedures that only the text of one file can call.
struct FileScope {
    std::map<std::string, ProcedureRef> procedures;
};

/// A whole text after parsing.
struct Script {
    std::vector<StatementRef> statements;
    std::vector<std::shared_ptr<Procedure>> procedures;
    std::size_t cellCount = 0; ///< local variables of blocks outside procedures
};

} // namespace host::mel
