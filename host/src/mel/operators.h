#pragma once

#include "mel/value.h"

namespace host::mel {

enum class Operator {
    kAdd,
    kSubtract,
    kMultiply,
    kDivide,
    kModulo,
    kCross,
    kEqual,
    kNotEqual,
    kLess,
    kLessEqual,
    kGreater,
    kGreaterEqual
};

/// The operator as scripts write it.
const char* operatorText(Operator operation);

/// `left operation right` as the language computes it. Two ints give an int (32 bits, wrapping; division
/// truncates), an int and a float a float; a number beside a vector fills a vector, but scales it in products
/// and quotients; vector * vector is the dot product, ^ the cross product. A string on one side of + or of a
/// comparison makes the other side a string. Vectors are ordered by length. Throws host::Error for other
/// types and for a division by zero.
Value operate(Operator operation, const Value& left, const Value& right);

/// -value of a number, vector or matrix.
Value negated(const Value& value);

} // namespace host::mel
