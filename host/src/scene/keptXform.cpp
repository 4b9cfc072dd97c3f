#include "scene/keptXform.h"

#include "scene/dataText.h"
#include "scene/maStatement.h"
#include "scene/maTokenizer.h"
#include "types/error.h"

#include <algorithm>
#include <sstream>

namespace host {

bool readKeptXform(const std::string& statement, std::string& path, Imath::M44d& matrix)
{
    if (statement.find("\"xform\"") == statement.npos)
        return false;
    std::istringstream text(statement + ";");
    MaTokenizer tokens(text, "kept statement");
    MaStatement words;
    tokens.next(words);
    const auto begin = std::find_if(words.words.begin(), words.words.end(),
                                    [](const MaWord& word) { return word.text == "xform"; });
    if (words.command() != "setAttr" || begin == words.words.end())
        return false;
    for (const MaWord& word : words.words) {
        if (word.text.size() > 1 && word.text.front() == '.' && word.kind == MaWord::Kind::kString)
            path = std::string(word.text.substr(1));
    }
    MaCursor cursor(words, "kept statement", static_cast<std::size_t>(begin - words.words.begin()) + 1);
    try {
        matrix = readXform(cursor);
    } catch (const Error&) {
        return false; // of an attribute that the host does not know, so nobody has looked at its words before
    }
    return cursor.atEnd();
}

} // namespace host
