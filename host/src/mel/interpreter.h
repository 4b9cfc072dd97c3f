#pragma once

#include "mel/limits.h"
#include "mel/value.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace host {
class Session;
}

namespace host::mel {

struct Argument;
struct FileScope;
struct Procedure;
class OptionVariables;
class StackLimit;

/// Runs the language. One per session, owned by it; global variables, procedures and option variables persist
/// between executions. Executions nest (a command may run text itself), and an error leaves the interpreter
/// usable and what ran before it done.
///
/// A name in a call is looked up in this order: procedures of the file that the call stands in, global
/// procedures, functions of the language, commands of the session, files NAME.mel on the script path.
class Interpreter {
public:
    explicit Interpreter(Session& session);
    ~Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    /// Runs text; `fileName` is what errors name. The result is that of the last statement, void when that is
    /// no expression or command. Nothing runs if the text does not parse. Throws ScriptError.
    Value execute(const std::string& text, const std::string& fileName = {});
    /// The same for callers with nobody to throw to: an error goes to the session's messages, and the answer
    /// is false.
    bool run(const std::string& text, const std::string& fileName = {}, Value* result = nullptr);
    /// Runs a file, found as it stands or on the script path (".mel" may be left out). Throws host::Error.
    Value source(const std::string& file);
    /// Calls a procedure, function or command with arguments, as `name(arguments)` does in a script.
    Value call(const std::string& name, const std::vector<Value>& arguments);

    /// Whether a call of that name would find something (`exists`).
    bool knows(const std::string& name) const;
    /// What a name stands for, in the words of `whatIs`.
    std::string whatIs(const std::string& name) const;
    /// A global variable, or null when there is none.
    const Value* global(const std::string& name) const;

    /// Folders in which files and procedures are looked for, first come first; starts with those of the
    /// environment variable MAYA_SCRIPT_PATH.
    std::vector<std::string> scriptPath;

    /// The state of `rand`: the same numbers in every session until `seed` sets it.
    std::uint64_t randomState = 1;

    Limits limits;
    /// Throws host::Error when the limits keep scripts from what lies outside the session.
    void requireOutside(const std::string& what) const;
    /// Counts what the running text does; throws host::Error when that is more than it may.
    void spend(std::uint64_t steps);

    OptionVariables& optionVariables();
    Session& session();

private:
    friend class Evaluation;
    struct State;

    Value callNamed(const std::string& name, std::vector<Argument>& arguments, FileScope* scope);
    Value callProcedure(const Procedure& procedure, std::vector<Argument>& arguments);
    const Procedure* findProcedure(const std::string& name, FileScope* scope) const;
    std::string findScript(const std::string& file) const;
    std::string findOnScriptPath(const std::string& file) const;

    std::unique_ptr<State> state;
};

} // namespace host::mel
