#include "mel/functions.h"
#include "mel/interpreter.h"
#include "mel/operators.h"
#include "types/error.h"

#include <algorithm>
#include <cmath>

namespace host::mel {

namespace {

constexpr double kPi = 3.14159265358979323846;

using Real = double (*)(double);

/// A function of one float as a function of the language.
template <Real work>
Value real(FunctionCall& call)
{
    return work(call.number(0));
}

double trigonometricLimit(double sine, const char* name)
{
    if (sine < -1.0 || sine > 1.0)
        throw Error(std::string(name) + " takes numbers from -1 to 1.");
    return sine;
}

double arcSine(double sine)
{
    return std::asin(trigonometricLimit(sine, "asin"));
}

double arcCosine(double cosine)
{
    return std::acos(trigonometricLimit(cosine, "acos"));
}

double squareRoot(double number)
{
    if (number < 0.0)
        throw Error("sqrt takes no negative number.");
    return std::sqrt(number);
}

double logarithm(double number)
{
    if (number <= 0.0)
        throw Error("log takes positive numbers only.");
    return std::log(number);
}

double logarithmOf10(double number)
{
    if (number <= 0.0)
        throw Error("log10 takes positive numbers only.");
    return std::log10(number);
}

bool bothInts(const FunctionCall& call)
{
    return call.value(0).type() == Type::kInt && call.value(1).type() == Type::kInt;
}

Value absolute(FunctionCall& call)
{
    const Value& value = call.value(0);
    if (value.type() == Type::kInt)
        return value.get<int>() < 0 ? negated(value) : value;
    if (value.type() != Type::kVector)
        return std::abs(value.toFloat());
    const Vector& vector = value.get<Vector>();
    return Vector(std::abs(vector.x), std::abs(vector.y), std::abs(vector.z));
}

Value least(FunctionCall& call)
{
    if (bothInts(call))
        return std::min(call.integer(0), call.integer(1));
    return std::min(call.number(0), call.number(1));
}

Value greatest(FunctionCall& call)
{
    if (bothInts(call))
        return std::max(call.integer(0), call.integer(1));
    return std::max(call.number(0), call.number(1));
}

/// clamp(least, greatest, value)
Value clamped(FunctionCall& call)
{
    if (bothInts(call) && call.value(2).type() == Type::kInt)
        return std::max(call.integer(0), std::min(call.integer(1), call.integer(2)));
    return std::max(call.number(0), std::min(call.number(1), call.number(2)));
}

Value sign(FunctionCall& call)
{
    const double number = call.number(0);
    return number > 0.0 ? 1 : number < 0.0 ? -1 : 0;
}

Value toRadians(FunctionCall& call)
{
    if (call.value(0).type() == Type::kVector)
        return call.vector(0) * (kPi / 180.0);
    return call.number(0) * (kPi / 180.0);
}

Value toDegrees(FunctionCall& call)
{
    if (call.value(0).type() == Type::kVector)
        return call.vector(0) * (180.0 / kPi);
    return call.number(0) * (180.0 / kPi);
}

/// The angle between two vectors, in radians.
Value angle(FunctionCall& call)
{
    const Vector a = call.vector(0).normalized();
    const Vector b = call.vector(1).normalized();
    return std::atan2(a.cross(b).length(), a.dot(b));
}

/// The next number of SplitMix64, from 0 to below 1.
double nextRandom(std::uint64_t& state)
{
    state += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = state;
    mixed = (mixed ^ (mixed >> 30u)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27u)) * 0x94D049BB133111EBu;
    mixed ^= mixed >> 31u;
    return static_cast<double>(mixed >> 11u) * 0x1.0p-53;
}

/// rand(most), rand(least, most), and both with vectors.
Value randomNumber(FunctionCall& call)
{
    std::uint64_t& state = call.interpreter.randomState;
    const bool one = call.count() == 1;
    const Value& last = call.value(one ? 0 : 1);
    if (last.type() != Type::kVector) {
        const double from = one ? 0.0 : call.number(0);
        return from + (last.toFloat() - from) * nextRandom(state);
    }
    const Vector from = one ? Vector(0.0) : call.vector(0);
    const Vector range = last.get<Vector>() - from;
    Vector result;
    for (int axis = 0; axis < 3; ++axis)
        result[axis] = from[axis] + range[axis] * nextRandom(state);
    return result;
}

Value seed(FunctionCall& call)
{
    call.interpreter.randomState = static_cast<std::uint64_t>(call.integer(0));
    return {};
}

} // namespace

void addMathFunctions(FunctionTable& table)
{
    table.insert({
        {"sin", {1, 1, real<std::sin>}},
        {"cos", {1, 1, real<std::cos>}},
        {"tan", {1, 1, real<std::tan>}},
        {"asin", {1, 1, real<arcSine>}},
        {"acos", {1, 1, real<arcCosine>}},
        {"atan", {1, 1, real<std::atan>}},
        {"exp", {1, 1, real<std::exp>}},
        {"log", {1, 1, real<logarithm>}},
        {"log10", {1, 1, real<logarithmOf10>}},
        {"sqrt", {1, 1, real<squareRoot>}},
        {"floor", {1, 1, real<std::floor>}},
        {"ceil", {1, 1, real<std::ceil>}},
        {"trunc", {1, 1, real<std::trunc>}},
        {"atan2",
         {2, 2, [](FunctionCall& call) -> Value { return std::atan2(call.number(0), call.number(1)); }}},
        {"hypot",
         {2, 2, [](FunctionCall& call) -> Value { return std::hypot(call.number(0), call.number(1)); }}},
        {"pow", {2, 2, [](FunctionCall& call) -> Value { return std::pow(call.number(0), call.number(1)); }}},
        {"fmod",
         {2, 2,
          [](FunctionCall& call) { return operate(Operator::kModulo, call.number(0), call.number(1)); }}},
        {"mag", {1, 1, [](FunctionCall& call) -> Value { return call.vector(0).length(); }}},
        {"dot", {2, 2, [](FunctionCall& call) -> Value { return call.vector(0).dot(call.vector(1)); }}},
        {"cross", {2, 2, [](FunctionCall& call) -> Value { return call.vector(0).cross(call.vector(1)); }}},
        {"unit", {1, 1, [](FunctionCall& call) -> Value { return call.vector(0).normalized(); }}},
        {"angle", {2, 2, angle}},
        {"abs", {1, 1, absolute}},
        {"min", {2, 2, least}},
        {"max", {2, 2, greatest}},
        {"clamp", {3, 3, clamped}},
        {"sign", {1, 1, sign}},
        {"deg_to_rad", {1, 1, toRadians}},
        {"rad_to_deg", {1, 1, toDegrees}},
        {"rand", {1, 2, randomNumber}},
        {"seed", {1, 1, seed}},
    });
}

} // namespace host::mel
