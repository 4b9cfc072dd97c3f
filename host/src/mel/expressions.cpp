#include "mel/expressions.h"

#include "mel/evaluation.h"
#include "mel/scriptError.h"

#include <algorithm>

namespace host::mel {

Expression::~Expression() = default;

Value* Expression::place(Evaluation&) const
{
    return nullptr;
}

Value VectorLiteral::evaluate(Evaluation& evaluation) const
{
    Vector vector;
    for (int axis = 0; axis < 3; ++axis)
        vector[axis] = components[static_cast<std::size_t>(axis)]->evaluate(evaluation).toFloat();
    return vector;
}

Value MatrixLiteral::evaluate(Evaluation& evaluation) const
{
    Matrix matrix;
    matrix.rows = static_cast<int>(rows.size());
    matrix.columns = static_cast<int>(rows.front().size());
    for (const auto& row : rows) {
        for (const ExpressionRef& cell : row)
            matrix.cells.push_back(cell->evaluate(evaluation).toFloat());
    }
    return matrix;
}

Value ArrayLiteral::evaluate(Evaluation& evaluation) const
{
    std::vector<Value> values;
    Type widest = Type::kInt;
    const auto rank = [](Type type) { return type == Type::kString ? 4 : static_cast<int>(type); };
    for (const ExpressionRef& element : elements) {
        values.push_back(element->evaluate(evaluation));
        const Type type = values.back().type();
        if (arrayOf(type) == Type::kVoid)
            throw Error(std::string("An array cannot hold data of type ") + typeName(type) + ".");
        if (type == Type::kString || (widest != Type::kString && rank(type) > rank(widest)))
            widest = type;
    }
    Value array = Value::zero(arrayOf(widest));
    for (const Value& value : values) {
        switch (widest) {
        case Type::kInt:
            array.get<IntArray>().push_back(value.toInt());
            break;
        case Type::kFloat:
            array.get<FloatArray>().push_back(value.toFloat());
            break;
        case Type::kString:
            array.get<StringArray>().push_back(value.toString());
            break;
        default:
            array.get<VectorArray>().push_back(value.toVector());
        }
    }
    return array;
}

Value Component::evaluate(Evaluation& evaluation) const
{
    const Value whole = vector->evaluate(evaluation);
    if (whole.type() != Type::kVector)
        throw Error(std::string("Only a vector has components, not data of type ") + typeName(whole.type()) +
                    ".");
    return whole.get<Vector>()[axis];
}

Value Negation::evaluate(Evaluation& evaluation) const
{
    return negated(operand->evaluate(evaluation));
}

Value Not::evaluate(Evaluation& evaluation) const
{
    return !operand->evaluate(evaluation).toBool();
}

Value Binary::evaluate(Evaluation& evaluation) const
{
    const Value first = left->evaluate(evaluation);
    return operate(operation, first, right->evaluate(evaluation));
}

Value Logical::evaluate(Evaluation& evaluation) const
{
    if (left->evaluate(evaluation).toBool() != isAnd)
        return !isAnd;
    return right->evaluate(evaluation).toBool();
}

Value Conditional::evaluate(Evaluation& evaluation) const
{
    return (condition->evaluate(evaluation).toBool() ? whenTrue : whenFalse)->evaluate(evaluation);
}

Value Cast::evaluate(Evaluation& evaluation) const
{
    return operand->evaluate(evaluation).convertedTo(type);
}

Value Call::evaluate(Evaluation& evaluation) const
{
    std::vector<Argument> arguments(parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        Argument& argument = arguments[i];
        argument.kind = parts[i].kind;
        argument.variable = parts[i].value->place(evaluation);
        argument.constant = parts[i].value->constant();
        if (!argument.variable && !argument.constant)
            argument.value = parts[i].value->evaluate(evaluation);
    }
    return evaluation.call(name, arguments);
}

Value Catch::evaluate(Evaluation& evaluation) const
{
    try {
        guarded->evaluate(evaluation);
        return 0;
    } catch (const std::exception& error) {
        if (!quiet)
            evaluation.reportCaught(error.what());
    }
    return 1;
}

} // namespace host::mel
