#pragma once

#include "mel/operators.h"
#include "mel/syntax.h"

#include <optional>

namespace host::mel {

/// $name
class Variable final : public Place {
public:
    explicit Variable(VariableSlot where) : slot(std::move(where)) {}
    Value evaluate(Evaluation& evaluation) const override;
    Value* place(Evaluation& evaluation) const override;
    Value assign(Evaluation& evaluation, const Value& value) const override;
    Value modify(Evaluation& evaluation, const Change& change) const override;

    const VariableSlot slot;
};

/// $name[index] of an array, $name[row][column] of a matrix. Reading beyond the end of an array gives the
/// zero of its element type; writing there makes the array longer. A matrix never grows.
class Element final : public Place {
public:
    Element(VariableSlot where, ExpressionRef firstIndex, ExpressionRef secondIndex)
        : slot(std::move(where)), first(std::move(firstIndex)), second(std::move(secondIndex))
    {}
    Value evaluate(Evaluation& evaluation) const override;
    Value assign(Evaluation& evaluation, const Value& value) const override;
    Value modify(Evaluation& evaluation, const Change& change) const override;

private:
    /// Evaluated indices: of an array the element, of a matrix row and column.
    struct Where {
        int row = 0;
        int column = 0;
    };
    Where locate(Evaluation& evaluation) const;
    int index(Evaluation& evaluation, const Expression& expression) const;
    void requireRoom(Evaluation& evaluation, const Value& whole, Where where) const;
    double& cell(Value& matrix, Where where) const;
    Value read(Value& whole, Where where) const;
    Value store(Value& whole, Where where, const Value& value) const;

    VariableSlot slot;
    ExpressionRef first, second; ///< second is null for arrays
};

/// place = value, and place += value and so on.
class Assignment final : public Expression {
public:
    Assignment(std::unique_ptr<Place> where, std::optional<Operator> combine, ExpressionRef what)
        : target(std::move(where)), operation(combine), value(std::move(what))
    {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    std::unique_ptr<Place> target;
    std::optional<Operator> operation;
    ExpressionRef value;
};

/// ++place, place--, ...
class Step final : public Expression {
public:
    Step(std::unique_ptr<Place> where, int change, bool valueAfter)
        : target(std::move(where)), by(change), after(valueAfter)
    {}
    Value evaluate(Evaluation& evaluation) const override;

private:
    std::unique_ptr<Place> target;
    int by;
    bool after; ///< the value of the expression is the changed one
};

} // namespace host::mel
