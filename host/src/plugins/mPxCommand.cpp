#include "messages.h"
#include "plugins/commandState.h"
#include "plugins/pluginCommand.h"
#include "plugins/pluginRegistry.h"
#include "plugins/unfinishedCommands.h"
#include "session.h"
#include "types/api.h"
#include "types/error.h"

#include <maya/MArgList.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPxCommand.h>
#include <maya/MPxToolCommand.h>
#include <maya/MStringArray.h>

namespace {

/// Results that are set while no command runs have nobody to read them.
void setCurrent(host::mel::Value value)
{
    if (host::mel::Value* result = host::ResultScope::current())
        *result = std::move(value);
}

/// Appends to the current result, a single value or an array of the type.
template <class Array, class Single>
void appendCurrent(Single value)
{
    host::mel::Value* result = host::ResultScope::current();
    if (!result)
        return;
    Array array;
    if (result->type() == host::mel::Value(Array()).type())
        array = std::move(result->get<Array>());
    else if (result->type() == host::mel::Value(Single()).type())
        array.push_back(result->get<Single>());
    array.push_back(std::move(value));
    *result = std::move(array);
}

host::Messages* messages()
{
    host::Session* session = host::Session::currentOrNull();
    return session ? &session->messages() : nullptr;
}

} // namespace

MPxCommand::MPxCommand() : state(std::make_unique<host::CommandState>()) {}
MPxCommand::~MPxCommand() = default;

MStatus MPxCommand::doIt(const MArgList&)
{
    return MStatus::kNotImplemented;
}

MStatus MPxCommand::undoIt()
{
    return MStatus::kNotImplemented;
}

MStatus MPxCommand::redoIt()
{
    return MStatus::kNotImplemented;
}

bool MPxCommand::isUndoable() const
{
    return false;
}

bool MPxCommand::hasSyntax() const
{
    return state->syntax != nullptr;
}

MSyntax MPxCommand::syntax() const
{
    return state->syntax ? host::Api::wrap(std::make_shared<host::Syntax>(*state->syntax)) : MSyntax();
}

bool MPxCommand::isHistoryOn() const
{
    return state->history;
}

MStatus MPxCommand::setHistoryOn(bool on)
{
    state->history = on;
    return MStatus::kSuccess;
}

MString MPxCommand::commandString() const
{
    return host::Api::wrap(state->commandString);
}

MStatus MPxCommand::setCommandString(const MString& text)
{
    state->commandString = host::Api::text(text);
    return MStatus::kSuccess;
}

void MPxCommand::displayInfo(const MString& theInfo)
{
    if (host::Messages* out = messages())
        out->info(theInfo.asChar());
}

void MPxCommand::displayWarning(const MString& theWarning, bool)
{
    if (host::Messages* out = messages())
        out->warning(theWarning.asChar());
}

void MPxCommand::displayError(const MString& theError, bool)
{
    if (host::Messages* out = messages())
        out->error(theError.asChar());
}

void MPxCommand::clearResult()
{
    setCurrent({});
}

void MPxCommand::setResult(unsigned int val)
{
    setCurrent(static_cast<int>(val));
}

void MPxCommand::setResult(int val)
{
    setCurrent(val);
}

void MPxCommand::setResult(double val)
{
    setCurrent(val);
}

void MPxCommand::setResult(bool val)
{
    setCurrent(val);
}

void MPxCommand::setResult(const char* val)
{
    setCurrent(std::string(val ? val : ""));
}

void MPxCommand::setResult(const MString& val)
{
    setCurrent(host::Api::text(val));
}

void MPxCommand::setResult(const MIntArray& val)
{
    host::mel::IntArray array(val.length());
    val.get(array.data());
    setCurrent(std::move(array));
}

void MPxCommand::setResult(const MDoubleArray& val)
{
    host::mel::FloatArray array(val.length());
    val.get(array.data());
    setCurrent(std::move(array));
}

void MPxCommand::setResult(const MStringArray& val)
{
    host::mel::StringArray array;
    for (unsigned int i = 0; i < val.length(); ++i)
        array.push_back(host::Api::text(val[i]));
    setCurrent(std::move(array));
}

void MPxCommand::appendToResult(int val)
{
    appendCurrent<host::mel::IntArray>(val);
}

void MPxCommand::appendToResult(double val)
{
    appendCurrent<host::mel::FloatArray>(val);
}

void MPxCommand::appendToResult(bool val)
{
    appendCurrent<host::mel::IntArray>(val ? 1 : 0);
}

void MPxCommand::appendToResult(const char* val)
{
    appendCurrent<host::mel::StringArray>(std::string(val ? val : ""));
}

void MPxCommand::appendToResult(const MString& val)
{
    appendCurrent<host::mel::StringArray>(host::Api::text(val));
}

void MPxCommand::appendToResult(const MStringArray& val)
{
    for (unsigned int i = 0; i < val.length(); ++i)
        appendToResult(val[i]);
}

bool MPxCommand::isCurrentResultArray()
{
    const host::mel::Value* result = host::ResultScope::current();
    return result && host::mel::isArray(result->type());
}

MPxToolCommand::MPxToolCommand() = default;

MPxToolCommand::~MPxToolCommand()
{
    // Deleted by the tool itself: nobody else may do so again.
    if (const auto keeper = host::Api::state(*this).keeper.lock())
        keeper->forget(*this);
}

MStatus MPxToolCommand::cancel()
{
    return MStatus::kSuccess;
}

MStatus MPxToolCommand::finalize()
{
    return MStatus::kSuccess;
}

MStatus MPxToolCommand::doFinalize(MArgList& command)
{
    host::Session* session = host::Session::currentOrNull();
    if (!session)
        return MStatus::kFailure;
    const std::string text = host::argumentLine(host::Api::arguments(command).values);
    try {
        return session->plugins().finalise(*this, text) ? MStatus::kSuccess : MStatus::kFailure;
    } catch (const host::Error& error) {
        session->messages().error(error.what());
        return MStatus::kFailure;
    }
}
