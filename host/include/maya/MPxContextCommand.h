#pragma once

#include <maya/MArgParser.h>
#include <maya/MPxContext.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
struct Api;
struct ToolApi;
struct ContextCommandState;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// The command that makes, edits and queries the contexts of one kind. -e, -edit, -q and -query belong to the
/// host.
class MAYA_HOST_EXPORT MPxContextCommand {
public:
    MPxContextCommand();
    MPxContextCommand(const MPxContextCommand&) = delete;
    MPxContextCommand& operator=(const MPxContextCommand&) = delete;
    virtual ~MPxContextCommand();

    virtual MStatus doEditFlags();
    virtual MStatus doQueryFlags();
    virtual MPxContext* makeObj();
    virtual MStatus appendSyntax();
    MStatus setResult(bool result);
    MStatus setResult(int result);
    MStatus setResult(double result);
    MStatus setResult(const MString& result);
    static const char* className() { return "MPxContextCommand"; }

protected:
    /// A handle on the syntax of the command itself: flags added to it count.
    MSyntax syntax(MStatus* status = nullptr) const;
    MArgParser parser(MStatus* status = nullptr) const;

private:
    friend struct host::Api;
    friend struct host::ToolApi;
    std::unique_ptr<host::ContextCommandState> state;
};

MAYA_HOST_NAMESPACE_CLOSE
