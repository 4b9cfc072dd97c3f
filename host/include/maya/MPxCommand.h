#pragma once

#include <maya/MArgList.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
struct Api;
struct CommandState;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// A command of a plug-in. An object is made for every call; one that is undoable stays on the undo queue.
class MAYA_HOST_EXPORT MPxCommand {
public:
    MPxCommand();
    MPxCommand(const MPxCommand&) = delete;
    MPxCommand& operator=(const MPxCommand&) = delete;
    virtual ~MPxCommand();

    virtual MStatus doIt(const MArgList& args);
    virtual MStatus undoIt();
    virtual MStatus redoIt();
    /// False unless overridden.
    virtual bool isUndoable() const;
    virtual bool hasSyntax() const;
    MSyntax syntax() const;
    bool isHistoryOn() const;
    MStatus setHistoryOn(bool state);
    MString commandString() const;
    MStatus setCommandString(const MString&);

    static void displayInfo(const MString& theInfo);
    static void displayWarning(const MString& theWarning, bool showLineNumber = false);
    static void displayError(const MString& theError, bool showLineNumber = false);
    /// The result of the command that is running.
    static void clearResult();
    static void setResult(unsigned int val);
    static void setResult(int val);
    static void setResult(double val);
    static void setResult(bool val);
    static void setResult(const char* val);
    static void setResult(const MString& val);
    static void setResult(const MIntArray& val);
    static void setResult(const MDoubleArray& val);
    static void setResult(const MStringArray& val);
    /// Adds to a result that is an array, or makes one of the value that was set. A result of another type is
    /// dropped.
    static void appendToResult(int val);
    static void appendToResult(double val);
    static void appendToResult(bool val);
    static void appendToResult(const char* val);
    static void appendToResult(const MString& val);
    static void appendToResult(const MStringArray& val);
    static bool isCurrentResultArray();
    static const char* className() { return "MPxCommand"; }

private:
    friend struct host::Api;
    std::unique_ptr<host::CommandState> state;
};

MAYA_HOST_NAMESPACE_CLOSE
