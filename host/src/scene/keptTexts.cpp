#include "scene/keptTexts.h"

#include "graph/node.h"
#include "scene/keptXform.h"
#include "scene/maStatement.h"
#include "scene/maTokenizer.h"
#include "scene/plugRange.h"
#include "types/error.h"

#include <algorithm>
#include <set>
#include <sstream>

namespace host {

namespace {

enum class Place { kBefore, kBehind, kNowhere };

class Sorter {
public:
    explicit Sorter(const Node& owner) : node(const_cast<Node&>(owner)) {}

    Place placeOf(const std::string& statement)
    {
        if (statement.compare(0, 7, "addAttr") == 0)
            return isBehind(statement, &Sorter::isTakenAttribute) ? Place::kBehind : Place::kBefore;
        std::string path;
        Imath::M44d matrix;
        if (readKeptXform(statement, path, matrix))
            return placeOfXform(path, matrix);
        const bool caching = statement.compare(0, 11, "setAttr -ca") == 0;
        return caching && isBehind(statement, &Sorter::isCaching) ? Place::kBehind : Place::kBefore;
    }

private:
    bool isBehind(const std::string& statement, bool (Sorter::*test)(const MaStatement& words))
    {
        std::istringstream text(statement + "\n;");
        MaTokenizer tokens(text, "kept statement");
        MaStatement words;
        return tokens.next(words) && (this->*test)(words);
    }

    /// Of a name that the node has already, or a child of one.
    bool isTakenAttribute(const MaStatement& words)
    {
        bool behind = false;
        std::vector<std::string> names;
        for (std::size_t at = 1; at + 1 < words.words.size(); ++at) {
            const std::string_view flag = words.words[at].isFlag() ? words.words[at].text : "";
            const std::string value(words.words[at + 1].text);
            const bool parent = flag == "-p" || flag == "-parent";
            if (flag == "-ln" || flag == "-longName" || flag == "-sn" || flag == "-shortName")
                names.push_back(value);
            else if (!parent)
                continue;
            behind = behind || node.findAttribute(value) || (parent && taken.count(value) > 0);
        }
        if (behind)
            taken.insert(names.begin(), names.end());
        return behind;
    }

    /// The form in which the reader keeps this flag of an attribute that is there.
    bool isCaching(const MaStatement& words)
    {
        return words.words.size() == 4 && words.words[1].text == "-ca" &&
               words.words[3].text.substr(0, 1) == "." && isThere(std::string(words.words[3].text.substr(1)));
    }

    bool isThere(const std::string& path)
    {
        try {
            return resolvePlugs(node, path).has_value();
        } catch (const Error&) {
            return false; // an index where the attribute of that name takes none
        }
    }

    Place placeOfXform(const std::string& path, const Imath::M44d& matrix)
    {
        // An attribute that the host does not know has nothing but this text.
        if (!isThere(path))
            return Place::kBefore;
        const Plug plug = resolvePlugs(node, path)->plug;
        if (plug.attribute()->type != AttributeType::kMatrix || plug.isArray())
            return Place::kBefore;
        return plug.hasStored() && plug.storedMatrix() == matrix ? Place::kBehind : Place::kNowhere;
    }

    Node& node;
    std::set<std::string> taken;
};

} // namespace

KeptTexts keptTextsOf(const Node& node)
{
    KeptTexts texts;
    Sorter sorter(node);
    for (const std::string& statement : node.keptStatements) {
        const Place place = sorter.placeOf(statement);
        if (place != Place::kNowhere)
            (place == Place::kBefore ? texts.before : texts.behind).push_back(statement);
    }
    return texts;
}

} // namespace host
