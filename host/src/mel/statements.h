#pragma once

#include "mel/syntax.h"

#include <optional>

namespace host::mel {

class ExpressionStatement final : public Statement {
public:
    explicit ExpressionStatement(ExpressionRef what) : expression(std::move(what)) {}
    Completion execute(Evaluation& evaluation) const override;
    bool hasResult() const override { return true; }

private:
    ExpressionRef expression;
};

/// int $a, $b[] = {1, 2}; A local variable is set to zero when it has no initial value; a global one (outside
/// blocks, or declared `global`) keeps what it held. Redeclaring a global with another type is an error.
class Declaration final : public Statement {
public:
    struct Entry {
        VariableSlot slot;
        Type type = Type::kVoid;
        int rows = 0; ///< of matrices; for arrays the initial length
        int columns = 0;
        ExpressionRef initial; ///< may be null
    };
    explicit Declaration(std::vector<Entry> variables) : entries(std::move(variables)) {}
    Completion execute(Evaluation& evaluation) const override;
    bool hasResult() const override { return true; }

private:
    std::vector<Entry> entries;
};

class Block final : public Statement {
public:
    explicit Block(std::vector<StatementRef> inner) : statements(std::move(inner)) {}
    Completion execute(Evaluation& evaluation) const override;

private:
    std::vector<StatementRef> statements;
};

class If final : public Statement {
public:
    If(ExpressionRef test, StatementRef then, StatementRef otherwise)
        : condition(std::move(test)), whenTrue(std::move(then)), whenFalse(std::move(otherwise))
    {}
    Completion execute(Evaluation& evaluation) const override;

private:
    ExpressionRef condition;
    StatementRef whenTrue, whenFalse; ///< whenFalse may be null
};

/// for (first; condition; step), while, and do-while, which tests after the body.
class Loop final : public Statement {
public:
    std::vector<StatementRef> first;
    ExpressionRef condition; ///< null: for ever
    std::vector<ExpressionRef> step;
    StatementRef body;
    bool testsAfter = false;

    Completion execute(Evaluation& evaluation) const override;
};

/// for ($element in array): over a copy of the array as it was at the beginning.
class ForIn final : public Statement {
public:
    ForIn(std::unique_ptr<Place> variable, Type declaredType, ExpressionRef values, StatementRef inner)
        : element(std::move(variable)), type(declaredType), array(std::move(values)), body(std::move(inner))
    {}
    Completion execute(Evaluation& evaluation) const override;

private:
    std::unique_ptr<Place> element;
    Type type; ///< kVoid when the variable is not declared in the head
    ExpressionRef array;
    StatementRef body;
};

class Switch final : public Statement {
public:
    struct Case {
        ExpressionRef value; ///< null for default
        std::vector<StatementRef> statements;
    };
    Switch(ExpressionRef what, std::vector<Case> branches)
        : subject(std::move(what)), cases(std::move(branches))
    {}
    Completion execute(Evaluation& evaluation) const override;

private:
    ExpressionRef subject;
    std::vector<Case> cases;
};

/// break, continue
class Jump final : public Statement {
public:
    explicit Jump(Completion how) : completion(how) {}
    Completion execute(Evaluation&) const override { return completion; }

private:
    Completion completion;
};

class Return final : public Statement {
public:
    explicit Return(ExpressionRef what) : value(std::move(what)) {}
    Completion execute(Evaluation& evaluation) const override;

private:
    ExpressionRef value; ///< may be null
};

} // namespace host::mel
