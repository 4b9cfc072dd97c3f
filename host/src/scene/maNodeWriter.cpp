#include "scene/maWriter.h"

#include "graph/node.h"
#include "graph/nodeState.h"
#include "graph/numericArray.h"
#include "graph/weightRows.h"
#include "nodes/geometry.h"
#include "scene/dataText.h"
#include "scene/dynamicAttribute.h"
#include "scene/keptTexts.h"
#include "scene/keptXform.h"
#include "scene/maText.h"
#include "scene/meshText.h"
#include "scene/plugRange.h"
#include "scene/sceneInfo.h"

#include <algorithm>
#include <functional>
#include <tuple>

namespace host {

namespace {

constexpr std::size_t kElementsPerStatement = 500;

bool isTuple(const Attribute& attribute)
{
    return attribute.type == AttributeType::kCompound && !attribute.children.empty() &&
           std::all_of(attribute.children.begin(), attribute.children.end(), [](const Ref<Attribute>& child) {
               return child->isNumber() && !child->flags.array && child->flags.storable;
           });
}

bool isComplete(const Plug& tuple)
{
    for (unsigned child = 0; child < tuple.attribute()->children.size(); ++child) {
        if (!tuple.child(child).hasStored())
            return false;
    }
    return true;
}

/// -type "double3" for compounds that have such a name; other compounds take their values bare.
std::string tupleType(const Attribute& attribute)
{
    static constexpr const char* kNames[] = {"double2", "double3", "double4", "float2", "float3",
                                             "long2",   "long3",   "short2",  "short3"};
    const bool named =
        std::find(std::begin(kNames), std::end(kNames), attribute.dataType) != std::end(kNames);
    return named ? " -type \"" + attribute.dataType + "\"" : std::string();
}

std::string indexed(const std::string& path, std::uint32_t first, std::uint32_t last)
{
    std::string text = path + "[" + std::to_string(first);
    if (last > first)
        text += ":" + std::to_string(last);
    return text + "]";
}

/// Splits ascending indices into runs without gaps, none longer than a statement should be.
void eachRun(const std::vector<std::uint32_t>& indices,
             const std::function<void(std::uint32_t first, std::uint32_t last)>& write)
{
    for (std::size_t begin = 0; begin < indices.size();) {
        std::size_t end = begin + 1;
        while (end < indices.size() && indices[end] == indices[end - 1] + 1 &&
               end - begin < kElementsPerStatement)
            ++end;
        write(indices[begin], indices[end - 1]);
        begin = end;
    }
}

} // namespace

bool MaNodeWriter::hasAnything(const Node& node)
{
    if (!node.dynamicAttributes().empty() || !node.keptStatements.empty() ||
        !node.state().overrides.empty() || node.locked)
        return true;
    return std::any_of(node.type().roots.begin(), node.type().roots.end(), [&](const Ref<Attribute>& root) {
        return root->flags.storable && !root->flags.output &&
               Plug(const_cast<Node*>(&node), root.get()).hasStored();
    });
}

void MaNodeWriter::write()
{
    if (node.locked)
        out += "\tlockNode -l 1 ;\n";
    const KeptTexts kept = keptTextsOf(node);
    statements(kept.before);
    addAttributes();
    statements(kept.behind);
    const auto writeRoot = [this](const Ref<Attribute>& root) {
        if (root->flags.storable && !root->flags.output && root->type != AttributeType::kOpaque)
            value(Plug(const_cast<Node*>(&node), root.get()));
    };
    std::for_each(node.type().roots.begin(), node.type().roots.end(), writeRoot);
    std::for_each(node.dynamicAttributes().begin(), node.dynamicAttributes().end(), writeRoot);
    aliases();
    flags();
}

void MaNodeWriter::addAttributes()
{
    for (const Ref<Attribute>& root : node.dynamicAttributes()) {
        if (root->type != AttributeType::kOpaque)
            addAttribute(*root);
    }
    if (!node.aliases.empty() && !node.findAttribute("attributeAliasList"))
        out += "\taddAttr -ci true -h true -sn \"aal\" -ln \"attributeAliasList\" -dt \"attributeAlias\";\n";
}

void MaNodeWriter::addAttribute(const Attribute& attribute)
{
    out += "\t" + addAttrText(attribute) + ";\n";
    for (const Ref<Attribute>& child : attribute.children)
        addAttribute(*child);
}

void MaNodeWriter::statements(const std::vector<std::string>& kept)
{
    for (const std::string& statement : kept)
        out += "\t" + statement + ";\n";
}

bool MaNodeWriter::isKeptXform(const Plug& plug) const
{
    const std::string begin = "\"." + maPath(plug, false) + "\"";
    return std::any_of(node.keptStatements.begin(), node.keptStatements.end(),
                       [&](const std::string& statement) {
                           std::string path;
                           Imath::M44d matrix;
                           return statement.find(begin) != statement.npos &&
                                  readKeptXform(statement, path, matrix) && plug.storedMatrix() == matrix;
                       });
}

void MaNodeWriter::aliases()
{
    if (node.aliases.empty())
        return;
    open("", "aal");
    appendAliases(out, node.aliases);
    close();
}

void MaNodeWriter::open(const std::string& words, const std::string& path)
{
    out += "\tsetAttr" + words + " \"." + path + "\"";
}

void MaNodeWriter::close()
{
    out += ";\n";
}

void MaNodeWriter::value(const Plug& plug)
{
    const Attribute& attribute = *plug.attribute();
    if (plug.isArray())
        return array(plug);
    if (!plug.hasStored())
        return;
    if (attribute.type != AttributeType::kCompound)
        return leaf(plug);
    if (isTuple(attribute) && isComplete(plug)) {
        open("", maPath(plug, false));
        out += tupleType(attribute);
        for (unsigned child = 0; child < attribute.children.size(); ++child)
            out += " " + leafWords(plug.child(child));
        out += attribute.dataType.empty() ? "" : " ";
        return close();
    }
    for (unsigned child = 0; child < attribute.children.size(); ++child) {
        if (attribute.children[child]->flags.storable)
            value(plug.child(child));
    }
}

void MaNodeWriter::array(const Plug& plug)
{
    const Attribute& attribute = *plug.attribute();
    const std::size_t size = plug.numElements();
    const std::string count = size > 1 ? " -s " + std::to_string(size) : std::string();
    if (attribute.flags.weightRows)
        return weightRows(plug);
    if (attribute.isNumber())
        return numbers(plug);
    if (isTuple(attribute))
        return tuples(plug, count);
    if (!count.empty()) {
        open(count, maPath(plug, false));
        close();
    }
    for (const std::uint32_t index : plug.storedIndices())
        value(plug.element(index));
}

void MaNodeWriter::numbers(const Plug& plug)
{
    const NumericArray* const stored = plug.numbers();
    const std::size_t size = plug.numElements();
    std::string count = size > 1 ? " -s " + std::to_string(size) : std::string();
    const std::vector<std::uint32_t> indices = stored ? stored->indices() : std::vector<std::uint32_t>();
    if (indices.empty() && !count.empty()) {
        open(count, maPath(plug, false));
        close();
    }
    eachRun(indices, [&](std::uint32_t first, std::uint32_t last) {
        open(count, indexed(maPath(plug, false), first, last));
        count.clear();
        if (last > first)
            out += " ";
        WordLines lines(out);
        for (std::uint32_t index = first; index <= last; ++index)
            lines.add(word(*plug.attribute(), stored->get(index)));
        close();
    });
}

/// Elements of which every child has a value go together, the others one by one.
void MaNodeWriter::tuples(const Plug& plug, const std::string& count)
{
    std::vector<std::uint32_t> whole, partial;
    for (const std::uint32_t index : plug.storedIndices())
        (isComplete(plug.element(index)) ? whole : partial).push_back(index);
    std::string hint = count;
    if (whole.empty() && !hint.empty()) {
        open(hint, maPath(plug, false));
        close();
    }
    eachRun(whole, [&](std::uint32_t first, std::uint32_t last) {
        open(hint, indexed(maPath(plug, false), first, last));
        hint.clear();
        out += tupleType(*plug.attribute()) + " ";
        WordLines lines(out);
        for (std::uint32_t index = first; index <= last; ++index) {
            const Plug element = plug.element(index);
            for (unsigned child = 0; child < plug.attribute()->children.size(); ++child)
                lines.add(leafWords(element.child(child)));
        }
        close();
    });
    for (const std::uint32_t index : partial)
        value(plug.element(index));
}

/// `setAttr ".wl[0:5].w"` and a line per row: how many, and as many pairs of column and weight.
void MaNodeWriter::weightRows(const Plug& plug)
{
    const WeightRows* const rows = plug.rows();
    if (!rows || rows->rowCount() == 0)
        return;
    const std::string path = maPath(plug, false);
    if (rows->rowCount() > 1) {
        open(" -s " + std::to_string(rows->rowCount()), path);
        close();
    }
    eachRun(rows->rowIndices(), [&](std::uint32_t first, std::uint32_t last) {
        open("", indexed(path, first, last) + "." + plug.attribute()->children.front()->shortName);
        for (std::uint32_t row = first; row <= last; ++row) {
            const WeightRows::Span span = rows->row(row);
            out += "\n\t\t" + std::to_string(span.count);
            for (const WeightRows::Entry entry : span)
                out += " " + std::to_string(entry.column) + " " + maNumber(entry.weight);
        }
        close();
    });
}

void MaNodeWriter::leaf(const Plug& plug)
{
    const Attribute& attribute = *plug.attribute();
    if (attribute.type == AttributeType::kMessage || attribute.type == AttributeType::kOpaque)
        return;
    if (attribute.type == AttributeType::kMatrix && isKeptXform(plug))
        return;
    if (attribute.type == AttributeType::kData) {
        const DataRef data = plug.storedData();
        const auto* const mesh = dynamic_cast<const MeshData*>(data.get());
        if (mesh)
            return appendMesh(out, *mesh);
        if (!data)
            return;
        open("", maPath(plug, false));
        appendData(out, *data);
        return close();
    }
    open("", maPath(plug, false));
    out += attribute.type == AttributeType::kString   ? " -type \"string\""
           : attribute.type == AttributeType::kMatrix ? " -type \"matrix\""
                                                      : "";
    out += " " + leafWords(plug);
    close();
}

std::string MaNodeWriter::leafWords(const Plug& plug) const
{
    const Attribute& attribute = *plug.attribute();
    if (attribute.type == AttributeType::kString)
        return maQuoted(plug.storedText());
    if (attribute.type != AttributeType::kMatrix)
        return word(attribute, plug.storedNumber());
    std::string words;
    appendMatrix(words, plug.storedMatrix());
    return words.substr(1);
}

std::string MaNodeWriter::word(const Attribute& attribute, double number) const
{
    switch (attribute.type) {
    case AttributeType::kBool:
        return number != 0.0 ? "yes" : "no";
    case AttributeType::kFloat:
        return maNumber(static_cast<float>(number));
    case AttributeType::kDistance:
        return maNumberInUnit(number, units.centimetres);
    case AttributeType::kAngle:
        return maNumberInUnit(number, units.degrees);
    default:
        return maNumber(number);
    }
}

/// Locks and the other flags of single plugs, in the order of the attributes.
void MaNodeWriter::flags()
{
    using Entry = std::tuple<unsigned, std::string, std::string>;
    std::vector<Entry> entries;
    for (const auto& [key, flag] : node.state().overrides) {
        if (key.attribute->type == AttributeType::kOpaque)
            continue;
        Plug plug(const_cast<Node*>(&node), key.attribute);
        for (unsigned slot = 0; slot < Plug::kMaxDepth; ++slot)
            plug.setIndex(slot, key.indices[slot]);
        std::string words = flag.locked ? " -l on" : "";
        if (flag.keyable >= 0)
            words += flag.keyable ? " -k on" : " -k off";
        if (flag.channelBox >= 0)
            words += flag.channelBox ? " -cb on" : " -cb off";
        if (!words.empty())
            entries.emplace_back(key.attribute->root().childIndex, maPath(plug, false), words);
    }
    std::sort(entries.begin(), entries.end());
    for (const auto& [root, path, words] : entries) {
        open(words, path);
        close();
    }
}

} // namespace host
