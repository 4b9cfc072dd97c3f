#include "host/scene/sceneFacts.h"

#include "scene/maText.h"
#include "scene/maTokenizer.h"

#include <algorithm>
#include <cmath>
#include <fstream>

namespace testing_support {

namespace {

using host::MaStatement;
using host::MaWord;

bool isNumber(const std::string& word)
{
    double unused = 0.0;
    return host::maParseNumber(word, unused);
}

class FactReader {
public:
    explicit FactReader(SceneFacts& target) : facts(target) {}

    void read(const MaStatement& statement)
    {
        words.clear();
        for (const MaWord& word : statement.words)
            words.emplace_back(word.text);
        const std::string& command = words.front();
        if (command == "createNode")
            createNode();
        else if (command == "select")
            node = words.back();
        else if (command == "rename" || command == "lockNode")
            facts.nodes.insert(node + joined(0));
        else if (command == "addAttr")
            facts.attributes.insert(node + sortedFlags());
        else if (command == "setAttr")
            setAttr();
        else if (command == "connectAttr")
            connectAttr();
        else
            facts.others.insert(joined(0));
    }

private:
    std::string joined(std::size_t from) const
    {
        std::string text;
        for (std::size_t k = from; k < words.size(); ++k)
            text += " " + words[k];
        return text;
    }

    void createNode()
    {
        for (std::size_t k = 0; k + 1 < words.size(); ++k) {
            if (words[k] == "-n")
                node = words[k + 1];
        }
        facts.nodes.insert(joined(1));
    }

    std::string sortedFlags() const
    {
        std::vector<std::string> flags;
        for (std::size_t k = 1; k < words.size(); ++k) {
            if (words[k].size() > 1 && words[k][0] == '-' && !isNumber(words[k]))
                flags.push_back(words[k]);
            else if (!flags.empty())
                flags.back() += " " + words[k];
        }
        std::sort(flags.begin(), flags.end());
        std::string text;
        for (const std::string& flag : flags)
            text += " " + flag;
        return text;
    }

    void setAttr()
    {
        std::string path, type;
        std::vector<std::string> values, flags;
        for (std::size_t k = 1; k < words.size(); ++k) {
            if (!path.empty() && words[k] == "-type")
                type = words[++k];
            else if (path.empty() && (words[k] == "-s" || words[k] == "-ch"))
                ++k;
            else if (path.empty() && (words[k] == "-k" || words[k] == "-l" || words[k] == "-cb"))
                flags.push_back(words[k] + " " + words[k + 1]), ++k;
            else if (path.empty() && words[k] != "-av")
                path = words[k];
            else if (!path.empty())
                values.push_back(words[k]);
        }
        for (const std::string& flag : flags)
            facts.flags.insert(node + path + " " + flag);
        if (!values.empty())
            spread(path, type, values);
    }

    /// One entry per element of a range, and per column of rows of weights.
    void spread(const std::string& path, const std::string& type, const std::vector<std::string>& values)
    {
        const std::size_t open = path.find('['), colon = path.find(':', open), close = path.find(']', colon);
        if (path.find(":") == path.npos || close == path.npos) {
            facts.values[node + path] = values;
            return;
        }
        const std::size_t first = std::stoul(path.substr(path.rfind('[', colon) + 1)),
                          last = std::stoul(path.substr(colon + 1));
        const std::string front = path.substr(0, path.rfind('[', colon)), rest = path.substr(close + 1);
        std::size_t at = 0;
        for (std::size_t index = first; index <= last; ++index) {
            const std::string name = node + front + "[" + std::to_string(index) + "]" + rest;
            if (rest == ".w") {
                for (std::size_t count = std::stoul(values.at(at++)); count > 0; --count, at += 2)
                    facts.values[name + "[" + values.at(at) + "]"] = {values.at(at + 1)};
                continue;
            }
            std::size_t end = at + values.size() / (last - first + 1);
            if (type == "polyFaces")
                end = static_cast<std::size_t>(
                    std::find(values.begin() + static_cast<std::ptrdiff_t>(at) + 1, values.end(), "f") -
                    values.begin());
            facts.values[name].assign(values.begin() + static_cast<std::ptrdiff_t>(at),
                                      values.begin() + static_cast<std::ptrdiff_t>(end));
            at = end;
        }
    }

    void connectAttr()
    {
        std::vector<std::string> ends;
        bool next = false;
        for (std::size_t k = 1; k < words.size(); ++k) {
            if (words[k] == "-na")
                next = true;
            else
                ends.push_back(words[k]);
        }
        facts.connections.insert(ends.at(0) + " -> " + ends.at(1) + (next ? "[]" : ""));
    }

    SceneFacts& facts;
    std::string node;
    std::vector<std::string> words;
};

} // namespace

SceneFacts readFacts(const std::string& path)
{
    SceneFacts facts;
    std::ifstream input(path, std::ios::binary);
    host::MaTokenizer tokens(input, path);
    MaStatement statement;
    FactReader reader(facts);
    while (tokens.next(statement))
        reader.read(statement);
    return facts;
}

bool sameWords(const std::vector<std::string>& a, const std::vector<std::string>& b)
{
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](const auto& x, const auto& y) {
               double first = 0.0, second = 0.0;
               bool truth = false, other = false;
               if (host::maParseNumber(x, first) && host::maParseNumber(y, second))
                   return std::fabs(first - second) <= 1e-7 * std::fabs(first);
               if (host::maParseBoolean(x, truth) && host::maParseBoolean(y, other))
                   return truth == other;
               return x == y;
           });
}

} // namespace testing_support
