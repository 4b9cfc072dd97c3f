#pragma once

#include <maya/MPxCommand.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// The command that a tool leaves behind when a gesture ends.
class MAYA_HOST_EXPORT MPxToolCommand : public MPxCommand {
public:
    MPxToolCommand();
    ~MPxToolCommand();

    MStatus doIt(const MArgList& args) override = 0;
    virtual MStatus cancel();
    virtual MStatus finalize();
    static const char* className() { return "MPxToolCommand"; }

protected:
    /// Writes the text to the journal and hands the object over to the undo queue, which owns it from then
    /// on. It is not run.
    MStatus doFinalize(MArgList& command);

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
