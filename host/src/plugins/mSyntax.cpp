#include "plugins/syntax.h"

#include "types/api.h"

#include <maya/MSyntax.h>

#include <utility>

namespace {

constexpr std::size_t kShortestLongName = 4; // short names have fewer characters

std::string bare(const char* name)
{
    const std::string text = name ? name : "";
    return !text.empty() && text[0] == '-' ? text.substr(1) : text;
}

} // namespace

MSyntax::MSyntax() : syntax(std::make_shared<host::Syntax>()) {}
MSyntax::MSyntax(const MSyntax& other) : syntax(std::make_shared<host::Syntax>(*other.syntax)) {}
// A moved handle stays a handle on the same syntax: this is how a command hands out its own.
MSyntax::MSyntax(MSyntax&& other) noexcept : syntax(std::move(other.syntax))
{
    other.syntax = std::make_shared<host::Syntax>();
}
MSyntax::~MSyntax() = default;

MSyntax& MSyntax::operator=(const MSyntax& rhs)
{
    if (this != &rhs)
        syntax = std::make_shared<host::Syntax>(*rhs.syntax);
    return *this;
}

MSyntax& MSyntax::operator=(MSyntax&& other) noexcept
{
    std::swap(syntax, other.syntax);
    return *this;
}

MStatus MSyntax::addFlag(const char* shortName, const char* longName, MArgType argType1, MArgType argType2,
                         MArgType argType3, MArgType argType4, MArgType argType5, MArgType argType6)
{
    host::Syntax::Flag flag;
    flag.shortName = bare(shortName);
    flag.longName = bare(longName);
    const bool named = !flag.shortName.empty() && flag.shortName.size() < kShortestLongName &&
                       flag.longName.size() >= kShortestLongName;
    if (!named || syntax->find(flag.shortName) || syntax->find(flag.longName))
        return MStatus::kInvalidParameter;
    for (const MArgType type : {argType1, argType2, argType3, argType4, argType5, argType6}) {
        if (type <= kInvalidArgType || type >= kLastArgType)
            return MStatus::kInvalidParameter;
        if (type != kNoArg)
            flag.args.push_back(type);
    }
    syntax->flags.push_back(std::move(flag));
    return MStatus::kSuccess;
}

MStatus MSyntax::makeFlagMultiUse(const char* flag)
{
    host::Syntax::Flag* found = syntax->find(bare(flag));
    if (!found)
        return MStatus::kInvalidParameter;
    found->multiUse = true;
    return MStatus::kSuccess;
}

MStatus MSyntax::addArg(MArgType arg)
{
    if (arg <= kNoArg || arg >= kLastArgType)
        return MStatus::kInvalidParameter;
    syntax->arguments.push_back(arg);
    return MStatus::kSuccess;
}

MStatus MSyntax::setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects)
{
    return setObjectType(objectFormat, minimumObjects, host::Syntax::kNoLimit);
}

MStatus MSyntax::setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects,
                               unsigned int maximumObjects)
{
    if (objectFormat <= kInvalidObjectFormat || objectFormat >= kLastObjectFormat ||
        maximumObjects < minimumObjects)
        return MStatus::kInvalidParameter;
    syntax->objectFormat = objectFormat;
    syntax->minObjects = minimumObjects;
    syntax->maxObjects = maximumObjects;
    return MStatus::kSuccess;
}

void MSyntax::setMinObjects(unsigned int minimumObjectCount)
{
    syntax->minObjects = minimumObjectCount;
}

void MSyntax::setMaxObjects(unsigned int maximumObjectCount)
{
    syntax->maxObjects = maximumObjectCount;
}

unsigned int MSyntax::minObjects() const
{
    return syntax->minObjects;
}

unsigned int MSyntax::maxObjects() const
{
    return syntax->maxObjects;
}

void MSyntax::useSelectionAsDefault(bool useSelectionList)
{
    syntax->selectionAsDefault = useSelectionList;
}

void MSyntax::enableQuery(bool supportsQuery)
{
    syntax->query = supportsQuery;
}

void MSyntax::enableEdit(bool supportsEdit)
{
    syntax->edit = supportsEdit;
}

bool MSyntax::canQuery() const
{
    return syntax->query;
}

bool MSyntax::canEdit() const
{
    return syntax->edit;
}
