#include "scene/dataText.h"

#include "nodes/geometry.h"
#include "scene/geometryText.h"
#include "scene/maStatement.h"
#include "scene/maText.h"

#include <ImathQuat.h>

namespace host {

namespace {

constexpr int kWordsPerLine = 12;

DataRef readComponents(MaCursor& words)
{
    auto data = std::make_shared<ComponentListData>();
    for (std::size_t count = words.count(); count > 0; --count)
        data->components.push_back(words.text());
    return data;
}

DataRef readInts(MaCursor& words)
{
    auto data = std::make_shared<IntArrayData>();
    for (std::size_t count = words.count(); count > 0; --count)
        data->values.push_back(static_cast<int>(words.integer()));
    return data;
}

DataRef readDoubles(MaCursor& words)
{
    auto data = std::make_shared<DoubleArrayData>();
    for (std::size_t count = words.count(); count > 0; --count)
        data->values.push_back(words.number());
    return data;
}

DataRef readStrings(MaCursor& words)
{
    auto data = std::make_shared<StringArrayData>();
    for (std::size_t count = words.count(); count > 0; --count)
        data->values.push_back(words.text());
    return data;
}

DataRef readPoints(MaCursor& words)
{
    auto data = std::make_shared<PointArrayData>();
    for (std::size_t count = words.count(); count > 0; --count) {
        std::array<double, 4>& point = data->values.emplace_back();
        for (double& coordinate : point)
            coordinate = words.number();
    }
    return data;
}

DataRef readVectors(MaCursor& words)
{
    auto data = std::make_shared<VectorArrayData>();
    for (std::size_t count = words.count(); count > 0; --count) {
        Imath::V3d& vector = data->values.emplace_back();
        for (int axis = 0; axis < 3; ++axis)
            vector[axis] = words.number();
    }
    return data;
}

struct Reading {
    const char* type;
    DataRef (*read)(MaCursor&);
};
constexpr Reading kReadings[] = {
    {"componentList", readComponents}, {"Int32Array", readInts},      {"doubleArray", readDoubles},
    {"stringArray", readStrings},      {"pointArray", readPoints},    {"vectorArray", readVectors},
    {"nurbsCurve", readCurve},         {"nurbsSurface", readSurface}, {"lattice", readLattice}};

template <class Values, class AppendOne>
void appendCounted(std::string& out, const Values& values, AppendOne appendOne)
{
    out += " " + std::to_string(values.size());
    WordLines lines(out);
    for (const auto& value : values)
        appendOne(lines, value);
}

template <class Wanted>
const Wanted* as(const Data& data)
{
    return dynamic_cast<const Wanted*>(&data);
}

Imath::M44d translation(const Imath::V3d& offset)
{
    Imath::M44d matrix;
    matrix.setTranslation(offset);
    return matrix;
}

Imath::V3d readVector(MaCursor& words)
{
    Imath::V3d vector;
    for (int axis = 0; axis < 3; ++axis)
        vector[axis] = words.number();
    return vector;
}

Imath::M44d readQuaternion(MaCursor& words)
{
    const Imath::V3d axis = readVector(words);
    const double w = words.number();
    return Imath::Quatd(w, axis).toMatrix44();
}

/// One turn about a main axis, row vectors.
Imath::M44d turn(int axis, double radians)
{
    Imath::V3d direction(0.0);
    direction[axis] = 1.0;
    Imath::M44d matrix;
    matrix.setAxisAngle(direction, radians);
    return matrix;
}

} // namespace

void WordLines::add(const std::string& word)
{
    if (inLine == kWordsPerLine)
        breakLine();
    out += ' ';
    out += word;
    ++inLine;
}

void WordLines::breakLine()
{
    out += "\n\t\t";
    inLine = 0;
}

DataRef readData(MaCursor& words, const std::string& type)
{
    for (const Reading& reading : kReadings) {
        if (type == reading.type)
            return reading.read(words);
    }
    auto data = std::make_shared<OpaqueData>();
    data->type = type;
    data->text = std::string(words.restOfText());
    return data;
}

void appendData(std::string& out, const Data& data)
{
    out += " -type " + maQuoted(data.typeName());
    if (const auto* components = as<ComponentListData>(data)) {
        appendCounted(out, components->components,
                      [](WordLines& lines, const std::string& text) { lines.add(maQuoted(text)); });
    } else if (const auto* ints = as<IntArrayData>(data)) {
        appendCounted(out, ints->values,
                      [](WordLines& lines, int value) { lines.add(std::to_string(value)); });
    } else if (const auto* doubles = as<DoubleArrayData>(data)) {
        appendCounted(out, doubles->values,
                      [](WordLines& lines, double value) { lines.add(maNumber(value)); });
    } else if (const auto* strings = as<StringArrayData>(data)) {
        appendCounted(out, strings->values,
                      [](WordLines& lines, const std::string& text) { lines.add(maQuoted(text)); });
    } else if (const auto* points = as<PointArrayData>(data)) {
        appendCounted(out, points->values, [](WordLines& lines, const std::array<double, 4>& point) {
            for (const double coordinate : point)
                lines.add(maNumber(coordinate));
        });
    } else if (const auto* vectors = as<VectorArrayData>(data)) {
        appendCounted(out, vectors->values, [](WordLines& lines, const Imath::V3d& vector) {
            for (int axis = 0; axis < 3; ++axis)
                lines.add(maNumber(vector[axis]));
        });
    } else if (const auto* geometry = as<Geometry>(data)) {
        appendGeometry(out, *geometry);
    } else if (const auto* opaque = as<OpaqueData>(data)) {
        out += " " + opaque->text;
    }
}

std::vector<std::pair<std::string, std::string>> readAliases(MaCursor& words)
{
    std::vector<std::pair<std::string, std::string>> aliases;
    if (words.next().kind != MaWord::Kind::kOpen)
        words.fail("aliases must stand in { }");
    while (words.peek().kind != MaWord::Kind::kClose) {
        const std::string alias = words.text();
        if (words.next().kind != MaWord::Kind::kComma)
            words.fail("an alias and its attribute must be separated by a comma");
        aliases.emplace_back(alias, words.text());
        if (words.peek().kind == MaWord::Kind::kComma)
            words.next();
        else if (words.peek().kind != MaWord::Kind::kClose)
            words.fail("aliases must be separated by commas");
    }
    words.next();
    return aliases;
}

void appendAliases(std::string& out, const std::vector<std::pair<std::string, std::string>>& aliases)
{
    out += " -type \"attributeAlias\" {";
    const char* separator = "";
    for (const auto& [alias, attribute] : aliases) {
        out += separator + maQuoted(alias) + "," + maQuoted(attribute);
        separator = ",";
    }
    out += "}";
}

Imath::M44d readXform(MaCursor& words)
{
    static constexpr int kOrders[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {1, 0, 2}, {2, 1, 0}};
    Imath::M44d scale;
    scale.setScale(readVector(words));
    const Imath::V3d angles = readVector(words);
    const long long order = words.integer();
    if (order < 0 || order > 5)
        words.fail("a rotation order lies between 0 and 5");
    Imath::M44d rotation;
    for (const int axis : kOrders[order])
        rotation *= turn(axis, angles[axis]);
    const Imath::V3d translate = readVector(words);
    const Imath::V3d shears = readVector(words);
    Imath::M44d shear;
    shear[1][0] = shears.x;
    shear[2][0] = shears.y;
    shear[2][1] = shears.z;
    const Imath::V3d scalePivot = readVector(words), scaleOffset = readVector(words);
    const Imath::V3d rotatePivot = readVector(words), rotateOffset = readVector(words);
    const Imath::M44d rotateOrient = readQuaternion(words), jointOrient = readQuaternion(words);
    const Imath::V3d parentScale = readVector(words);
    Imath::M44d inverse;
    if (words.boolean())
        inverse.setScale(parentScale);
    return translation(-scalePivot) * scale * shear * translation(scalePivot) * translation(scaleOffset) *
           translation(-rotatePivot) * rotateOrient * rotation * jointOrient * inverse *
           translation(rotatePivot) * translation(rotateOffset) * translation(translate);
}

Imath::M44d readMatrix(MaCursor& words)
{
    Imath::M44d matrix;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column)
            matrix[row][column] = words.number();
    }
    return matrix;
}

void appendMatrix(std::string& out, const Imath::M44d& matrix)
{
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            out += ' ';
            out += maNumber(matrix[row][column]);
        }
    }
}

} // namespace host
