#pragma once

#include "mel/value.h"

#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host {
class Session;
}

namespace host::mel {

/// What an argument of a flag must be. kBool takes on, off, yes, no, true, false and numbers; kInt and kFloat
/// take numbers and texts that are numbers throughout; kString takes anything that has a text; kAny takes a
/// single value as it stands.
enum class ArgType { kBool, kInt, kFloat, kString, kAny };

struct FlagSpec {
    std::string shortName; ///< without dash
    std::string longName;  ///< without dash; the name under which Args knows the flag
    std::vector<ArgType> args;
    bool multi = false;     ///< may be given more than once; of other flags the last use counts
    bool queryArgs = false; ///< takes its arguments in query mode too (others take none there)
};

/// The declaration of a command, built in one chain:
///
///     CommandSpec("skinPercent")
///         .flag("tv", "transformValue", {ArgType::kString, ArgType::kFloat}).multi()
///         .flag("t", "transform", {ArgType::kString}).queryArgs()
///         .flag("v", "value")
///         .objects(1).query().undoable()
///
/// multi() and queryArgs() speak of the flag declared last.
class CommandSpec {
public:
    static constexpr int kAnyNumber = std::numeric_limits<int>::max();

    explicit CommandSpec(std::string commandName) : name(std::move(commandName)) {}

    CommandSpec& flag(std::string shortName, std::string longName, std::vector<ArgType> args = {});
    CommandSpec& multi();
    CommandSpec& queryArgs();
    /// How many words may stand outside the flags (objects, values); none when this is not called.
    CommandSpec& objects(int least, int most = kAnyNumber);
    /// The command has a query mode (-q, -query) or an edit mode (-e, -edit).
    CommandSpec& query();
    CommandSpec& edit();
    /// The command changes the scene, the selection or a setting that undo brings back (when it is not in
    /// query mode): the registry runs it as one entry of the undo queue.
    CommandSpec& undoable();

    /// The flag of that short or long name, or null.
    const FlagSpec* find(const std::string& flagName) const;

    std::string name;
    std::vector<FlagSpec> flags;
    int leastObjects = 0;
    int mostObjects = 0;
    bool hasQuery = false;
    bool hasEdit = false;
    bool isUndoable = false;
};

/// One word of a call as the script gave it.
struct Word {
    enum class Kind {
        kFlag,    ///< a bare flag; the value is its text, "-name", without blanks
        kLiteral, ///< a quoted text or a bare word: never a flag
        kComputed ///< a number or the value of an expression; a text "-name" counts as a flag if there is one
    };
    Value value;
    Kind kind = Kind::kComputed;
};

/// A call parsed by the declaration. Flags are asked for by their long name; asking for a flag that the
/// command does not declare, or for an argument that is not there, is a programming error and throws
/// host::Error.
class Args {
public:
    struct Use {
        const FlagSpec* flag;
        std::vector<Value> values; ///< converted to the types of the declaration; empty in query mode
    };

    const std::string& commandName() const { return spec->name; }
    bool query() const { return inQuery; }
    bool edit() const { return inEdit; }

    bool isSet(const std::string& flag) const;
    /// How often the flag was given (at most 1 unless it is multi).
    int uses(const std::string& flag) const;
    /// All uses of all flags in the order given.
    const std::vector<Use>& allUses() const { return flagUses; }

    /// Argument `index` of use `use` of a flag that is set.
    const Value& value(const std::string& flag, int index = 0, int use = 0) const;
    bool boolean(const std::string& flag, int index = 0, int use = 0) const;
    int integer(const std::string& flag, int index = 0, int use = 0) const;
    double number(const std::string& flag, int index = 0, int use = 0) const;
    std::string text(const std::string& flag, int index = 0, int use = 0) const;

    /// The first argument of a flag, or the given one when the flag is not set (or has none in query mode).
    bool booleanOr(const std::string& flag, bool otherwise) const;
    int integerOr(const std::string& flag, int otherwise) const;
    double numberOr(const std::string& flag, double otherwise) const;
    std::string textOr(const std::string& flag, const std::string& otherwise) const;

    /// The first arguments of all uses, in order.
    std::vector<std::string> texts(const std::string& flag) const;
    /// The first three arguments of the last use.
    Vector vector(const std::string& flag) const;

    /// The words outside the flags, in order. Arrays and vectors of the script are already spread into their
    /// elements here and in the arguments of flags.
    const std::vector<Value>& objects() const { return objectValues; }
    std::vector<std::string> objectNames() const;

private:
    friend class ArgsParser;
    const Use& use(const std::string& flag, int which) const;
    const Value* first(const std::string& flag) const;

    const CommandSpec* spec = nullptr;
    bool inQuery = false;
    bool inEdit = false;
    std::vector<Use> flagUses;
    std::vector<Value> objectValues;
};

/// Reads the words of a call by a declaration. Throws host::Error naming flag and command.
Args parseArgs(const CommandSpec& spec, const std::vector<Word>& words);

/// The work of a command. Throws host::Error to fail; what an undoable command had already done is then
/// rolled back by the registry. The result is the result of the command in the script.
using CommandFunction = std::function<Value(Session&, const Args&)>;

/// The work of a command that reads its words itself (commands of plug-ins): flags are texts "-name" among
/// the arguments; an array is one argument, vectors and matrices are spread. It keeps its own undo entry.
using RawCommandFunction = std::function<Value(Session&, std::vector<Value> arguments)>;

/// The commands of a session, by name. Owned by the session; the names of language functions and procedures
/// are kept by the interpreter.
class CommandRegistry {
public:
    explicit CommandRegistry(Session& owner) : session(owner) {}
    CommandRegistry(const CommandRegistry&) = delete;
    CommandRegistry& operator=(const CommandRegistry&) = delete;

    /// Both throw host::Error when a command of that name exists.
    void add(CommandSpec spec, CommandFunction function);
    void addRaw(const std::string& name, RawCommandFunction function);
    /// False when there is no such command. A command may remove itself while it runs.
    bool remove(const std::string& name);
    bool exists(const std::string& name) const { return commands.count(name) != 0; }
    std::vector<std::string> names() const;
    /// Null when there is no such command; without flags for one that reads its words itself.
    const CommandSpec* declaration(const std::string& name) const;

    /// Runs a command: one undo scope around it if it is undoable and not queried. Throws host::Error; the
    /// text for an unknown name is `Cannot find procedure "name".`
    Value call(const std::string& name, std::vector<Word> words);

private:
    struct Command {
        CommandSpec spec;
        CommandFunction function;
        RawCommandFunction raw;
    };

    Session& session;
    std::map<std::string, std::shared_ptr<const Command>> commands;
};

} // namespace host::mel
