#pragma once

#include "graph/attribute.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace host {

class Node;

/// What one addAttr asks for, whether it comes from a file or from a script. Long flag names are given.
struct AttributeRequest {
    std::string longName, shortName, niceName;
    std::string attributeType;          ///< -attributeType: "double", "double3", "enum", "message" ...
    std::vector<std::string> dataTypes; ///< -dataType: "string", "matrix", "stringArray" ...
    std::string parent;                 ///< -parent: a compound that was asked for before
    std::string enumNames;              ///< -enumName: "low=1:high:top=9"
    std::optional<double> defaultValue, minimum, maximum, softMinimum, softMaximum;
    int children = 0; ///< -numberOfChildren, of "compound" only
    Attribute::Flags flags;
    std::vector<std::string> categories;
};

/// The attribute, without its children. Throws host::Error naming the attribute and what is wrong; an
/// attribute type that the host does not know is `unknown attribute type`.
Ref<Attribute> makeAttribute(const AttributeRequest& request);
bool isKnownAttributeType(const std::string& attributeType);

/// The words of the addAttr that makes this attribute (children need one each), from "addAttr" on.
std::string addAttrText(const Attribute& attribute);

/// Compounds are made one addAttr at a time: the parent first, then its children. The whole tree is handed
/// out when the last child is there.
class PendingAttributes {
public:
    /// Takes one request; gives the root of a finished tree, or null while children are missing. Throws
    /// host::Error when the parent is not waiting for a child.
    Ref<Attribute> add(Node& node, const AttributeRequest& request);
    /// Names of compounds of which children are still missing, and forgets them.
    std::vector<std::string> takeUnfinished();

private:
    struct Tree {
        Ref<Node> node;
        Ref<Attribute> root;
        std::map<Attribute*, int> wanted; ///< children per compound
    };
    static bool finished(const Tree& tree, Attribute& attribute);
    std::vector<Tree> trees;
};

} // namespace host
