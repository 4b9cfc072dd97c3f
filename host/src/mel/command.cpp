#include "mel/command.h"

#include "types/error.h"

namespace host::mel {

CommandSpec& CommandSpec::flag(std::string shortName, std::string longName, std::vector<ArgType> args)
{
    flags.push_back({std::move(shortName), std::move(longName), std::move(args)});
    return *this;
}

CommandSpec& CommandSpec::multi()
{
    flags.back().multi = true;
    return *this;
}

CommandSpec& CommandSpec::queryArgs()
{
    flags.back().queryArgs = true;
    return *this;
}

CommandSpec& CommandSpec::objects(int least, int most)
{
    leastObjects = least;
    mostObjects = most;
    return *this;
}

CommandSpec& CommandSpec::query()
{
    hasQuery = true;
    return *this;
}

CommandSpec& CommandSpec::edit()
{
    hasEdit = true;
    return *this;
}

CommandSpec& CommandSpec::undoable()
{
    isUndoable = true;
    return *this;
}

const FlagSpec* CommandSpec::find(const std::string& flagName) const
{
    for (const FlagSpec& flagSpec : flags) {
        if (flagSpec.longName == flagName || flagSpec.shortName == flagName)
            return &flagSpec;
    }
    return nullptr;
}

bool Args::isSet(const std::string& flag) const
{
    return uses(flag) != 0;
}

int Args::uses(const std::string& flag) const
{
    const FlagSpec* const wanted = spec->find(flag);
    if (!wanted)
        throw Error("The command \"" + spec->name + "\" does not declare the flag \"" + flag + "\".");
    int count = 0;
    for (const Use& candidate : flagUses)
        count += candidate.flag == wanted ? 1 : 0;
    return count;
}

const Args::Use& Args::use(const std::string& flag, int which) const
{
    const FlagSpec* const wanted = spec->find(flag);
    for (const Use& candidate : flagUses) {
        if (candidate.flag == wanted && which-- == 0)
            return candidate;
    }
    throw Error("The command \"" + spec->name + "\" needs the flag \"-" + flag + "\".");
}

const Value& Args::value(const std::string& flag, int index, int which) const
{
    const Use& found = use(flag, which);
    if (index < 0 || index >= static_cast<int>(found.values.size()))
        throw Error("The flag \"-" + flag + "\" of \"" + spec->name + "\" needs an argument.");
    return found.values[static_cast<std::size_t>(index)];
}

bool Args::boolean(const std::string& flag, int index, int which) const
{
    return value(flag, index, which).toBool();
}

int Args::integer(const std::string& flag, int index, int which) const
{
    return value(flag, index, which).toInt();
}

double Args::number(const std::string& flag, int index, int which) const
{
    return value(flag, index, which).toFloat();
}

std::string Args::text(const std::string& flag, int index, int which) const
{
    return value(flag, index, which).toString();
}

const Value* Args::first(const std::string& flag) const
{
    if (!isSet(flag))
        return nullptr;
    const Use& found = use(flag, 0);
    return found.values.empty() ? nullptr : &found.values.front();
}

bool Args::booleanOr(const std::string& flag, bool otherwise) const
{
    const Value* const found = first(flag);
    return found ? found->toBool() : otherwise;
}

int Args::integerOr(const std::string& flag, int otherwise) const
{
    const Value* const found = first(flag);
    return found ? found->toInt() : otherwise;
}

double Args::numberOr(const std::string& flag, double otherwise) const
{
    const Value* const found = first(flag);
    return found ? found->toFloat() : otherwise;
}

std::string Args::textOr(const std::string& flag, const std::string& otherwise) const
{
    const Value* const found = first(flag);
    return found ? found->toString() : otherwise;
}

std::vector<std::string> Args::texts(const std::string& flag) const
{
    std::vector<std::string> result;
    result.reserve(static_cast<std::size_t>(uses(flag)));
    for (int which = 0; which < uses(flag); ++which)
        result.push_back(text(flag, 0, which));
    return result;
}

Vector Args::vector(const std::string& flag) const
{
    const int last = uses(flag) - 1;
    return {number(flag, 0, last), number(flag, 1, last), number(flag, 2, last)};
}

std::vector<std::string> Args::objectNames() const
{
    std::vector<std::string> names;
    names.reserve(objectValues.size());
    for (const Value& object : objectValues)
        names.push_back(object.toString());
    return names;
}

} // namespace host::mel
