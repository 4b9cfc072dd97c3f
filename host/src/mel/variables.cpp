#include "mel/variables.h"

#include "mel/evaluation.h"
#include "mel/interpreter.h"
#include "types/error.h"

namespace host::mel {

namespace {

[[noreturn]] void refuseUndeclared(const std::string& name)
{
    throw Error("\"" + name + "\" is an undeclared variable.");
}

template <class T>
T zeroElement()
{
    return T();
}

/// A default vector has no defined components.
template <>
Vector zeroElement<Vector>()
{
    return Vector(0.0);
}

template <class Array>
void store(Array& array, int index, typename Array::value_type element)
{
    const auto at = static_cast<std::size_t>(index);
    if (at >= array.size())
        array.resize(at + 1, zeroElement<typename Array::value_type>());
    array[at] = std::move(element);
}

template <class Array>
Value elementOrZero(const Array& array, int index, const Value& zero)
{
    const auto at = static_cast<std::size_t>(index);
    return at < array.size() ? Value(array[at]) : zero;
}

Value readElement(const Value& array, int index)
{
    const Value zero = Value::zero(elementOf(array.type()));
    switch (array.type()) {
    case Type::kIntArray:
        return elementOrZero(array.get<IntArray>(), index, zero);
    case Type::kFloatArray:
        return elementOrZero(array.get<FloatArray>(), index, zero);
    case Type::kStringArray:
        return elementOrZero(array.get<StringArray>(), index, zero);
    default:
        return elementOrZero(array.get<VectorArray>(), index, zero);
    }
}

void storeElement(Value& array, int index, const Value& element)
{
    switch (array.type()) {
    case Type::kIntArray:
        store(array.get<IntArray>(), index, element.toInt());
        break;
    case Type::kFloatArray:
        store(array.get<FloatArray>(), index, element.toFloat());
        break;
    case Type::kStringArray:
        store(array.get<StringArray>(), index, element.toString());
        break;
    default:
        store(array.get<VectorArray>(), index, element.toVector());
    }
}

} // namespace

Value Variable::evaluate(Evaluation& evaluation) const
{
    const Value& value = evaluation.variable(slot);
    if (value.isVoid())
        refuseUndeclared(slot.name);
    return value;
}

Value* Variable::place(Evaluation& evaluation) const
{
    Value& value = evaluation.variable(slot);
    if (value.isVoid())
        refuseUndeclared(slot.name);
    return &value;
}

Value Variable::assign(Evaluation& evaluation, const Value& value) const
{
    Value& target = evaluation.variable(slot);
    if (value.isVoid())
        throw Error("Nothing to assign to \"" + slot.name + "\": the command has no result.");
    evaluation.interpreter.spend(stepsOf(value));
    target = target.isVoid() ? value : value.convertedTo(target.type());
    return target;
}

int Element::index(Evaluation& evaluation, const Expression& expression) const
{
    const int result = expression.evaluate(evaluation).toInt();
    if (result < 0)
        throw Error("Index " + std::to_string(result) + " of \"" + slot.name + "\" is out of range.");
    return result;
}

Element::Where Element::locate(Evaluation& evaluation) const
{
    Where where;
    where.row = index(evaluation, *first);
    if (second)
        where.column = index(evaluation, *second);
    return where;
}

double& Element::cell(Value& value, Where where) const
{
    Matrix& matrix = value.get<Matrix>();
    if (!second)
        throw Error("A matrix such as \"" + slot.name + "\" takes two indices.");
    if (where.row >= matrix.rows || where.column >= matrix.columns)
        throw Error("Index [" + std::to_string(where.row) + "][" + std::to_string(where.column) + "] of \"" +
                    slot.name + "\" is out of range.");
    return matrix.at(where.row, where.column);
}

Value Element::read(Value& whole, Where where) const
{
    if (whole.isVoid())
        refuseUndeclared(slot.name);
    if (whole.type() == Type::kMatrix)
        return cell(whole, where);
    if (!isArray(whole.type()) || second)
        throw Error("\"" + slot.name + "\" of type " + typeName(whole.type()) +
                    " cannot be indexed that way.");
    return readElement(whole, where.row);
}

Value Element::store(Value& whole, Where where, const Value& value) const
{
    if (whole.type() == Type::kMatrix)
        return cell(whole, where) = value.toFloat();
    if (whole.isVoid())
        whole = Value::zero(arrayOf(value.type()));
    if (!isArray(whole.type()) || second)
        throw Error("\"" + slot.name + "\" of type " + typeName(whole.type()) +
                    " cannot be indexed that way.");
    storeElement(whole, where.row, value);
    return readElement(whole, where.row);
}

/// A wild index must not eat the memory with elements that nobody has given a value.
void Element::requireRoom(Evaluation& evaluation, const Value& whole, Where where) const
{
    const auto size = static_cast<std::size_t>(isArray(whole.type()) ? whole.size() : 0);
    const auto index = static_cast<std::size_t>(where.row);
    if (index < size || whole.type() == Type::kMatrix)
        return;
    const std::size_t bytes = (index - size) * bytesPerElement(whole.isVoid() ? Type::kString : whole.type());
    if (bytes > evaluation.interpreter.limits.unwritten)
        throw Error("Index " + std::to_string(index) + " of \"" + slot.name + "\" lies too far beyond its " +
                    std::to_string(size) + " elements.");
    evaluation.interpreter.spend(bytes / 256);
}

Value Element::evaluate(Evaluation& evaluation) const
{
    const Where where = locate(evaluation);
    return read(evaluation.variable(slot), where);
}

Value Element::assign(Evaluation& evaluation, const Value& value) const
{
    const Where where = locate(evaluation);
    Value& whole = evaluation.variable(slot);
    requireRoom(evaluation, whole, where);
    return store(whole, where, value);
}

Value Element::modify(Evaluation& evaluation, const Change& change) const
{
    const Where where = locate(evaluation);
    const Value changed = change(read(evaluation.variable(slot), where));
    Value& whole = evaluation.variable(slot);
    requireRoom(evaluation, whole, where);
    return store(whole, where, changed);
}

Value Variable::modify(Evaluation& evaluation, const Change& change) const
{
    return assign(evaluation, change(evaluate(evaluation)));
}

Value Assignment::evaluate(Evaluation& evaluation) const
{
    if (!operation)
        return target->assign(evaluation, value->evaluate(evaluation));
    return target->modify(evaluation, [&](const Value& before) {
        return operate(*operation, before, value->evaluate(evaluation));
    });
}

Value Step::evaluate(Evaluation& evaluation) const
{
    Value original;
    const Value changed = target->modify(evaluation, [&](const Value& before) {
        if (!before.isNumber())
            throw Error(std::string(by > 0 ? "++" : "--") + " does not take data of type " +
                        typeName(before.type()) + ".");
        original = before;
        return operate(Operator::kAdd, before, by);
    });
    return after ? changed : original;
}

} // namespace host::mel
