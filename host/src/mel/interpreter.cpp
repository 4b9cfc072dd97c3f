#include "mel/interpreter.h"

#include "mel/functions.h"
#include "mel/optionVariables.h"
#include "mel/parser.h"
#include "mel/runBudget.h"
#include "mel/scriptError.h"
#include "messages.h"
#include "session.h"
#include "tools/runTimeCommands.h"
#include "tools/tools.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

namespace host::mel {

namespace {

std::vector<std::string> pathsIn(const char* list)
{
    std::vector<std::string> paths;
    std::stringstream stream(list ? list : "");
    for (std::string path; std::getline(stream, path, ':');) {
        if (!path.empty())
            paths.push_back(path);
    }
    return paths;
}

bool isFile(const std::filesystem::path& path)
{
    std::error_code ignored; // an unreadable folder counts as one without the file
    return std::filesystem::is_regular_file(path, ignored);
}

std::string contentsOf(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::stringstream text;
    text << stream.rdbuf();
    if (!stream)
        throw Error("Cannot read the file \"" + path + "\".");
    return text.str();
}

} // namespace

struct Interpreter::State {
    explicit State(Session& owner) : session(owner) {}

    Session& session;
    std::unordered_map<std::string, Value> globals; ///< elements never move and are never erased
    std::map<std::string, ProcedureRef> procedures;
    std::map<std::string, std::shared_ptr<FileScope>> files; ///< by file name
    FunctionTable functions;
    OptionVariables optionVariables;
    std::optional<RunBudget> budget; ///< set while something runs
};

Interpreter::Interpreter(Session& session)
    : scriptPath(pathsIn(std::getenv("MAYA_SCRIPT_PATH"))), state(std::make_unique<State>(session))
{
    addMathFunctions(state->functions);
    addStringFunctions(state->functions);
    addArrayFunctions(state->functions);
    addSystemFunctions(state->functions);
    addLanguageCommands(session.commands());
}

Interpreter::~Interpreter() = default;

Session& Interpreter::session()
{
    return state->session;
}

OptionVariables& Interpreter::optionVariables()
{
    return state->optionVariables;
}

const Value* Interpreter::global(const std::string& name) const
{
    const auto found = state->globals.find(name);
    return found == state->globals.end() || found->second.isVoid() ? nullptr : &found->second;
}

namespace {

/// Marks the outermost of nested executions: what runs is measured from there.
class RunningScope {
public:
    RunningScope(std::optional<RunBudget>& shared, const Limits& limits) : budget(shared), outermost(!shared)
    {
        if (outermost)
            budget.emplace(limits);
    }
    ~RunningScope()
    {
        if (outermost)
            budget.reset();
    }
    RunningScope(const RunningScope&) = delete;
    RunningScope& operator=(const RunningScope&) = delete;

private:
    std::optional<RunBudget>& budget;
    bool outermost;
};

} // namespace

Value Interpreter::execute(const std::string& text, const std::string& fileName)
{
    const RunningScope running(state->budget, limits);
    const RunBudget::Nested nested(*state->budget, fileName.empty() ? text.size() : 0);
    Parser parser(text, fileName, state->budget->stack(),
                  [this](const std::string& name) { return global(name); });
    const Script script = parser.parse();
    std::shared_ptr<FileScope> scope;
    if (!fileName.empty())
        scope = state->files[fileName] = std::make_shared<FileScope>();
    for (const std::shared_ptr<Procedure>& procedure : script.procedures) {
        procedure->scope = scope;
        // Text without a file has no later part to keep its procedures for, so they become everybody's.
        if (procedure->isGlobal || !scope)
            state->procedures[procedure->name] = procedure;
        else
            scope->procedures[procedure->name] = procedure;
    }
    Evaluation evaluation(*this, fileName, scope, script.cellCount);
    for (const StatementRef& statement : script.statements) {
        evaluation.lastValue = Value();
        if (evaluation.execute(*statement) == Completion::kReturn)
            return evaluation.result;
        if (!statement->hasResult())
            evaluation.lastValue = Value();
    }
    return evaluation.lastValue;
}

bool Interpreter::run(const std::string& text, const std::string& fileName, Value* result)
{
    try {
        Value value = execute(text, fileName);
        if (result)
            *result = std::move(value);
        return true;
    } catch (const std::exception& error) {
        state->session.messages().error(error.what());
    }
    return false;
}

std::string Interpreter::findOnScriptPath(const std::string& file) const
{
    if (!limits.outside)
        return {};
    for (const std::string& folder : scriptPath) {
        std::string path = (std::filesystem::path(folder) / file).string();
        if (isFile(path))
            return path;
    }
    return {};
}

std::string Interpreter::findScript(const std::string& file) const
{
    for (const std::string& name : {file, file + ".mel"}) {
        std::string found = isFile(name) ? name : findOnScriptPath(name);
        if (!found.empty())
            return found;
    }
    return {};
}

Value Interpreter::source(const std::string& file)
{
    requireOutside("source");
    const std::string path = findScript(file);
    if (path.empty())
        throw Error("Cannot find file \"" + file + "\" for source statement.");
    return execute(contentsOf(path), path);
}

void Interpreter::requireOutside(const std::string& what) const
{
    if (!limits.outside)
        throw Error(what + " is not available here.");
}

void Interpreter::spend(std::uint64_t steps)
{
    if (state->budget)
        state->budget->spend(steps);
}

Value Interpreter::call(const std::string& name, const std::vector<Value>& arguments)
{
    const RunningScope running(state->budget, limits);
    std::vector<Argument> given;
    given.reserve(arguments.size());
    for (const Value& value : arguments)
        given.push_back({value, nullptr, nullptr, Word::Kind::kComputed});
    return callNamed(name, given, nullptr);
}

const Procedure* Interpreter::findProcedure(const std::string& name, FileScope* scope) const
{
    if (scope) {
        const auto local = scope->procedures.find(name);
        if (local != scope->procedures.end())
            return local->second.get();
    }
    const auto found = state->procedures.find(name);
    return found == state->procedures.end() ? nullptr : found->second.get();
}

bool Interpreter::knows(const std::string& name) const
{
    return state->procedures.count(name) != 0 || state->functions.count(name) != 0 ||
           state->session.commands().exists(name) || !findOnScriptPath(name + ".mel").empty();
}

std::string Interpreter::whatIs(const std::string& name) const
{
    if (const Procedure* const procedure = findProcedure(name, nullptr)) {
        return procedure->fileName.empty() ? "Mel procedure entered interactively."
                                           : "Mel procedure found in: " + procedure->fileName;
    }
    if (state->session.tools().named().runTime.count(name) != 0)
        return "Run Time Command";
    if (state->functions.count(name) != 0 || state->session.commands().exists(name))
        return "Command";
    const std::string path = findOnScriptPath(name + ".mel");
    return path.empty() ? "Unknown" : "Script found in: " + path;
}

namespace {

std::uint64_t stepsOf(const std::vector<Argument>& arguments)
{
    std::uint64_t steps = 1;
    for (const Argument& argument : arguments)
        steps += stepsOf(argument.get());
    return steps;
}

} // namespace

Value Interpreter::callNamed(const std::string& name, std::vector<Argument>& arguments, FileScope* scope)
{
    state->budget->stack().check();
    state->budget->spend(stepsOf(arguments));
    if (const Procedure* const procedure = findProcedure(name, scope))
        return callProcedure(*procedure, arguments);
    const auto function = state->functions.find(name);
    if (function != state->functions.end()) {
        const int count = static_cast<int>(arguments.size());
        if (count < function->second.least || count > function->second.most)
            throw Error("Wrong number of arguments on call to " + name + ".");
        FunctionCall call(*this, name, arguments);
        return function->second.work(call);
    }
    if (!state->session.commands().exists(name)) {
        const std::string path = findOnScriptPath(name + ".mel");
        if (!path.empty()) {
            source(path);
            if (const Procedure* const procedure = findProcedure(name, nullptr))
                return callProcedure(*procedure, arguments);
        }
    }
    std::vector<Word> words;
    words.reserve(arguments.size());
    for (Argument& argument : arguments)
        words.push_back({argument.take(), argument.kind});
    return state->session.commands().call(name, std::move(words));
}

Value Interpreter::callProcedure(const Procedure& called, std::vector<Argument>& arguments)
{
    const ProcedureRef procedure = called.shared_from_this(); // it may replace itself while it runs
    if (arguments.size() != procedure->parameters.size())
        throw Error("Wrong number of arguments on call to " + procedure->name + ".");
    Evaluation evaluation(*this, procedure->fileName, procedure->scope.lock(), procedure->cellCount);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Parameter& parameter = procedure->parameters[i];
        Cell& cell = evaluation.cells[parameter.slot.cell];
        Value* const variable = arguments[i].variable;
        if (variable && isArray(parameter.type) && variable->type() == parameter.type)
            cell.alias = variable;
        else
            cell.own = arguments[i].get().convertedTo(parameter.type);
    }
    evaluation.execute(*procedure->body);
    if (procedure->returnType == Type::kVoid)
        return {};
    return evaluation.result.isVoid() ? Value::zero(procedure->returnType)
                                      : evaluation.result.convertedTo(procedure->returnType);
}

Value& Evaluation::variable(const VariableSlot& slot)
{
    return slot.isGlobal ? interpreter.state->globals[slot.name] : cells[slot.cell].value();
}

Value Evaluation::call(const std::string& name, std::vector<Argument>& arguments)
{
    return interpreter.callNamed(name, arguments, scope.get());
}

Completion Evaluation::execute(const Statement& statement)
{
    try {
        interpreter.state->budget->stack().check();
        interpreter.state->budget->spend(1);
        return statement.execute(*this);
    } catch (const ScriptError& error) {
        // Text without a file that this text ran itself: its own place says nothing to the reader.
        if (!error.file.empty() || fileName.empty())
            throw;
        throw ScriptError(error.plainText, fileName, statement.line);
    } catch (const std::exception& error) {
        throw ScriptError(error.what(), fileName, statement.line);
    }
}

void Evaluation::reportCaught(const std::string& text)
{
    interpreter.session().messages().error(text);
}

} // namespace host::mel
