#include "scene/maWriter.h"

#include "graph/graph.h"
#include "scene/maText.h"
#include "scene/plugRange.h"
#include "scene/sceneInfo.h"

#include <algorithm>
#include <ostream>

namespace host {

namespace {

class SceneWriter {
public:
    SceneWriter(std::ostream& output, const Graph& source, const SceneInfo& sceneInfo)
        : stream(output), graph(source), info(sceneInfo)
    {}

    void write()
    {
        head();
        for (const Ref<DagNode>& root : graph.roots())
            dagNode(*root);
        for (const Ref<Node>& node : graph.nodes()) {
            if (!node->asDag() && (!node->isDefault || node->shared))
                newNode(*node);
        }
        for (const Ref<Node>& node : graph.nodes()) {
            if (!node->asDag() && node->isDefault && !node->shared && MaNodeWriter::hasAnything(*node))
                defaultNode(*node);
        }
        statements(info.keptBody);
        links();
        statements(info.keptTail);
        text += "// End of scene\n";
        flush(true);
    }

private:
    void head()
    {
        text += "//Maya ASCII " + info.version + " scene\n";
        // Promises the last line, by which a file that was cut off is found out.
        text += "//Name: scene\n";
        if (!info.codeset.empty())
            text += "//Codeset: " + info.codeset + "\n";
        text += "requires maya " + maQuoted(info.version) + ";\n";
        statements(info.requirements);
        text += "currentUnit -l " + info.units.linear + " -a " + info.units.angle + " -t " + info.units.time +
                ";\n";
        for (const auto& [key, value] : info.fileInfo)
            text += "fileInfo " + maQuoted(key) + " " + maQuoted(value) + ";\n";
        statements(info.keptHead);
    }

    void statements(const std::vector<std::string>& kept)
    {
        for (const std::string& statement : kept)
            text += statement + ";\n";
    }

    void dagNode(const DagNode& node)
    {
        newNode(node);
        for (const Ref<DagNode>& child : node.children())
            dagNode(*child);
    }

    void newNode(const Node& node)
    {
        text +=
            "createNode " + node.type().name + (node.shared ? " -s" : "") + " -n " + maQuoted(node.name());
        const DagNode* const dag = node.asDag();
        if (dag && dag->parent())
            text += " -p " + maQuoted(dag->parent()->uniqueName());
        text += ";\n";
        text += "\trename -uid " + maQuoted(node.uuid()) + ";\n";
        MaNodeWriter(text, node, info.units).write();
        flush(false);
    }

    void defaultNode(const Node& node)
    {
        text += "select -ne :" + node.name() + ";\n";
        MaNodeWriter(text, node, info.units).write();
    }

    static std::string end(const Plug& plug, const std::string& path)
    {
        const Node& node = *plug.node();
        const bool colon = (node.isDefault || node.shared) && !node.asDag();
        return maQuoted((colon ? ":" : "") + node.uniqueName() + "." + path);
    }

    void links()
    {
        for (const Graph::Connection& link : graph.connections()) {
            const Attribute& target = *link.destination.attribute();
            const bool anyElement =
                target.flags.array && !target.flags.indexMatters && link.destination.isElement();
            const Plug destination = anyElement ? link.destination.array() : link.destination;
            text += "connectAttr " + end(link.source, maPath(link.source, true)) + " " +
                    end(destination, maPath(destination, true)) + (anyElement ? " -na" : "") + ";\n";
            flush(false);
        }
    }

    /// Large scenes go out piece by piece.
    void flush(bool all)
    {
        if (!all && text.size() < (std::size_t{1} << 20))
            return;
        stream << text;
        text.clear();
    }

    std::ostream& stream;
    const Graph& graph;
    const SceneInfo& info;
    std::string text;
};

} // namespace

void writeScene(std::ostream& out, const Graph& graph, const SceneInfo& info)
{
    SceneWriter(out, graph, info).write();
}

} // namespace host
