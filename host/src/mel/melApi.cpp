// The part of MGlobal that runs commands and shows messages.

#include "mel/interpreter.h"
#include "messages.h"
#include "session.h"
#include "tools/idleQueue.h"
#include "tools/tools.h"
#include "trace.h"
#include "types/api.h"
#include "types/commandResult.h"
#include "undo/undoQueue.h"

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>

#include <optional>

using host::Api;
using host::Session;
using host::mel::Type;
using host::mel::Value;

namespace {

/// What every form of executeCommand does. Errors are shown to the person, and nothing is thrown.
MStatus run(const MString& command, bool display, bool undo, Value& result)
{
    Session* const session = Session::currentOrNull();
    if (!session)
        return MS::kFailure;
    const std::string text = Api::text(command);
    session->trace().mel(display, undo, text);
    if (display)
        session->messages().info(text);
    std::optional<host::UndoQueue::Suspend> unrecorded;
    if (!undo)
        unrecorded.emplace(session->undo());
    if (!session->mel().run(text, {}, &result))
        return MS::kFailure;
    if (display && !result.isVoid())
        session->messages().info("Result: " + result.printed());
    return MS::kSuccess;
}

/// Runs the command and hands a result of the wanted type to `store`; another type is a failure.
template <class Store>
MStatus runFor(const MString& command, bool display, bool undo, Type wanted, const Store& store)
{
    Value result;
    const MStatus status = run(command, display, undo, result);
    if (!status)
        return status;
    if (result.type() != wanted)
        return MS::kFailure;
    store(result);
    return MS::kSuccess;
}

} // namespace

MStatus MGlobal::executeCommand(const MString& command, bool displayEnabled, bool undoEnabled)
{
    Value ignored;
    return run(command, displayEnabled, undoEnabled, ignored);
}

MStatus MGlobal::executeCommand(const MString& command, MCommandResult& result, bool displayEnabled,
                                bool undoEnabled)
{
    Value value;
    const MStatus status = run(command, displayEnabled, undoEnabled, value);
    if (status)
        Api::result(result).value = std::move(value);
    return status;
}

MStatus MGlobal::executeCommand(const MString& command, int& result, bool displayEnabled, bool undoEnabled)
{
    return runFor(command, displayEnabled, undoEnabled, Type::kInt,
                  [&result](const Value& value) { result = value.get<int>(); });
}

MStatus MGlobal::executeCommand(const MString& command, MIntArray& result, bool displayEnabled,
                                bool undoEnabled)
{
    return runFor(command, displayEnabled, undoEnabled, Type::kIntArray, [&result](const Value& value) {
        const auto& array = value.get<host::mel::IntArray>();
        result = MIntArray(array.data(), static_cast<unsigned int>(array.size()));
    });
}

MStatus MGlobal::executeCommand(const MString& command, double& result, bool displayEnabled, bool undoEnabled)
{
    return runFor(command, displayEnabled, undoEnabled, Type::kFloat,
                  [&result](const Value& value) { result = value.get<double>(); });
}

MStatus MGlobal::executeCommand(const MString& command, MDoubleArray& result, bool displayEnabled,
                                bool undoEnabled)
{
    return runFor(command, displayEnabled, undoEnabled, Type::kFloatArray, [&result](const Value& value) {
        const auto& array = value.get<host::mel::FloatArray>();
        result = MDoubleArray(array.data(), static_cast<unsigned int>(array.size()));
    });
}

MStatus MGlobal::executeCommand(const MString& command, MStringArray& result, bool displayEnabled,
                                bool undoEnabled)
{
    return runFor(command, displayEnabled, undoEnabled, Type::kStringArray,
                  [&result](const Value& value) { result = Api::wrap(value.get<host::mel::StringArray>()); });
}

MStatus MGlobal::executeCommand(const MString& command, MString& result, bool displayEnabled,
                                bool undoEnabled)
{
    return runFor(command, displayEnabled, undoEnabled, Type::kString,
                  [&result](const Value& value) { result = Api::wrap(value.get<std::string>()); });
}

MString MGlobal::executeCommandStringResult(const MString& command, bool displayEnabled, bool undoEnabled,
                                            MStatus* status)
{
    MString result;
    const MStatus outcome = executeCommand(command, result, displayEnabled, undoEnabled);
    if (status)
        *status = outcome;
    return result;
}

MStatus MGlobal::executeCommandOnIdle(const MString& command, bool displayEnabled)
{
    Session* const session = Session::currentOrNull();
    if (!session)
        return MS::kFailure;
    session->tools().idle().add(Api::text(command), displayEnabled);
    return MS::kSuccess;
}

void MGlobal::displayInfo(const MString& theMessage)
{
    if (Session* const session = Session::currentOrNull())
        session->messages().info(Api::text(theMessage));
}

void MGlobal::displayWarning(const MString& theWarning)
{
    if (Session* const session = Session::currentOrNull())
        session->messages().warning(Api::text(theWarning));
}

void MGlobal::displayError(const MString& theError)
{
    if (Session* const session = Session::currentOrNull())
        session->messages().error(Api::text(theError));
}
