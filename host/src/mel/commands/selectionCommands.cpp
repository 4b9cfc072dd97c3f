#include "mel/commands/selectionCommands.h"
#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/register.h"
#include "nodes/geometry.h"
#include "nodes/setMembers.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>
#include <array>

namespace host {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

namespace {

SelectionItem nodeItem(Node& node)
{
    return {Ref<Node>(&node), {}, Plug()};
}

/// select -all: what the person has made: DAG objects at the top of the scene, without the default cameras;
/// -allDagObjects: the visible ones of them.
SelectionList everything(Session& session, bool visibleOnly)
{
    SelectionList list;
    for (const Ref<DagNode>& root : session.graph().roots())
        if (!root->isDefault && (!visibleOnly || isVisible(*root)))
            list.items.push_back(nodeItem(*root));
    return list;
}

void addBelow(SelectionList& list, DagNode& node)
{
    list.add(nodeItem(node), true);
    for (const Ref<DagNode>& child : node.children())
        if (!child->isShape())
            addBelow(list, *child);
}

/// select -hierarchy: every object with the transforms below it.
SelectionList withDescendants(const SelectionList& list)
{
    SelectionList out;
    for (const SelectionItem& item : list.items) {
        DagNode* dag = item.component || !item.plug.isNull() ? nullptr : item.node->asDag();
        if (dag)
            addBelow(out, *dag);
        else
            out.add(item, true);
    }
    return out;
}

/// Sets stand for their members.
SelectionList withMembers(const SelectionList& list)
{
    SelectionList out;
    for (const SelectionItem& item : list.items) {
        if (item.plug.isNull() && !item.component && item.node->hasFn(MFn::kSet))
            out.combine(setMembers(*item.node), SelectionList::Merge::kNormal);
        else
            out.add(item, true);
    }
    return out;
}

SelectionList namedTargets(Session& session, const Args& args)
{
    const std::vector<std::string> names = args.objectNames();
    if (args.isSet("all"))
        return everything(session, false);
    if (args.isSet("allDagObjects"))
        return everything(session, true);
    SelectionList list = commandTargets(session, names);
    if (!names.empty() && !args.isSet("noExpand"))
        list = withMembers(list);
    return args.isSet("hierarchy") ? withDescendants(list) : list;
}

Value select(Session& session, const Args& args)
{
    const bool add = args.isSet("add"), toggle = args.isSet("toggle"), remove = args.isSet("deselect"),
               first = args.isSet("addFirst");
    const int ways = int(add) + int(toggle) + int(remove) + int(first) + int(args.isSet("replace"));
    if (ways > 1)
        throw Error("select: only one of -add, -addFirst, -toggle, -deselect and -replace can be used");
    if (args.isSet("clear")) {
        recordSelection(session, {});
        return {};
    }
    SelectionList list = session.selection().active();
    const SelectionList targets = namedTargets(session, args);
    if (toggle)
        list.combine(targets, SelectionList::Merge::kXor);
    else if (remove)
        list.combine(targets, SelectionList::Merge::kRemove);
    else if (add)
        list.combine(targets, SelectionList::Merge::kNormal);
    else if (first) {
        const SelectionList former = list;
        list = targets;
        list.combine(former, SelectionList::Merge::kNormal);
    } else
        list = targets;
    recordSelection(session, std::move(list));
    return {};
}

Value symmetrizeSelection(Session& session, const Args&)
{
    const SelectionList before = session.selection().active();
    SelectionList after = symmetrized(session, before);
    const bool changed = std::any_of(after.items.begin(), after.items.end(),
                                     [&](const SelectionItem& item) { return !before.holds(item); });
    if (changed)
        recordSelection(session, std::move(after));
    return {};
}

/// What a number of filterExpand -selectionMask stands for.
bool inMask(const SelectionItem& item, int mask)
{
    struct Row {
        int mask;
        MFn::Type type;
        bool component;
    };
    static constexpr std::array<Row, 12> rows = {{
        {9, MFn::kNurbsCurve, false},
        {10, MFn::kNurbsSurface, false},
        {12, MFn::kMesh, false},
        {22, MFn::kTransform, false},
        {28, MFn::kCurveCVComponent, true},
        {28, MFn::kSurfaceCVComponent, true},
        {31, MFn::kMeshVertComponent, true},
        {32, MFn::kMeshEdgeComponent, true},
        {34, MFn::kMeshPolygonComponent, true},
        {46, MFn::kLatticeComponent, true},
        {36, MFn::kJoint, false},
        {0, MFn::kDependencyNode, false},
    }};
    const auto known =
        std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.mask == mask; });
    if (known == rows.end())
        throw Error("filterExpand: the selection mask " + std::to_string(mask) + " is not supported");
    return std::any_of(rows.begin(), rows.end(), [&](const Row& row) {
        if (row.mask != mask || row.component != bool(item.component) || !item.plug.isNull())
            return false;
        if (row.component)
            return item.component->apiType() == row.type;
        const DagNode* shape = componentShape(*item.node);
        return item.node->hasFn(row.type) || (shape && shape->hasFn(row.type));
    });
}

Value filterExpand(Session& session, const Args& args)
{
    const std::vector<std::string> names = args.objectNames();
    SelectionList list = session.selection().active();
    if (!names.empty())
        list = commandTargets(session, names);
    const bool expand = args.booleanOr("expand", true);
    mel::StringArray out;
    for (std::size_t at = 0; at < list.items.size(); ++at) {
        bool wanted = false;
        for (int use = 0; use < args.uses("selectionMask"); ++use)
            wanted = inMask(list.items[at], args.integer("selectionMask", 0, use)) || wanted;
        if (!wanted)
            continue;
        const std::vector<std::string> texts = expand ? list.flatTexts(at) : list.texts(at);
        out.insert(out.end(), texts.begin(), texts.end());
    }
    return out;
}

/// Edges, faces and whole polygon objects as their vertices; what is no polygon is left out.
SelectionList asVertices(const SelectionList& list)
{
    SelectionList vertices;
    for (std::size_t at = 0; at < list.items.size(); ++at) {
        const SelectionItem& item = list.items[at];
        DagNode* const shape = item.node ? componentShape(*item.node) : nullptr;
        const GeometryRef geometry = shape && shape->hasFn(MFn::kMesh) ? shapeGeometry(*shape) : nullptr;
        if (!geometry || !item.plug.isNull())
            continue;
        std::vector<std::string> components = {"vtx[*]"};
        if (item.component)
            components = list.texts(at);
        for (std::string& text : components)
            text.erase(0, item.component ? text.rfind('.') + 1 : 0);
        const PointGroup group = pointGroup(*geometry, components);
        const Ref<Component> points = group.all ? allPoints(*shape) : pointComponent(*shape, group.points);
        vertices.add({Ref<Node>(shape), points, Plug()}, true);
    }
    return vertices;
}

Value polyListComponentConversion(Session& session, const Args& args)
{
    if (!args.isSet("toVertex"))
        throw Error("polyListComponentConversion: only -toVertex is supported.");
    const SelectionList vertices = asVertices(commandTargets(session, args.objectNames()));
    mel::StringArray names;
    for (std::size_t at = 0; at < vertices.items.size(); ++at)
        for (std::string& text : vertices.texts(at))
            names.push_back(std::move(text));
    return names;
}

Value convertSelectionToVertices(Session& session, const Args&)
{
    recordSelection(session, asVertices(commandTargets(session, {})));
    return {};
}

} // namespace

void recordSelection(Session& session, SelectionList list)
{
    const SelectionState::Snapshot before = session.selection().snapshot();
    session.edits().perform([list = std::move(list)](Session& target) { target.selection().setActive(list); },
                            [before](Session& target) { target.selection().restore(before); });
}

void registerSelectionCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("select")
                     .flag("add", "add")
                     .flag("af", "addFirst")
                     .flag("r", "replace")
                     .flag("tgl", "toggle")
                     .flag("d", "deselect")
                     .flag("cl", "clear")
                     .flag("all", "all")
                     .flag("ado", "allDagObjects")
                     .flag("hi", "hierarchy")
                     .flag("ne", "noExpand")
                     .objects(0)
                     .undoable(),
                 select);
    registry.add(CommandSpec("SymmetrizeSelection").undoable(), symmetrizeSelection);
    registry.add(CommandSpec("filterExpand")
                     .flag("sm", "selectionMask", {ArgType::kInt})
                     .multi()
                     .flag("ex", "expand", {ArgType::kBool})
                     .objects(0),
                 filterExpand);
    registry.add(CommandSpec("polyListComponentConversion").flag("tv", "toVertex").objects(0),
                 polyListComponentConversion);
    registry.add(CommandSpec("ConvertSelectionToVertices").undoable(), convertSelectionToVertices);
    registerSelectionSettings(registry);
}

} // namespace host
