#include "messages.h"
#include "session.h"
#include "tools/contextCommands.h"
#include "tools/toolApi.h"
#include "tools/tools.h"
#include "trace.h"
#include "types/api.h"

#include <maya/MEvent.h>
#include <maya/MPxContext.h>
#include <maya/MPxToolCommand.h>

#include <exception>
#include <string>

namespace host {

ContextState& ToolApi::state(const MPxContext& context)
{
    return *context.state;
}

} // namespace host

MPxContext::MPxContext() : state(std::make_unique<host::ContextState>()) {}

MPxContext::~MPxContext() = default;

void MPxContext::toolOnSetup(MEvent&) {}

void MPxContext::toolOffCleanup() {}

MStatus MPxContext::doPress(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doPress(event);
}

MStatus MPxContext::doPress(MEvent&)
{
    return MStatus::kSuccess;
}

MStatus MPxContext::doDrag(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doDrag(event);
}

MStatus MPxContext::doDrag(MEvent&)
{
    return MStatus::kSuccess;
}

MStatus MPxContext::doRelease(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doRelease(event);
}

MStatus MPxContext::doRelease(MEvent&)
{
    return MStatus::kSuccess;
}

MStatus MPxContext::doHold(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doHold(event);
}

MStatus MPxContext::doHold(MEvent&)
{
    return MStatus::kSuccess;
}

MStatus MPxContext::doPtrMoved(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return doPtrMoved(event);
}

MStatus MPxContext::doPtrMoved(MEvent&)
{
    return MStatus::kSuccess;
}

MStatus MPxContext::drawFeedback(MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)
{
    return MStatus::kSuccess;
}

MStatus MPxContext::doEnterRegion(MEvent&)
{
    return MStatus::kSuccess;
}

MStatus MPxContext::helpStateHasChanged(MEvent&)
{
    return MStatus::kSuccess;
}

void MPxContext::completeAction() {}

void MPxContext::deleteAction() {}

void MPxContext::abortAction() {}

void MPxContext::getClassName(MString& name) const
{
    name = className();
}

MStatus MPxContext::setImage(const MString& image, ImageIndex index)
{
    if (index < kImage1 || index > kImage3)
        return MStatus::kInvalidParameter;
    state->images[index] = host::Api::text(image);
    return MStatus::kSuccess;
}

MString MPxContext::image(ImageIndex index, MStatus* status) const
{
    const bool valid = index >= kImage1 && index <= kImage3;
    host::report(status, valid ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return valid ? host::Api::wrap(state->images[index]) : MString();
}

MStatus MPxContext::setHelpString(const MString& str)
{
    state->help = host::Api::text(str);
    host::Session* session = host::Session::currentOrNull();
    if (session && session->tools().findContext(session->tools().current()) == this) {
        session->tools().helpText = state->help;
        session->trace().status(state->help);
    }
    return MStatus::kSuccess;
}

MStatus MPxContext::setTitleString(const MString& str)
{
    state->title = host::Api::text(str);
    return MStatus::kSuccess;
}

MPxToolCommand* MPxContext::newToolCommand()
{
    host::Session* session = host::Session::currentOrNull();
    try {
        return session ? session->tools().contextCommands().newToolCommand(state->command) : nullptr;
    } catch (const std::exception& problem) {
        session->messages().error(problem.what());
        return nullptr;
    }
}
