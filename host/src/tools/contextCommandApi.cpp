#include "plugins/syntax.h"
#include "tools/toolApi.h"
#include "types/api.h"

#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>

namespace host {

ContextCommandState& ToolApi::state(const MPxContextCommand& command)
{
    return *command.state;
}

} // namespace host

MPxContextCommand::MPxContextCommand() : state(std::make_unique<host::ContextCommandState>()) {}

MPxContextCommand::~MPxContextCommand() = default;

MStatus MPxContextCommand::doEditFlags()
{
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::doQueryFlags()
{
    return MStatus::kSuccess;
}

MPxContext* MPxContextCommand::makeObj()
{
    return nullptr;
}

MStatus MPxContextCommand::appendSyntax()
{
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::setResult(bool result)
{
    state->result = result;
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::setResult(int result)
{
    state->result = result;
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::setResult(double result)
{
    state->result = result;
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::setResult(const MString& result)
{
    state->result = host::Api::text(result);
    return MStatus::kSuccess;
}

MSyntax MPxContextCommand::syntax(MStatus* status) const
{
    host::report(status, state->syntax ? MStatus::kSuccess : MStatus::kFailure);
    return state->syntax ? host::Api::wrap(state->syntax) : MSyntax();
}

MArgParser MPxContextCommand::parser(MStatus* status) const
{
    host::report(status, state->parsed ? MStatus::kSuccess : MStatus::kFailure);
    return state->parsed ? host::Api::wrap(state->parsed) : MArgParser();
}
