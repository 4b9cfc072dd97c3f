#pragma once

#include "graph/graph.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host {

class UndoItem;

/// The one gate for recorded changes: each call performs the raw operation of Graph or Plug and, while the
/// session's undo queue is recording, pushes the item that takes it back. Commands use this; API writes of
/// plug-ins do not (they are not undoable). Throws host::Error as the raw operations do.
class Edits {
public:
    explicit Edits(Session& session) : owner(session) {}

    Node& create(const NodeType& type, const std::string& name = {}, DagNode* parent = nullptr);
    /// Records a node, with what is below it, that has been made otherwise: read from a text, say.
    void made(Node& top);
    void remove(Node& node);
    void rename(Node& node, const std::string& name);
    void reparent(DagNode& node, DagNode* parent);

    void setNumber(const Plug& plug, double value);
    void setText(const Plug& plug, const std::string& value);
    void setMatrix(const Plug& plug, const Imath::M44d& value);
    void setData(const Plug& plug, DataRef value);
    void setLocked(const Plug& plug, bool locked);
    void setKeyable(const Plug& plug, bool keyable);
    void setChannelBox(const Plug& plug, bool shown);
    void unset(const Plug& plug); ///< removeMultiInstance, reset to default
    /// Replaces a whole stored subtree of values (an array of weights, say) in one item; `change` writes with
    /// raw operations below `plug`. If it throws, the old values are put back.
    void replaceBelow(const Plug& plug, const std::function<void()>& change);

    /// The same for some elements of an array (indices ascending): `change` writes these only. Costs what
    /// they hold, not what the array holds.
    void replaceElements(const Plug& array, std::vector<std::uint32_t> indices,
                         const std::function<void()>& change);

    void connect(const Plug& source, const Plug& destination, bool force = false);
    void disconnect(const Plug& source, const Plug& destination);

    void addAttribute(Node& node, Ref<Attribute> root);
    void removeAttribute(Node& node, const Attribute& root);
    void setAliases(Node& node, std::vector<std::pair<std::string, std::string>> aliases);
    void setNodeLocked(Node& node, bool locked);

    /// For changes outside the graph (selection, hotkeys ...): `again` is performed now, and both are
    /// recorded.
    void perform(std::function<void(Session&)> again, std::function<void(Session&)> back);

private:
    template <class Change>
    void record(const Plug& plug, const Change& change);
    void push(std::unique_ptr<UndoItem> item);
    Session& owner;
};

} // namespace host
