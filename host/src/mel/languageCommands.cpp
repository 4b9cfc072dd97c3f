#include "mel/command.h"
#include "mel/functions.h"
#include "mel/interpreter.h"
#include "mel/optionVariables.h"
#include "messages.h"
#include "session.h"
#include "tools/idleQueue.h"
#include "tools/tools.h"
#include "types/error.h"

#include <chrono>

namespace host::mel {

namespace {

std::string joinedObjects(const Args& args)
{
    std::string text;
    for (const std::string& object : args.objectNames())
        text.append(text.empty() ? "" : " ").append(object);
    return text;
}

Value raiseError(Session&, const Args& args)
{
    throw Error(joinedObjects(args));
}

Value warn(Session& session, const Args& args)
{
    session.messages().warning(joinedObjects(args));
    return {};
}

Value evalDeferred(Session& session, const Args& args)
{
    session.tools().idle().add(joinedObjects(args), false, true);
    return {};
}

/// Seconds of a steady clock; with -startTime the seconds since then.
Value timer(Session&, const Args& args)
{
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    return now.count() - args.numberOr("startTime", 0.0);
}

/// Puts the -stringArg texts where the format says ^1s, ^2s, ...
Value format(Session&, const Args& args)
{
    const StringArray given = args.texts("stringArg");
    const std::string pattern = args.objectNames().front();
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        std::size_t end = i + 1;
        while (end < pattern.size() && pattern[end] >= '0' && pattern[end] <= '9')
            ++end;
        const bool isPlace = pattern[i] == '^' && end > i + 1 && end < pattern.size() && pattern[end] == 's';
        if (!isPlace) {
            text += pattern[i];
            continue;
        }
        const int number = Value(pattern.substr(i + 1, end - i - 1)).toInt();
        if (number < 1 || number > static_cast<int>(given.size()))
            throw Error("format: there is no argument for \"^" + std::to_string(number) + "s\".");
        text += given[static_cast<std::size_t>(number - 1)];
        i = end;
    }
    return text;
}

Value storeOption(OptionVariables& options, const Args::Use& use)
{
    const std::string& flag = use.flag->longName;
    const std::string name = use.values.empty() ? std::string() : use.values[0].toString();
    if (flag == "exists")
        return options.find(name) != nullptr;
    if (flag == "remove")
        return options.remove(name);
    if (flag == "list")
        return options.names();
    if (flag == "arraySize") {
        const Value* const value = options.find(name);
        return value && isArray(value->type()) ? value->size() : 0;
    }
    if (flag == "clearArray") {
        if (const Value* const value = options.find(name); value && isArray(value->type()))
            options.set(name, Value::zero(value->type()));
    } else if (flag.find("Append") != std::string::npos) {
        options.append(name, use.values[1]);
    } else {
        options.set(name, use.values[1]);
    }
    return {};
}

Value optionVar(Session& session, const Args& args)
{
    OptionVariables& options = session.mel().optionVariables();
    if (args.query()) {
        const std::vector<std::string> names = args.objectNames();
        if (names.empty())
            throw Error("optionVar -query needs a name.");
        const Value* const value = options.find(names.front());
        return value ? *value : Value(0);
    }
    Value result;
    for (const Args::Use& use : args.allUses())
        result = storeOption(options, use);
    return result;
}

} // namespace

void addLanguageCommands(CommandRegistry& registry)
{
    using A = ArgType;
    registry.add(
        CommandSpec("error").flag("sl", "showLineNumber", {A::kBool}).flag("n", "noContext").objects(1),
        raiseError);
    registry.add(
        CommandSpec("warning").flag("sl", "showLineNumber", {A::kBool}).flag("n", "noContext").objects(1),
        warn);
    registry.add(CommandSpec("evalDeferred").flag("lp", "lowestPriority").objects(1), evalDeferred);
    registry.add(CommandSpec("timerX").flag("st", "startTime", {A::kFloat}), timer);
    registry.add(CommandSpec("format").flag("s", "stringArg", {A::kString}).multi().objects(1, 1), format);
    registry.add(CommandSpec("optionVar")
                     .flag("iv", "intValue", {A::kString, A::kInt})
                     .multi()
                     .flag("fv", "floatValue", {A::kString, A::kFloat})
                     .multi()
                     .flag("sv", "stringValue", {A::kString, A::kString})
                     .multi()
                     .flag("iva", "intValueAppend", {A::kString, A::kInt})
                     .multi()
                     .flag("fva", "floatValueAppend", {A::kString, A::kFloat})
                     .multi()
                     .flag("sva", "stringValueAppend", {A::kString, A::kString})
                     .multi()
                     .flag("ca", "clearArray", {A::kString})
                     .flag("as", "arraySize", {A::kString})
                     .flag("ex", "exists", {A::kString})
                     .flag("rm", "remove", {A::kString})
                     .multi()
                     .flag("l", "list")
                     .objects(0, 1)
                     .query(),
                 optionVar);
}

const Value* OptionVariables::find(const std::string& name) const
{
    const auto found = values.find(name);
    return found == values.end() ? nullptr : &found->second;
}

void OptionVariables::append(const std::string& name, const Value& element)
{
    Value& array = values[name];
    if (array.type() != arrayOf(element.type()))
        array = Value::zero(arrayOf(element.type()));
    switch (element.type()) {
    case Type::kInt:
        array.get<IntArray>().push_back(element.get<int>());
        break;
    case Type::kFloat:
        array.get<FloatArray>().push_back(element.get<double>());
        break;
    default:
        array.get<StringArray>().push_back(element.toString());
    }
}

StringArray OptionVariables::names() const
{
    StringArray result;
    for (const auto& [name, value] : values)
        result.push_back(name);
    return result;
}

} // namespace host::mel
