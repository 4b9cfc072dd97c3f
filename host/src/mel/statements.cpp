#include "mel/statements.h"

#include "mel/evaluation.h"
#include "mel/interpreter.h"
#include "mel/operators.h"
#include "types/error.h"

namespace host::mel {

Statement::~Statement() = default;

namespace {

Completion executeAll(const std::vector<StatementRef>& statements, Evaluation& evaluation)
{
    for (const StatementRef& statement : statements) {
        const Completion completion = evaluation.execute(*statement);
        if (completion != Completion::kNormal)
            return completion;
    }
    return Completion::kNormal;
}

/// Whether a loop goes on after its body, and what the loop then ends with if it does not.
bool goesOn(Completion ofBody, Completion& ofLoop)
{
    if (ofBody == Completion::kReturn)
        ofLoop = Completion::kReturn;
    return ofBody != Completion::kReturn && ofBody != Completion::kBreak;
}

template <class Array>
void resizeTo(Value& value, int length)
{
    value.get<Array>().resize(static_cast<std::size_t>(length));
}

Value initialValue(const Declaration::Entry& entry)
{
    Value value = Value::zero(entry.type);
    switch (entry.type) {
    case Type::kMatrix:
        value = Matrix{entry.rows, entry.columns,
                       std::vector<double>(static_cast<std::size_t>(entry.rows * entry.columns))};
        break;
    case Type::kIntArray:
        resizeTo<IntArray>(value, entry.rows);
        break;
    case Type::kFloatArray:
        resizeTo<FloatArray>(value, entry.rows);
        break;
    case Type::kStringArray:
        resizeTo<StringArray>(value, entry.rows);
        break;
    case Type::kVectorArray:
        value.get<VectorArray>().resize(static_cast<std::size_t>(entry.rows), Vector(0.0));
        break;
    default:
        break;
    }
    return value;
}

void requireRoom(Evaluation& evaluation, const Declaration::Entry& entry)
{
    const auto rows = static_cast<std::size_t>(entry.rows);
    const std::size_t elements =
        entry.type == Type::kMatrix ? rows * static_cast<std::size_t>(entry.columns) : rows;
    const std::size_t bytes = elements * bytesPerElement(entry.type);
    if (bytes > evaluation.interpreter.limits.unwritten)
        throw Error("\"" + entry.slot.name + "\" cannot have " + std::to_string(elements) + " elements.");
    evaluation.interpreter.spend(bytes / 256);
}

void fillMatrix(Value& target, const Value& value, const std::string& name)
{
    const Matrix matrix = value.toMatrix();
    Matrix& whole = target.get<Matrix>();
    if (matrix.rows != whole.rows || matrix.columns != whole.columns)
        throw Error("The matrix \"" + name + "\" has another size than its value.");
    whole = matrix;
}

std::vector<Value> elementsOf(const Value& array)
{
    std::vector<Value> elements;
    const auto copy = [&elements](const auto& values) {
        for (const auto& value : values)
            elements.emplace_back(value);
    };
    switch (array.type()) {
    case Type::kIntArray:
        copy(array.get<IntArray>());
        break;
    case Type::kFloatArray:
        copy(array.get<FloatArray>());
        break;
    case Type::kStringArray:
        copy(array.get<StringArray>());
        break;
    case Type::kVectorArray:
        copy(array.get<VectorArray>());
        break;
    default:
        throw Error(std::string("for-in goes over an array, not over data of type ") +
                    typeName(array.type()) + ".");
    }
    return elements;
}

} // namespace

Completion ExpressionStatement::execute(Evaluation& evaluation) const
{
    evaluation.lastValue = expression->evaluate(evaluation);
    return Completion::kNormal;
}

Completion Declaration::execute(Evaluation& evaluation) const
{
    for (const Entry& entry : entries) {
        const Value given = entry.initial ? entry.initial->evaluate(evaluation) : Value();
        Value& variable = evaluation.variable(entry.slot);
        if (!entry.slot.isGlobal || variable.isVoid()) {
            requireRoom(evaluation, entry);
            variable = initialValue(entry);
        }
        if (variable.type() != entry.type)
            throw Error("Invalid redeclaration of variable \"" + entry.slot.name + "\" as a different type.");
        if (!entry.initial)
            continue;
        if (given.isVoid())
            throw Error("Nothing to assign to \"" + entry.slot.name + "\": the command has no result.");
        if (entry.type == Type::kMatrix)
            fillMatrix(variable, given, entry.slot.name);
        else
            variable = given.convertedTo(entry.type);
        evaluation.interpreter.spend(stepsOf(variable));
        evaluation.lastValue = variable;
    }
    return Completion::kNormal;
}

Completion Block::execute(Evaluation& evaluation) const
{
    return executeAll(statements, evaluation);
}

Completion If::execute(Evaluation& evaluation) const
{
    if (condition->evaluate(evaluation).toBool())
        return evaluation.execute(*whenTrue);
    return whenFalse ? evaluation.execute(*whenFalse) : Completion::kNormal;
}

Completion Loop::execute(Evaluation& evaluation) const
{
    executeAll(first, evaluation);
    Completion completion = Completion::kNormal;
    const auto holds = [&] { return !condition || condition->evaluate(evaluation).toBool(); };
    while (testsAfter || holds()) {
        if (!goesOn(evaluation.execute(*body), completion))
            break;
        for (const ExpressionRef& expression : step)
            expression->evaluate(evaluation);
        if (testsAfter && !holds())
            break;
    }
    return completion;
}

Completion ForIn::execute(Evaluation& evaluation) const
{
    Completion completion = Completion::kNormal;
    for (const Value& value : elementsOf(array->evaluate(evaluation))) {
        element->assign(evaluation, type == Type::kVoid ? value : value.convertedTo(type));
        if (!goesOn(evaluation.execute(*body), completion))
            break;
    }
    return completion;
}

Completion Switch::execute(Evaluation& evaluation) const
{
    const Value value = subject->evaluate(evaluation);
    std::size_t chosen = cases.size();
    for (std::size_t i = 0; i < cases.size(); ++i) {
        if (!cases[i].value) {
            chosen = chosen == cases.size() ? i : chosen;
            continue;
        }
        if (operate(Operator::kEqual, value, cases[i].value->evaluate(evaluation)).toBool()) {
            chosen = i;
            break;
        }
    }
    for (; chosen < cases.size(); ++chosen) {
        const Completion completion = executeAll(cases[chosen].statements, evaluation);
        if (completion == Completion::kBreak)
            break;
        if (completion != Completion::kNormal)
            return completion;
    }
    return Completion::kNormal;
}

Completion Return::execute(Evaluation& evaluation) const
{
    evaluation.result = value ? value->evaluate(evaluation) : Value();
    return Completion::kReturn;
}

} // namespace host::mel
