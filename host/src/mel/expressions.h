#pragma once

#include "mel/command.h"
#include "mel/operators.h"
#include "mel/syntax.h"

namespace host::mel {

class Literal final : public Expression {
public:
    explicit Literal(Value literal) : value(std::move(literal)) {}
    Value evaluate(Evaluation&) const override { return value; }
    const Value* constant() const override { return &value; }

    const Value value;
};

/// <<x, y, z>>
class VectorLiteral final : public Expression {
public:
    explicit VectorLiteral(std::vector<ExpressionRef> three) : components(std::move(three)) {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    std::vector<ExpressionRef> components;
};

/// <<a, b; c, d>>
class MatrixLiteral final : public Expression {
public:
    explicit MatrixLiteral(std::vector<std::vector<ExpressionRef>> lines) : rows(std::move(lines)) {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    std::vector<std::vector<ExpressionRef>> rows;
};

/// {a, b, c}: an array of the widest type among the elements (string over vector over float over int).
class ArrayLiteral final : public Expression {
public:
    explicit ArrayLiteral(std::vector<ExpressionRef> values) : elements(std::move(values)) {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    std::vector<ExpressionRef> elements;
};

/// value.x, .y, .z
class Component final : public Expression {
public:
    Component(ExpressionRef whole, int axisIndex) : vector(std::move(whole)), axis(axisIndex) {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    ExpressionRef vector;
    int axis;
};

class Negation final : public Expression {
public:
    explicit Negation(ExpressionRef value) : operand(std::move(value)) {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    ExpressionRef operand;
};

/// !value
class Not final : public Expression {
public:
    explicit Not(ExpressionRef value) : operand(std::move(value)) {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    ExpressionRef operand;
};

class Binary final : public Expression {
public:
    Binary(Operator what, ExpressionRef a, ExpressionRef b)
        : operation(what), left(std::move(a)), right(std::move(b))
    {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    Operator operation;
    ExpressionRef left, right;
};

/// && and ||: the right side is evaluated only when it matters.
class Logical final : public Expression {
public:
    Logical(bool conjunction, ExpressionRef a, ExpressionRef b)
        : isAnd(conjunction), left(std::move(a)), right(std::move(b))
    {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    bool isAnd;
    ExpressionRef left, right;
};

/// condition ? a : b
class Conditional final : public Expression {
public:
    Conditional(ExpressionRef test, ExpressionRef a, ExpressionRef b)
        : condition(std::move(test)), whenTrue(std::move(a)), whenFalse(std::move(b))
    {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    ExpressionRef condition, whenTrue, whenFalse;
};

/// float(value), (float)value
class Cast final : public Expression {
public:
    Cast(Type target, ExpressionRef value) : type(target), operand(std::move(value)) {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    Type type;
    ExpressionRef operand;
};

/// name(a, b) and `name a b`.
class Call final : public Expression {
public:
    struct Part {
        Word::Kind kind;
        ExpressionRef value;
    };
    Call(std::string calledName, std::vector<Part> words)
        : name(std::move(calledName)), parts(std::move(words))
    {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    std::string name;
    std::vector<Part> parts;
};

/// catch(expression): 1 when it failed, else 0; the error is reported unless quiet, and goes no further.
class Catch final : public Expression {
public:
    Catch(ExpressionRef value, bool silent) : guarded(std::move(value)), quiet(silent) {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    ExpressionRef guarded;
    bool quiet;
};

} // namespace host::mel
