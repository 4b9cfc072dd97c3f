#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace host {

class Attribute;
class Graph;
class Node;
class Plug;
struct SceneInfo;
struct SceneUnits;

/// Writes a scene as Maya ASCII: head, DAG nodes parents first, other nodes in creation order, default nodes
/// that were changed (select -ne), connections in the order in which they were made. Of attributes only what
/// was set is written, numbers in the shortest form that reads back as the same value, in the units of the
/// file. What the scene keeps as text is written back as it came.
///
/// The text depends on the scene alone (no date, no file name): a scene that is saved, opened and saved
/// again gives the same bytes.
void writeScene(std::ostream& out, const Graph& graph, const SceneInfo& info);

/// The attributes of one node: addAttr, kept statements, values, flags. One statement per line, each with a
/// tab in front.
class MaNodeWriter {
public:
    MaNodeWriter(std::string& text, const Node& owner, const SceneUnits& fileUnits)
        : out(text), node(owner), units(fileUnits)
    {}

    void write();
    /// Whether there is anything to write: default nodes that nobody touched are left out of files.
    static bool hasAnything(const Node& node);

private:
    void addAttributes();
    void addAttribute(const Attribute& attribute);
    void statements(const std::vector<std::string>& kept);
    bool isKeptXform(const Plug& plug) const;
    void aliases();
    void value(const Plug& plug);
    void array(const Plug& plug);
    void numbers(const Plug& plug);
    void tuples(const Plug& plug, const std::string& count);
    void weightRows(const Plug& plug);
    void leaf(const Plug& plug);
    void flags();
    std::string word(const Attribute& attribute, double number) const;
    std::string leafWords(const Plug& plug) const;
    void open(const std::string& words, const std::string& path);
    void close();

    std::string& out;
    const Node& node;
    const SceneUnits& units;
};

} // namespace host
