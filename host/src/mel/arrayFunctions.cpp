#include "mel/functions.h"
#include "types/error.h"

#include <algorithm>

namespace host::mel {

namespace {

Value size(FunctionCall& call)
{
    return call.value(0).size();
}

Value clear(FunctionCall& call)
{
    Value& array = call.array(0);
    array = Value::zero(array.type());
    return {};
}

template <class Array>
Value ordered(Array array)
{
    std::sort(array.begin(), array.end());
    return array;
}

/// sort(array): an ordered copy.
Value sorted(FunctionCall& call)
{
    const Value& array = call.value(0);
    switch (array.type()) {
    case Type::kIntArray:
        return ordered(array.get<IntArray>());
    case Type::kFloatArray:
        return ordered(array.get<FloatArray>());
    case Type::kStringArray:
        return ordered(array.get<StringArray>());
    default:
        throw Error(std::string("sort does not take data of type ") + typeName(array.type()) + ".");
    }
}

bool contains(const StringArray& array, const std::string& text)
{
    return std::find(array.begin(), array.end(), text) != array.end();
}

/// appendStringArray(target, more, count): the first `count` elements of `more`.
Value appendTexts(FunctionCall& call)
{
    const StringArray more = call.texts(1);
    const auto count = std::min(more.size(), static_cast<std::size_t>(std::max(call.integer(2), 0)));
    StringArray& target = call.textArray(0);
    target.insert(target.end(), more.begin(), more.begin() + static_cast<std::ptrdiff_t>(count));
    return {};
}

Value catenated(FunctionCall& call)
{
    StringArray result = call.texts(0);
    const StringArray more = call.texts(1);
    result.insert(result.end(), more.begin(), more.end());
    return result;
}

Value containsText(FunctionCall& call)
{
    return contains(call.texts(1), call.text(0));
}

Value countOfText(FunctionCall& call)
{
    const StringArray array = call.texts(1);
    return static_cast<int>(std::count(array.begin(), array.end(), call.text(0)));
}

/// stringArrayFind(text, from, array): the index, -1 when it is not there.
Value indexOfText(FunctionCall& call)
{
    const StringArray array = call.texts(2);
    const std::string text = call.text(0);
    for (int i = std::max(call.integer(1), 0); i < static_cast<int>(array.size()); ++i) {
        if (array[static_cast<std::size_t>(i)] == text)
            return i;
    }
    return -1;
}

/// stringArrayRemove(unwanted, array): a copy without every element that is unwanted.
Value withoutTexts(FunctionCall& call)
{
    const StringArray unwanted = call.texts(0);
    StringArray result;
    for (const std::string& text : call.texts(1)) {
        if (!contains(unwanted, text))
            result.push_back(text);
    }
    return result;
}

Value withoutDuplicates(FunctionCall& call)
{
    StringArray result;
    for (const std::string& text : call.texts(0)) {
        if (!contains(result, text))
            result.push_back(text);
    }
    return result;
}

/// stringArrayInsertAtIndex(index, array, text): 1, or 0 when the index lies outside the array.
Value insertText(FunctionCall& call)
{
    StringArray& array = call.textArray(1);
    const int index = call.integer(0);
    if (index < 0 || index > static_cast<int>(array.size()))
        return 0;
    array.insert(array.begin() + index, call.text(2));
    return 1;
}

Value removeTextAt(FunctionCall& call)
{
    StringArray& array = call.textArray(1);
    const int index = call.integer(0);
    if (index < 0 || index >= static_cast<int>(array.size()))
        return 0;
    array.erase(array.begin() + index);
    return 1;
}

} // namespace

void addArrayFunctions(FunctionTable& table)
{
    table.insert({
        {"size", {1, 1, size}},
        {"clear", {1, 1, clear}},
        {"sort", {1, 1, sorted}},
        {"appendStringArray", {3, 3, appendTexts}},
        {"stringArrayCatenate", {2, 2, catenated}},
        {"stringArrayContains", {2, 2, containsText}},
        {"stringArrayCount", {2, 2, countOfText}},
        {"stringArrayFind", {3, 3, indexOfText}},
        {"stringArrayRemove", {2, 2, withoutTexts}},
        {"stringArrayRemoveDuplicates", {1, 1, withoutDuplicates}},
        {"stringArrayInsertAtIndex", {3, 3, insertText}},
        {"stringArrayRemoveAtIndex", {2, 2, removeTextAt}},
    });
}

} // namespace host::mel
