#include "mel/operators.h"

#include "types/error.h"

#include <array>
#include <cmath>

namespace host::mel {

namespace {

constexpr std::array<const char*, 12> kTexts = {"+",  "-",  "*", "/",  "%", "^",
                                                "==", "!=", "<", "<=", ">", ">="};

// A few lines of script double a text or square a matrix until no memory is left.
constexpr std::size_t kMostCharacters = std::size_t{1} << 23;
constexpr std::size_t kMostCells = std::size_t{1} << 22;

std::string joined(std::string left, const std::string& right)
{
    if (left.size() + right.size() > kMostCharacters)
        throw Error("A text of " + std::to_string(left.size() + right.size()) + " characters is too long.");
    return left += right;
}

[[noreturn]] void refuse(Operator operation, const Value& left, const Value& right)
{
    throw Error(std::string("The operator ") + operatorText(operation) + " does not take " +
                typeName(left.type()) + " and " + typeName(right.type()) + ".");
}

bool isComparison(Operator operation)
{
    return operation >= Operator::kEqual;
}

template <class T>
bool compare(Operator operation, const T& left, const T& right)
{
    switch (operation) {
    case Operator::kEqual:
        return left == right;
    case Operator::kNotEqual:
        return !(left == right);
    case Operator::kLess:
        return left < right;
    case Operator::kLessEqual:
        return left <= right;
    case Operator::kGreater:
        return right < left;
    default:
        return left >= right;
    }
}

int wrapped(std::int64_t number)
{
    return static_cast<int>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(number)));
}

Value onInts(Operator operation, std::int64_t left, std::int64_t right)
{
    if (right == 0 && (operation == Operator::kDivide || operation == Operator::kModulo))
        throw Error("Division by zero.");
    switch (operation) {
    case Operator::kAdd:
        return wrapped(left + right);
    case Operator::kSubtract:
        return wrapped(left - right);
    case Operator::kMultiply:
        return wrapped(left * right);
    case Operator::kDivide:
        return wrapped(left / right);
    case Operator::kModulo:
        return wrapped(left % right);
    default:
        return compare(operation, left, right);
    }
}

double onFloats(Operator operation, double left, double right)
{
    if (right == 0.0 && (operation == Operator::kDivide || operation == Operator::kModulo))
        throw Error("Division by zero.");
    switch (operation) {
    case Operator::kAdd:
        return left + right;
    case Operator::kSubtract:
        return left - right;
    case Operator::kMultiply:
        return left * right;
    case Operator::kDivide:
        return left / right;
    default:
        return std::fmod(left, right);
    }
}

Value onVectors(Operator operation, const Value& left, const Value& right)
{
    const bool bothVectors = left.type() == right.type();
    const Vector a = left.toVector();
    const Vector b = right.toVector();
    if (operation == Operator::kMultiply && bothVectors)
        return a.dot(b);
    if (operation == Operator::kCross)
        return a.cross(b);
    if (operation == Operator::kEqual || operation == Operator::kNotEqual)
        return (a == b) == (operation == Operator::kEqual);
    if (isComparison(operation))
        return compare(operation, left.toFloat(), right.toFloat());
    return Vector(onFloats(operation, a.x, b.x), onFloats(operation, a.y, b.y),
                  onFloats(operation, a.z, b.z));
}

Matrix product(const Value& left, const Value& right)
{
    const Matrix a = left.toMatrix();
    const Matrix b = right.toMatrix();
    if (a.columns != b.rows)
        throw Error("Cannot multiply a " + std::to_string(a.rows) + "x" + std::to_string(a.columns) +
                    " matrix by a " + std::to_string(b.rows) + "x" + std::to_string(b.columns) + " matrix.");
    const auto cells = static_cast<std::size_t>(a.rows) * static_cast<std::size_t>(b.columns);
    if (cells > kMostCells)
        throw Error("A matrix of " + std::to_string(a.rows) + "x" + std::to_string(b.columns) +
                    " cells is too large.");
    Matrix result{a.rows, b.columns, std::vector<double>(cells)};
    for (int row = 0; row < a.rows; ++row) {
        for (int column = 0; column < b.columns; ++column) {
            for (int inner = 0; inner < a.columns; ++inner)
                result.at(row, column) += a.at(row, inner) * b.at(inner, column);
        }
    }
    return result;
}

Value onMatrices(Operator operation, const Value& left, const Value& right)
{
    const bool bothMatrices = left.type() == right.type();
    if (bothMatrices && operation == Operator::kMultiply)
        return product(left, right);
    if (bothMatrices && (operation == Operator::kEqual || operation == Operator::kNotEqual))
        return (left.get<Matrix>() == right.get<Matrix>()) == (operation == Operator::kEqual);
    const bool sum = operation == Operator::kAdd || operation == Operator::kSubtract;
    if (bothMatrices && sum) {
        Matrix result = left.get<Matrix>();
        const Matrix& other = right.get<Matrix>();
        if (result.rows != other.rows || result.columns != other.columns)
            refuse(operation, left, right);
        for (std::size_t i = 0; i < result.cells.size(); ++i)
            result.cells[i] = onFloats(operation, result.cells[i], other.cells[i]);
        return result;
    }
    if (operation != Operator::kMultiply || !(left.isNumber() || right.isNumber()))
        refuse(operation, left, right);
    Matrix result = left.isNumber() ? right.toMatrix() : left.toMatrix();
    const double factor = left.isNumber() ? left.toFloat() : right.toFloat();
    for (double& cell : result.cells)
        cell *= factor;
    return result;
}

} // namespace

const char* operatorText(Operator operation)
{
    return kTexts[static_cast<std::size_t>(operation)];
}

Value operate(Operator operation, const Value& left, const Value& right)
{
    const auto either = [&](Type type) { return left.type() == type || right.type() == type; };
    if (left.isVoid() || right.isVoid() || isArray(left.type()) || isArray(right.type()))
        refuse(operation, left, right);
    if (either(Type::kString)) {
        if (operation == Operator::kAdd)
            return joined(left.toString(), right.toString());
        if (isComparison(operation))
            return compare(operation, left.toString(), right.toString());
        refuse(operation, left, right);
    }
    if (either(Type::kMatrix))
        return onMatrices(operation, left, right);
    if (either(Type::kVector))
        return onVectors(operation, left, right);
    if (operation == Operator::kCross)
        refuse(operation, left, right);
    if (left.type() == Type::kInt && right.type() == Type::kInt)
        return onInts(operation, left.get<int>(), right.get<int>());
    if (isComparison(operation))
        return compare(operation, left.toFloat(), right.toFloat());
    return onFloats(operation, left.toFloat(), right.toFloat());
}

Value negated(const Value& value)
{
    switch (value.type()) {
    case Type::kInt:
        return wrapped(-static_cast<std::int64_t>(value.get<int>()));
    case Type::kFloat:
        return -value.get<double>();
    case Type::kVector:
        return -value.get<Vector>();
    case Type::kMatrix:
        return operate(Operator::kMultiply, value, -1);
    default:
        throw Error(std::string("The operator - does not take ") + typeName(value.type()) + ".");
    }
}

} // namespace host::mel
