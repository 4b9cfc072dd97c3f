#include "mel/command.h"
#include "session.h"
#include "types/error.h"
#include "undo/undoQueue.h"

namespace host::mel {

namespace {

template <class Array>
void spreadElements(const Array& array, Word::Kind kind, std::vector<Word>& spread)
{
    for (const auto& element : array)
        spread.push_back({Value(element), kind});
}

/// Commands take single values only: arrays and vectors count as their elements.
std::vector<Word> spreadWords(std::vector<Word> words)
{
    std::vector<Word> spread;
    spread.reserve(words.size());
    for (Word& word : words) {
        switch (word.value.type()) {
        case Type::kIntArray:
            spreadElements(word.value.get<IntArray>(), word.kind, spread);
            break;
        case Type::kFloatArray:
            spreadElements(word.value.get<FloatArray>(), word.kind, spread);
            break;
        case Type::kStringArray:
            spreadElements(word.value.get<StringArray>(), word.kind, spread);
            break;
        case Type::kVector:
            spreadElements(word.value.toFloatArray(), word.kind, spread);
            break;
        case Type::kMatrix:
            spreadElements(word.value.get<Matrix>().cells, word.kind, spread);
            break;
        case Type::kVectorArray:
            for (const Vector& vector : word.value.get<VectorArray>())
                spreadElements(Value(vector).toFloatArray(), word.kind, spread);
            break;
        default:
            spread.push_back(std::move(word));
        }
    }
    return spread;
}

/// What a command that reads its words itself gets.
std::vector<Value> rawArguments(std::vector<Word> words)
{
    std::vector<Value> arguments;
    arguments.reserve(words.size());
    for (Word& word : words) {
        if (isArray(word.value.type())) {
            arguments.push_back(std::move(word.value));
            continue;
        }
        std::vector<Word> single;
        single.push_back(std::move(word));
        for (Word& part : spreadWords(std::move(single)))
            arguments.push_back(std::move(part.value));
    }
    return arguments;
}

/// The call as the undo queue names it.
std::string callText(const std::string& name, const std::vector<Word>& words)
{
    constexpr std::size_t kLongest = 200;
    std::string text = name;
    for (const Word& word : words) {
        const bool quotes = word.kind == Word::Kind::kLiteral || word.value.isString();
        const bool bare = word.kind == Word::Kind::kFlag || !quotes;
        text += bare ? " " + word.value.toString() : " \"" + word.value.toString() + "\"";
        if (text.size() > kLongest)
            return text.substr(0, kLongest) + "...";
    }
    return text;
}

} // namespace

void CommandRegistry::add(CommandSpec spec, CommandFunction function)
{
    const std::string name = spec.name;
    if (exists(name))
        throw Error("A command named \"" + name + "\" exists already.");
    commands[name] = std::make_shared<Command>(Command{std::move(spec), std::move(function), nullptr});
}

void CommandRegistry::addRaw(const std::string& name, RawCommandFunction function)
{
    if (exists(name))
        throw Error("A command named \"" + name + "\" exists already.");
    commands[name] = std::make_shared<Command>(Command{CommandSpec(name), nullptr, std::move(function)});
}

bool CommandRegistry::remove(const std::string& name)
{
    return commands.erase(name) != 0;
}

std::vector<std::string> CommandRegistry::names() const
{
    std::vector<std::string> result;
    for (const auto& [name, command] : commands)
        result.push_back(name);
    return result;
}

const CommandSpec* CommandRegistry::declaration(const std::string& name) const
{
    const auto found = commands.find(name);
    return found == commands.end() ? nullptr : &found->second->spec;
}

Value CommandRegistry::call(const std::string& name, std::vector<Word> words)
{
    const auto found = commands.find(name);
    if (found == commands.end())
        throw Error("Cannot find procedure \"" + name + "\".");
    // Kept for the length of the call: a command may remove itself (a plug-in that unloads itself).
    const std::shared_ptr<const Command> command = found->second;
    if (command->raw)
        return command->raw(session, rawArguments(std::move(words)));
    const std::vector<Word> spread = spreadWords(std::move(words));
    const Args args = parseArgs(command->spec, spread);
    if (!command->spec.isUndoable || args.query())
        return command->function(session, args);
    const UndoQueue::CommandScope scope(session.undo(), callText(name, spread));
    return command->function(session, args);
}

} // namespace host::mel
