#include "mel/command.h"
#include "types/error.h"

#include <cctype>

namespace host::mel {

namespace {

std::string quoted(const CommandSpec& spec)
{
    return " (command \"" + spec.name + "\")";
}

const char* expectation(ArgType type)
{
    switch (type) {
    case ArgType::kBool:
        return "boolean";
    case ArgType::kInt:
        return "int";
    case ArgType::kFloat:
        return "float";
    case ArgType::kString:
        return "string";
    case ArgType::kAny:
        break;
    }
    return "value";
}

bool isWordOfTruth(const std::string& text)
{
    return text == "true" || text == "on" || text == "yes" || text == "false" || text == "off" ||
           text == "no";
}

bool fits(const Value& value, ArgType type)
{
    if (type == ArgType::kString || type == ArgType::kAny || value.isNumber())
        return true;
    if (!value.isString())
        return false;
    if (isWordOfTruth(value.get<std::string>()))
        return true;
    bool whole = false;
    parseNumber(value.get<std::string>(), &whole);
    return whole;
}

Value converted(const Value& value, ArgType type)
{
    const bool word = value.isString() && isWordOfTruth(value.get<std::string>());
    switch (type) {
    case ArgType::kBool:
        return value.toBool();
    case ArgType::kInt:
        return word ? Value(value.toBool()) : Value(value.toInt());
    case ArgType::kFloat:
        return word ? Value(value.toBool() ? 1.0 : 0.0) : Value(value.toFloat());
    case ArgType::kString:
        return value.toString();
    case ArgType::kAny:
        break;
    }
    return value;
}

bool looksLikeFlag(const std::string& text)
{
    return text.size() > 1 && text[0] == '-' &&
           (std::isalpha(static_cast<unsigned char>(text[1])) != 0 || text[1] == '_');
}

} // namespace

/// Goes through the words of one call. The mode is found first, because flags take their arguments by mode.
class ArgsParser {
public:
    ArgsParser(const CommandSpec& declared, const std::vector<Word>& given) : spec(declared), words(given)
    {
        args.spec = &spec;
    }

    Args parse()
    {
        findMode();
        while (at < words.size()) {
            if (const FlagSpec* const flag = flagHere())
                readFlag(*flag);
            else
                args.objectValues.push_back(words[at++].value);
        }
        checkObjects();
        return std::move(args);
    }

private:
    bool isMode(const std::string& text, const char* shortForm, const char* longForm) const
    {
        return text == shortForm || text == longForm;
    }

    void findMode()
    {
        for (const Word& word : words) {
            if (word.kind == Word::Kind::kLiteral || !word.value.isString())
                continue;
            const std::string& text = word.value.get<std::string>();
            args.inQuery = args.inQuery || (spec.hasQuery && isMode(text, "-q", "-query"));
            args.inEdit = args.inEdit || (spec.hasEdit && isMode(text, "-e", "-edit"));
        }
        if (args.inQuery && args.inEdit)
            throw Error("The flags -query and -edit exclude each other" + quoted(spec) + ".");
    }

    /// The flag that stands at the current word; skips the words of the mode; null for a value.
    const FlagSpec* flagHere()
    {
        const Word& word = words[at];
        if (word.kind == Word::Kind::kLiteral || !word.value.isString())
            return nullptr;
        const std::string& text = word.value.get<std::string>();
        if (!looksLikeFlag(text))
            return nullptr;
        const std::string name = text.substr(1);
        if ((args.inQuery && isMode(text, "-q", "-query")) || (args.inEdit && isMode(text, "-e", "-edit"))) {
            static const FlagSpec mode;
            return &mode;
        }
        const FlagSpec* const flag = spec.find(name);
        if (!flag && word.kind == Word::Kind::kFlag)
            throw Error("Invalid flag '" + text + "'" + quoted(spec) + ".");
        return flag;
    }

    void readFlag(const FlagSpec& flag)
    {
        const std::string shown = words[at++].value.toString();
        if (flag.longName.empty())
            return;
        Args::Use use{&flag, {}};
        if (!args.inQuery || flag.queryArgs) {
            for (const ArgType type : flag.args)
                use.values.push_back(readArgument(shown, type));
        }
        if (!flag.multi)
            forget(flag);
        args.flagUses.push_back(std::move(use));
    }

    Value readArgument(const std::string& shown, ArgType type)
    {
        if (at == words.size() || words[at].kind == Word::Kind::kFlag)
            throw Error("Flag '" + shown + "' must be passed a " + expectation(type) + " argument" +
                        quoted(spec) + ".");
        const Value& value = words[at++].value;
        if (!fits(value, type))
            throw Error("Invalid arguments for flag '" + shown + "'. Expected " + expectation(type) +
                        ", got [ " + value.toString() + " ]" + quoted(spec) + ".");
        return converted(value, type);
    }

    void forget(const FlagSpec& flag)
    {
        for (std::size_t i = 0; i < args.flagUses.size(); ++i) {
            if (args.flagUses[i].flag == &flag) {
                args.flagUses.erase(args.flagUses.begin() + static_cast<std::ptrdiff_t>(i));
                return;
            }
        }
    }

    void checkObjects() const
    {
        const int count = static_cast<int>(args.objectValues.size());
        if (count > spec.mostObjects)
            throw Error("Too many objects or values" + quoted(spec) + ": " +
                        args.objectValues[static_cast<std::size_t>(spec.mostObjects)].printed());
        if (count < spec.leastObjects && !args.inQuery)
            throw Error("Not enough objects or values" + quoted(spec) + ".");
    }

    const CommandSpec& spec;
    const std::vector<Word>& words;
    std::size_t at = 0;
    Args args;
};

Args parseArgs(const CommandSpec& spec, const std::vector<Word>& words)
{
    return ArgsParser(spec, words).parse();
}

} // namespace host::mel
