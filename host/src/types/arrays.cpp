// The growing arrays of the interface. They share no base class there, so their members are written once as
// macros here: one for what all have, one for what those that convert numbers add.

#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MIntArray.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>
#include <maya/MUintArray.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

template <class Element>
MStatus insertInto(std::vector<Element>& elements, Element element, unsigned int index)
{
    if (index > elements.size())
        return MStatus::kFailure;
    elements.insert(elements.begin() + static_cast<std::ptrdiff_t>(index), std::move(element));
    return MStatus::kSuccess;
}

template <class Element>
MStatus removeFrom(std::vector<Element>& elements, unsigned int index)
{
    if (index >= elements.size())
        return MStatus::kFailure;
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(index));
    return MStatus::kSuccess;
}

template <class Element>
MStatus setIn(std::vector<Element>& elements, Element element, unsigned int index)
{
    if (index >= elements.size())
        return MStatus::kFailure;
    elements[index] = std::move(element);
    return MStatus::kSuccess;
}

template <class To, class From>
std::vector<To> converted(const From* source, unsigned int count)
{
    std::vector<To> elements(count);
    std::transform(source, source + count, elements.begin(),
                   [](From value) { return static_cast<To>(value); });
    return elements;
}

template <class To, class From>
MStatus copyOut(const std::vector<From>& elements, To* target)
{
    std::transform(elements.begin(), elements.end(), target,
                   [](const From& value) { return static_cast<To>(value); });
    return MStatus::kSuccess;
}

} // namespace

// Copies are taken by value on purpose: an element of the array itself may be what is inserted.
#define DEFINE_ARRAY(Array, Element, Argument)                                                               \
    Array::Array() = default;                                                                                \
    Array::Array(const Array& other) = default;                                                              \
    Array::Array(Array&& other) noexcept = default;                                                          \
    Array::Array(unsigned int size, Argument value) : elements(size, value) {}                               \
    Array::~Array() = default;                                                                               \
    Array& Array::operator=(const Array& other) = default;                                                   \
    Array& Array::operator=(Array&& other) noexcept = default;                                               \
    MStatus Array::setLength(unsigned int length)                                                            \
    {                                                                                                        \
        elements.resize(length);                                                                             \
        return MStatus::kSuccess;                                                                            \
    }                                                                                                        \
    MStatus Array::append(Argument element)                                                                  \
    {                                                                                                        \
        elements.push_back(element);                                                                         \
        return MStatus::kSuccess;                                                                            \
    }                                                                                                        \
    MStatus Array::insert(Argument element, unsigned int index)                                              \
    {                                                                                                        \
        return insertInto<Element>(elements, element, index);                                                \
    }                                                                                                        \
    MStatus Array::remove(unsigned int index)                                                                \
    {                                                                                                        \
        return removeFrom(elements, index);                                                                  \
    }                                                                                                        \
    MStatus Array::set(Argument element, unsigned int index)                                                 \
    {                                                                                                        \
        return setIn<Element>(elements, element, index);                                                     \
    }                                                                                                        \
    MStatus Array::clear()                                                                                   \
    {                                                                                                        \
        elements.clear();                                                                                    \
        return MStatus::kSuccess;                                                                            \
    }

#define DEFINE_COPY(Array)                                                                                   \
    MStatus Array::copy(const Array& source)                                                                 \
    {                                                                                                        \
        elements = source.elements;                                                                          \
        return MStatus::kSuccess;                                                                            \
    }

#define DEFINE_BULK(Array, Element)                                                                          \
    Array::Array(const Element* source, unsigned int count) : elements(source, source + count) {}            \
    MStatus Array::get(Element* values) const                                                                \
    {                                                                                                        \
        return copyOut(elements, values);                                                                    \
    }

#define DEFINE_CONVERSIONS(Array, Element, Other)                                                            \
    Array::Array(const Other* source, unsigned int count) : elements(converted<Element>(source, count)) {}   \
    MStatus Array::set(Other element, unsigned int index)                                                    \
    {                                                                                                        \
        return setIn(elements, static_cast<Element>(element), index);                                        \
    }                                                                                                        \
    MStatus Array::get(Other* values) const                                                                  \
    {                                                                                                        \
        return copyOut(elements, values);                                                                    \
    }

DEFINE_ARRAY(MIntArray, int, int)
DEFINE_COPY(MIntArray)
DEFINE_BULK(MIntArray, int)

DEFINE_ARRAY(MUintArray, unsigned int, unsigned int)
DEFINE_COPY(MUintArray)
DEFINE_BULK(MUintArray, unsigned int)

DEFINE_ARRAY(MFloatArray, float, float)
DEFINE_COPY(MFloatArray)
DEFINE_BULK(MFloatArray, float)
DEFINE_CONVERSIONS(MFloatArray, float, double)

DEFINE_ARRAY(MDoubleArray, double, double)
DEFINE_COPY(MDoubleArray)
DEFINE_BULK(MDoubleArray, double)
DEFINE_CONVERSIONS(MDoubleArray, double, float)

DEFINE_ARRAY(MStringArray, MString, const MString&)
DEFINE_BULK(MStringArray, MString)

DEFINE_ARRAY(MObjectArray, MObject, const MObject&)
DEFINE_COPY(MObjectArray)
DEFINE_BULK(MObjectArray, MObject)

DEFINE_ARRAY(MDagPathArray, MDagPath, const MDagPath&)
DEFINE_COPY(MDagPathArray)

DEFINE_ARRAY(MPlugArray, MPlug, const MPlug&)
DEFINE_COPY(MPlugArray)
DEFINE_BULK(MPlugArray, MPlug)

DEFINE_ARRAY(MPointArray, MPoint, const MPoint&)
DEFINE_COPY(MPointArray)

MPointArray::MPointArray(const MPoint* source, unsigned int count) : elements(source, source + count) {}

MPointArray::MPointArray(const double (*source)[4], unsigned int count)
{
    elements.reserve(count);
    for (unsigned int i = 0; i < count; ++i)
        elements.emplace_back(source[i]);
}

MStatus MPointArray::append(double x, double y, double z, double w)
{
    elements.emplace_back(x, y, z, w);
    return MStatus::kSuccess;
}

MStatus MPointArray::set(unsigned int index, double x, double y, double z, double w)
{
    return setIn(elements, MPoint(x, y, z, w), index);
}

MStatus MPointArray::get(double (*values)[4]) const
{
    for (std::size_t i = 0; i < elements.size(); ++i)
        elements[i].get(values[i]);
    return MStatus::kSuccess;
}
