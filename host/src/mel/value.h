#pragma once

#include <ImathVec.h>

#include <cstddef>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace host::mel {

/// The types of the language. A value without type (void) is what a command without result gives.
enum class Type {
    kVoid,
    kInt,
    kFloat,
    kString,
    kVector,
    kMatrix,
    kIntArray,
    kFloatArray,
    kStringArray,
    kVectorArray
};

/// The name of a type as scripts write it: "int", "string[]", "void".
const char* typeName(Type type);
bool isArray(Type type);
/// The array type that holds elements of `element`; kVoid when there is none (matrices, arrays).
Type arrayOf(Type element);
/// The element type of an array type; kVoid for others.
Type elementOf(Type array);

using Vector = Imath::V3d;
using IntArray = std::vector<int>;
using FloatArray = std::vector<double>;
using StringArray = std::vector<std::string>;
using VectorArray = std::vector<Vector>;

/// A matrix of any size, row by row.
struct Matrix {
    int rows = 0;
    int columns = 0;
    std::vector<double> cells;

    double& at(int row, int column) { return cells[index(row, column)]; }
    double at(int row, int column) const { return cells[index(row, column)]; }
    friend bool operator==(const Matrix& a, const Matrix& b)
    {
        return a.rows == b.rows && a.columns == b.columns && a.cells == b.cells;
    }

private:
    std::size_t index(int row, int column) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
               static_cast<std::size_t>(column);
    }
};

/// A value of the language: what variables hold, commands take and commands return.
///
/// An int has 32 bits and wraps, a float is a double. There is no bool: truth is the int 1 or 0.
/// Conversions (the to... functions) follow the language: float to int truncates, a string to a number reads
/// the number it begins with (0 when there is none), a vector to a number is its length, a number to a vector
/// fills all three components, three numbers in an array make a vector and the other way round, and int[] and
/// float[] convert into each other. Everything else throws host::Error
/// `Cannot convert data of type A to type B.`
class Value {
public:
    Value() = default;
    Value(int number) : data(number) {}
    Value(bool truth) : data(truth ? 1 : 0) {}
    Value(double number) : data(number) {}
    Value(std::string text) : data(std::move(text)) {}
    Value(const char* text) : data(std::string(text)) {}
    Value(const Vector& vector) : data(vector) {}
    Value(Matrix matrix) : data(std::move(matrix)) {}
    Value(IntArray array) : data(std::move(array)) {}
    Value(FloatArray array) : data(std::move(array)) {}
    Value(StringArray array) : data(std::move(array)) {}
    Value(VectorArray array) : data(std::move(array)) {}
    /// Pointers must not turn into the int 1 by way of bool.
    template <class T>
    Value(const T*) = delete;

    /// The zero of a type: 0, "", <<0, 0, 0>>, an empty array, a matrix without cells.
    static Value zero(Type type);

    Type type() const { return static_cast<Type>(data.index()); }
    bool isVoid() const { return type() == Type::kVoid; }
    bool isString() const { return type() == Type::kString; }
    bool isNumber() const { return type() == Type::kInt || type() == Type::kFloat; }

    int toInt() const;
    double toFloat() const;
    /// The text of a single value: numbers as formatFloat() writes them, a vector as "x y z".
    std::string toString() const;
    Vector toVector() const;
    Matrix toMatrix() const;
    IntArray toIntArray() const;
    FloatArray toFloatArray() const;
    StringArray toStringArray() const;
    VectorArray toVectorArray() const;
    /// Truth as conditions see it: a number or length that is not zero. A string counts as the number it
    /// begins with; the words true, on and yes count as 1.
    bool toBool() const;
    /// As the to... functions; besides, an empty array becomes an empty array of any type.
    Value convertedTo(Type type) const;

    /// What `print` writes: like toString(), and arrays and matrices line by line, each line ended.
    std::string printed() const;

    /// Number of elements of an array, of characters of a string, 1 for other values, 0 for void.
    int size() const;

    /// Direct access for code that has looked at type(); throws std::bad_variant_access otherwise.
    template <class T>
    const T& get() const
    {
        return std::get<T>(data);
    }
    template <class T>
    T& get()
    {
        return std::get<T>(data);
    }

    /// Same type and same contents (not the == of scripts, which converts first).
    friend bool operator==(const Value& a, const Value& b) { return a.data == b.data; }
    friend bool operator!=(const Value& a, const Value& b) { return !(a == b); }

private:
    // The order of the alternatives is the order of Type.
    std::variant<std::monostate, int, double, std::string, Vector, Matrix, IntArray, FloatArray, StringArray,
                 VectorArray>
        data;
};

/// A float as `print` and string conversion write it: ten significant digits at most, no trailing zeros
/// (`%.10g`), so that 0.1 reads 0.1, 1.0 reads 1 and a third reads 0.3333333333.
std::string formatFloat(double number);

/// The number a text begins with (leading blanks skipped), 0 when it begins with none. A hexadecimal number
/// (0x1F) is read too. With `wholeText`, tells whether nothing but blanks follows.
double parseNumber(const std::string& text, bool* wholeText = nullptr);

/// A double cut to a 32-bit int; values out of range stick to the nearest limit, not-a-number gives 0.
int truncatedToInt(double number);

} // namespace host::mel
