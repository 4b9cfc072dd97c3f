#include "types/api.h"

#include "graph/node.h"
#include "plugins/commandState.h"
#include "plugins/syntax.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/argList.h"
#include "types/commandResult.h"

#include <maya/M3dView.h>
#include <maya/MArgParser.h>
#include <maya/MCommandResult.h>
#include <maya/MDagPath.h>
#include <maya/MFnBase.h>
#include <maya/MFrameContext.h>
#include <maya/MPlug.h>
#include <maya/MPxCommand.h>
#include <maya/MRichSelection.h>
#include <maya/MStringArray.h>
#include <maya/MUIDrawManager.h>

namespace host {

Object* Api::object(const MObject& handle)
{
    return const_cast<Object*>(handle.ptr);
}

MObject Api::wrap(const Object* object)
{
    return MObject(object);
}

Object* Api::object(const MFnBase& set)
{
    Object* found = object(set.handle);
    if (found)
        isThere(*found);
    return found;
}

bool Api::isThere(const Object& object)
{
    if (object.alive())
        return true;
    if (Session* session = Session::currentOrNull())
        ++session->staleCalls;
    return false;
}

Node* Api::node(const MObject& handle)
{
    auto* found = dynamic_cast<Node*>(object(handle));
    return found && isThere(*found) ? found : nullptr;
}

DagNode* Api::node(const MDagPath& path)
{
    auto* found = static_cast<DagNode*>(const_cast<Object*>(path.ptr));
    return found && isThere(*found) ? found : nullptr;
}

MDagPath Api::path(DagNode* node)
{
    MDagPath path;
    if (node) {
        node->retain();
        path.ptr = node;
    }
    return path;
}

const Plug& Api::plug(const MPlug& handle)
{
    return *reinterpret_cast<const Plug*>(handle.storage);
}

Plug& Api::plug(MPlug& handle)
{
    static_assert(sizeof(Plug) == MPlug::kStorageSize && alignof(Plug) <= 8, "MPlug has room for one Plug");
    return *reinterpret_cast<Plug*>(handle.storage);
}

MPlug Api::wrap(const Plug& plug)
{
    MPlug handle;
    Api::plug(handle) = plug;
    return handle;
}

SelectionList& Api::list(MSelectionList& handle)
{
    return *handle.list;
}

const SelectionList& Api::list(const MSelectionList& handle)
{
    return *handle.list;
}

RichSelection& Api::rich(MRichSelection& handle)
{
    return *handle.selection;
}

const RichSelection& Api::rich(const MRichSelection& handle)
{
    return *handle.selection;
}

CommandResult& Api::result(MCommandResult& handle)
{
    return *handle.result;
}

std::string Api::text(const MString& text)
{
    return text.text;
}

MString Api::wrap(const std::string& text)
{
    MString wrapped;
    wrapped.text = text;
    return wrapped;
}

MStringArray Api::wrap(const std::vector<std::string>& texts)
{
    MStringArray wrapped;
    for (const std::string& text : texts)
        wrapped.append(wrap(text));
    return wrapped;
}

ArgList& Api::arguments(MArgList& handle)
{
    return *handle.arguments;
}

const ArgList& Api::arguments(const MArgList& handle)
{
    return *handle.arguments;
}

MSyntax Api::wrap(std::shared_ptr<Syntax> syntax)
{
    MSyntax handle;
    handle.syntax = std::move(syntax);
    return handle;
}

const Syntax& Api::syntax(const MSyntax& handle)
{
    return *handle.syntax;
}

MArgParser Api::wrap(std::shared_ptr<const ParsedArgs> parsed)
{
    MArgParser parser;
    parser.parsed = std::move(parsed);
    return parser;
}

const ParsedArgs& Api::parsed(const MArgParser& parser)
{
    return *parser.parsed;
}

CommandState& Api::state(const MPxCommand& command)
{
    return *command.state;
}

Viewport* Api::view(const M3dView& handle)
{
    return handle.view;
}

M3dView Api::wrap(Viewport* view)
{
    M3dView handle;
    handle.view = view;
    return handle;
}

void Api::withDrawing(DrawRecord& record, Viewport& view, const Drawing& draw)
{
    MHWRender::MUIDrawManager manager(record);
    MHWRender::MFrameContext frame;
    frame.view = &view;
    draw(manager, frame);
}

DrawRecord& Api::record(const MHWRender::MUIDrawManager& manager)
{
    return *manager.record;
}

void report(MStatus* target, const MStatus& status)
{
    if (target)
        *target = status;
}

} // namespace host
