#include "plugins/syntax.h"

#include "types/error.h"

#include <algorithm>
#include <cctype>

namespace host {

namespace {

std::string withoutDash(const std::string& name)
{
    return !name.empty() && name[0] == '-' ? name.substr(1) : name;
}

const char* typeText(MSyntax::MArgType type)
{
    switch (type) {
    case MSyntax::kBoolean:
        return "boolean";
    case MSyntax::kLong:
        return "int";
    case MSyntax::kUnsigned:
        return "unsigned int";
    case MSyntax::kDouble:
        return "float";
    case MSyntax::kDistance:
        return "distance";
    case MSyntax::kAngle:
        return "angle";
    case MSyntax::kTime:
        return "time";
    case MSyntax::kSelectionItem:
        return "object name";
    default:
        return "string";
    }
}

bool fits(const mel::Value& value, MSyntax::MArgType type)
{
    switch (type) {
    case MSyntax::kBoolean:
        return argumentBool(value).has_value();
    case MSyntax::kLong:
    case MSyntax::kUnsigned:
        return argumentInt(value).has_value();
    case MSyntax::kDouble:
    case MSyntax::kDistance:
    case MSyntax::kAngle:
    case MSyntax::kTime:
        return argumentDouble(value).has_value();
    default:
        return argumentText(value).has_value();
    }
}

bool looksLikeFlag(const mel::Value& value)
{
    if (!value.isString())
        return false;
    const std::string& text = value.get<std::string>();
    return text.size() > 1 && text[0] == '-' && std::isalpha(static_cast<unsigned char>(text[1]));
}

bool isWord(const mel::Value& value, const char* shortFlag, const char* longFlag)
{
    return value.isString() &&
           (value.get<std::string>() == shortFlag || value.get<std::string>() == longFlag);
}

/// A declared call takes single values: arrays count as their elements. Not made when there are none, so that
/// long texts are not copied.
struct Spread {
    bool needed = false;
    std::vector<mel::Value> values;
    std::vector<unsigned int> positions; ///< where each value stands among what was given
};

Spread spread(const ArgList& given)
{
    Spread result;
    const auto holdsArray = [](const mel::Value& value) { return mel::isArray(value.type()); };
    result.needed = std::any_of(given.values.begin(), given.values.end(), holdsArray);
    if (!result.needed)
        return result;
    for (unsigned int position = 0; position < given.values.size(); ++position) {
        for (mel::Value& value : elementsOf(given.values[position])) {
            result.values.push_back(std::move(value));
            result.positions.push_back(position);
        }
    }
    return result;
}

/// One pass over the arguments of one call.
class Sorter {
public:
    Sorter(const Syntax& declared, const ArgList& given, const std::string& name)
        : own(spread(given)), list(own.needed ? own.values : given.values), command(name)
    {
        parsed.syntax = declared;
    }

    ParsedArgs run()
    {
        chooseMode();
        while (next < list.size())
            takeOne();
        checkCounts();
        return std::move(parsed);
    }

private:
    [[noreturn]] void fail(const std::string& what) const
    {
        throw Error(command.empty() ? what : command + ": " + what);
    }

    /// The mode decides how many arguments the flags take, so it is settled first.
    void chooseMode()
    {
        for (const mel::Value& value : list) {
            parsed.query |= isWord(value, "-q", "-query");
            parsed.edit |= isWord(value, "-e", "-edit");
        }
        if (parsed.query && !parsed.syntax.query && !parsed.syntax.find("q"))
            fail("Invalid flag '-query'. The command has no query mode.");
        if (parsed.edit && !parsed.syntax.edit && !parsed.syntax.find("e"))
            fail("Invalid flag '-edit'. The command has no edit mode.");
        parsed.edit &= parsed.syntax.edit;
        parsed.query &= parsed.syntax.query && !parsed.edit;
    }

    void takeOne()
    {
        const mel::Value& value = list[next];
        if (!looksLikeFlag(value)) {
            takeObject(value);
            ++next;
            return;
        }
        const Syntax::Flag* flag = parsed.syntax.find(value.get<std::string>());
        if (flag)
            takeFlag(*flag);
        else if (isWord(value, "-q", "-query") || isWord(value, "-e", "-edit"))
            ++next;
        else
            fail("Invalid flag '" + value.get<std::string>() + "'.");
    }

    void takeFlag(const Syntax::Flag& flag)
    {
        ParsedArgs::Use use;
        use.longName = flag.longName;
        use.position = own.needed ? own.positions[next] : static_cast<unsigned int>(next);
        ++next;
        if (!parsed.query) {
            for (const MSyntax::MArgType type : flag.args)
                use.values.push_back(takeFlagArgument(flag, type));
        }
        auto& uses = parsed.uses;
        if (!flag.multiUse)
            uses.erase(std::remove_if(uses.begin(), uses.end(),
                                      [&](const auto& earlier) { return earlier.longName == flag.longName; }),
                       uses.end());
        uses.push_back(std::move(use));
    }

    const mel::Value& takeFlagArgument(const Syntax::Flag& flag, MSyntax::MArgType type)
    {
        const std::string which = "flag '-" + flag.longName + "'";
        if (next >= list.size())
            fail("No argument for " + which + ". Expected " + typeText(type) + ".");
        const mel::Value& value = list[next++];
        if (!fits(value, type))
            fail("Invalid argument for " + which + ". Expected " + typeText(type) + ", got " +
                 argumentText(value).value_or(mel::typeName(value.type())) + ".");
        return value;
    }

    void takeObject(const mel::Value& value)
    {
        const std::size_t position = parsed.arguments.size();
        const bool isArgument = position < parsed.syntax.arguments.size() && !parsed.query && !parsed.edit;
        const std::string text = argumentText(value).value_or(std::string());
        if (isArgument) {
            if (!fits(value, parsed.syntax.arguments[position]))
                fail("Invalid argument " + std::to_string(position + 1) + ". Expected " +
                     typeText(parsed.syntax.arguments[position]) + ", got " + text + ".");
            parsed.arguments.push_back(value);
            return;
        }
        const bool takesObjects = parsed.syntax.objectFormat == MSyntax::kStringObjects ||
                                  parsed.syntax.objectFormat == MSyntax::kSelectionList;
        if (!takesObjects || parsed.objects.size() >= parsed.syntax.maxObjects)
            fail("Too many arguments: '" + text + "'.");
        parsed.objects.push_back(text);
    }

    void checkCounts() const
    {
        const bool creating = !parsed.query && !parsed.edit;
        if (creating && parsed.arguments.size() < parsed.syntax.arguments.size())
            fail("Wrong number of arguments: " + std::to_string(parsed.syntax.arguments.size()) +
                 " expected, " + std::to_string(parsed.arguments.size()) + " given.");
        if (parsed.objects.size() < parsed.syntax.minObjects && !parsed.syntax.selectionAsDefault)
            fail("Not enough objects: at least " + std::to_string(parsed.syntax.minObjects) + " expected.");
    }

    const Spread own;
    const std::vector<mel::Value>& list;
    const std::string& command;
    std::size_t next = 0;
    ParsedArgs parsed;
};

} // namespace

const Syntax::Flag* Syntax::find(const std::string& name) const
{
    const std::string sought = withoutDash(name);
    for (const Flag& flag : flags) {
        if (flag.shortName == sought || flag.longName == sought)
            return &flag;
    }
    return nullptr;
}

Syntax::Flag* Syntax::find(const std::string& name)
{
    return const_cast<Flag*>(static_cast<const Syntax*>(this)->find(name));
}

const ParsedArgs::Use* ParsedArgs::use(const std::string& flag, unsigned int which) const
{
    const Syntax::Flag* sought = syntax.find(flag);
    for (const Use& use : uses) {
        if (sought && use.longName == sought->longName && which-- == 0)
            return &use;
    }
    return nullptr;
}

unsigned int ParsedArgs::useCount(const std::string& flag) const
{
    unsigned int count = 0;
    while (use(flag, count))
        ++count;
    return count;
}

std::shared_ptr<const ParsedArgs> parseArguments(const Syntax& syntax, const ArgList& list,
                                                 const std::string& command)
{
    return std::make_shared<const ParsedArgs>(Sorter(syntax, list, command).run());
}

} // namespace host
