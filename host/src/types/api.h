#pragma once

#include "types/object.h"

#include <maya/MApiNamespace.h>
#include <maya/MObject.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host {

class DagNode;
class Node;
class Plug;
class Viewport;
struct ArgList;
struct CommandResult;
struct CommandState;
struct DrawRecord;
struct ParsedArgs;
struct RichSelection;
struct SelectionList;
struct Syntax;

/// The door between the interface's handle classes and what they stand for inside the host.
/// Only the host's own sources include this header. A null or dead handle gives a null pointer.
struct Api {
    static Object* object(const MObject& handle);
    static MObject wrap(const Object* object);
    /// What a function set is attached to, dead or alive; null when it is attached to nothing.
    static Object* object(const MFnBase& set);

    /// Whether the object that a plug-in reaches for is in the scene; counts it when it is not.
    static bool isThere(const Object& object);

    /// The node behind a handle if it is alive and a node, else null.
    static Node* node(const MObject& handle);

    /// The last node of a path; null for an empty path or a dead node.
    static DagNode* node(const MDagPath& path);
    static MDagPath path(DagNode* node);

    static const Plug& plug(const MPlug& handle);
    static Plug& plug(MPlug& handle);
    static MPlug wrap(const Plug& plug);

    static SelectionList& list(MSelectionList& handle);
    static const SelectionList& list(const MSelectionList& handle);
    static RichSelection& rich(MRichSelection& handle);
    static const RichSelection& rich(const MRichSelection& handle);

    static CommandResult& result(MCommandResult& handle);

    static std::string text(const MString& text);
    static MString wrap(const std::string& text);
    static MStringArray wrap(const std::vector<std::string>& texts);

    static ArgList& arguments(MArgList& handle);
    static const ArgList& arguments(const MArgList& handle);
    /// A syntax that is shared with the handle: flags added through the handle are added to it.
    static MSyntax wrap(std::shared_ptr<Syntax> syntax);
    static const Syntax& syntax(const MSyntax& handle);
    static MArgParser wrap(std::shared_ptr<const ParsedArgs> parsed);
    static const ParsedArgs& parsed(const MArgParser& parser);
    static CommandState& state(const MPxCommand& command);

    /// Null when there is no view.
    static Viewport* view(const M3dView& handle);
    static M3dView wrap(Viewport* view);
    /// Calls the function with a draw manager that writes to the record and with the view as frame context;
    /// both exist for the length of the call.
    using Drawing = std::function<void(MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&)>;
    static void withDrawing(DrawRecord& record, Viewport& view, const Drawing& draw);
    static DrawRecord& record(const MHWRender::MUIDrawManager& manager);
};

/// Writes a status to a caller who asked for one.
void report(MStatus* target, const MStatus& status);

} // namespace host
