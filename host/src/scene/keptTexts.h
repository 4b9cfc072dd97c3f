#pragma once

#include <string>
#include <vector>

namespace host {

class Node;

/// What a node keeps as text, by where a file holds it.
struct KeptTexts {
    /// In front of the node's own addAttr. What nobody knew when it was read must be unknown again the next
    /// time, even if the node has got an attribute of that name since: the text may not fit it.
    std::vector<std::string> before;
    /// Behind them: what is said about attributes that are there.
    std::vector<std::string> behind;
};

/// Leaves out what no longer holds: transformations in parts whose matrix has become another.
KeptTexts keptTextsOf(const Node& node);

} // namespace host
