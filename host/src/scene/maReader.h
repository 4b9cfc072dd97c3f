#pragma once

#include "graph/graph.h"
#include "scene/dynamicAttribute.h"
#include "scene/maTokenizer.h"
#include "scene/sceneInfo.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace host {

class MeshText;
struct PlugRange;

/// How a file is read into a scene.
struct MaReadOptions {
    /// Adds to a scene that has something in it: shared nodes (createNode -s, select -ne) are those of the
    /// scene and keep their values, taken names get numbers, the file's own units hold for its numbers only.
    bool import = false;
    bool copies = false;   ///< every node is a new one, whatever names are taken
    std::string nameSpace; ///< put in front of the names of an imported file's nodes
    std::atomic<std::uint64_t>* bytesRead = nullptr; ///< kept up to date for whoever watches, if given
};

/// Reads one Maya ASCII file into a graph, statement by statement as they come.
///
/// What the host knows becomes nodes, values and connections. What it does not know is kept as text where it
/// belongs: on the node (Node::keptStatements) or in SceneInfo. Script nodes are text and nothing in a file
/// is ever run. Locks take effect after the last statement, since they would refuse the file's own values.
///
/// Throws host::Error `file: line N: ...` for what no Maya writes: broken syntax, values that do not fit
/// their attribute, flags that do not exist. The graph then holds what had been read so far; openScene()
/// (scene/sceneFile.h) puts the former scene back. Connections and parents that are not there are no
/// error, since references bring them: such statements are kept as text and one warning counts them.
class MaReader {
public:
    MaReader(Graph& target, SceneInfo& info, std::istream& input, const std::string& fileName,
             MaReadOptions options = {});
    ~MaReader();

    void read();
    /// What should be told to the user, in order; no file name in front.
    const std::vector<std::string>& warnings() const { return notes; }

private:
    /// What setAttr and addAttr without a node name speak of.
    enum class Context { kNone, kNode, kText, kIgnored };
    struct SetFlags;
    struct Endpoint;
    /// Statements that are kept as text: one, or one that makes or selects a node with all about that node.
    struct Kept {
        std::vector<std::pair<std::string, int>> statements; ///< with their lines
        std::string missing;                                 ///< what they name that is not there
        bool usual = false;                                  ///< nobody needs to be told
        std::optional<std::pair<Plug, Plug>> unlinked;       ///< of a disconnectAttr without a connection
    };

    void statement(const MaStatement& words);
    void readHead();
    void requireEnd() const;
    // Statements about the whole file.
    void fileReference(const MaStatement& words);
    void requires_(const MaStatement& words);
    void currentUnit(const MaStatement& words);
    void fileInfoEntry(const MaStatement& words);
    Kept& keep(const MaStatement& words);
    void keepWithNode(const MaStatement& words);
    Kept& keepUnresolved(const MaStatement& words, const std::string& missing);
    // What came before the node that it speaks of.
    void retryKept();
    void retry(Kept& kept);
    void tellUnresolved();
    std::vector<std::string> textsOf(std::deque<Kept>& kept);
    // Nodes.
    void createNode(const MaStatement& words);
    void select(const MaStatement& words);
    void renameNode(const MaStatement& words);
    void lockNode(const MaStatement& words);
    void parentNode(const MaStatement& words);
    Node& makeNode(const std::string& type, const std::string& name, DagNode* parent);
    Node* sharedNode(const std::string& type, const std::string& name, bool shared,
                     const DagNode* parent) const;
    bool isDeclared(const std::string& leaf, const Node& node) const;
    void enterShared(Node& existing, const std::string& leaf, DagNode* parent);
    void enter(Node* node, Context context);
    Node* findNode(const std::string& name) const;
    bool onPath(const DagNode* node, std::string_view path) const;
    std::string fileNameOf(const Node& node) const;
    // Attributes and values.
    void addAttr(const MaStatement& words);
    bool attributeRequest(MaCursor& cursor, AttributeRequest& request) const;
    void keepAddAttr(Node& node, const MaStatement& words, const AttributeRequest& request);
    void setAttr(const MaStatement& words);
    SetFlags setFlags(MaCursor& cursor) const;
    Node* setTarget(const MaStatement& words, std::string& path);
    void setFlagsOf(const PlugRange& range, const SetFlags& flags);
    bool meshStatement(Node& node, const std::string& path, MaCursor& cursor);
    void keepSetAttr(Node& node, const MaStatement& words, const MaWord& pathWord, const std::string& path);
    void finishMesh();
    // Connections.
    void connectAttr(const MaStatement& words);
    void disconnectAttr(const MaStatement& words);
    Endpoint endpoint(const std::string& text, bool nextAvailable);
    Plug nextAvailable(Node& node, const std::string& path);

    void finish();

    Graph& graph;
    SceneInfo& info;
    SceneInfo own; ///< of an imported file
    MaTokenizer tokens;
    const std::string file;
    const MaReadOptions options;

    Context context = Context::kNone;
    Node* current = nullptr;
    bool nodesBegun = false, linksBegun = false;
    std::unordered_multimap<std::string, Node*> declared; ///< by the name that the file gives
    std::unordered_map<const Node*, std::string> renamed; ///< nodes whose name had to differ
    std::unordered_set<std::string> keptAttributes;       ///< of the current node, kept as text
    PendingAttributes pending;
    std::unique_ptr<MeshText> mesh; ///< of the current node
    std::vector<std::pair<Plug, bool>> locks;
    std::vector<std::pair<Ref<Node>, bool>> nodeLocks;
    std::deque<Kept> keptHead, keptBody, keptTail; ///< as in SceneInfo
    Kept* group = nullptr;                         ///< of the node that is kept as text
    Kept* retried = nullptr;
    std::multimap<std::string, Kept*> waiting; ///< by the name of the node that is missing
    std::vector<std::string> arrived;          ///< names that somebody waits for
    std::vector<std::string> notes;
};

} // namespace host
