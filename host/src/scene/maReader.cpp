#include "scene/maReader.h"

#include "scene/meshText.h"
#include "types/error.h"

#include <algorithm>

namespace host {

MaReader::MaReader(Graph& target, SceneInfo& sceneInfo, std::istream& input, const std::string& fileName,
                   MaReadOptions readOptions)
    : graph(target), info(readOptions.import ? own : sceneInfo), tokens(input, fileName), file(fileName),
      options(std::move(readOptions))
{}

MaReader::~MaReader() = default;

void MaReader::read()
{
    MaStatement words;
    bool first = true;
    while (tokens.next(words)) {
        if (first)
            readHead();
        first = false;
        if (options.bytesRead)
            *options.bytesRead = tokens.bytesRead();
        statement(words);
    }
    if (first)
        readHead();
    requireEnd();
    enter(nullptr, Context::kNone);
    retryKept();
    finish();
}

/// Every Maya ASCII file begins with "//Maya"; the head also tells the version and the character set.
void MaReader::readHead()
{
    const std::vector<std::string>& head = tokens.headComments();
    if (head.empty() || head.front().compare(0, 6, "//Maya") != 0)
        throw Error(file + ": line 1: this is no Maya ASCII file (it does not begin with //Maya)");
    const std::string begin = "//Maya ASCII ", end = " scene";
    const std::string& title = head.front();
    if (title.compare(0, begin.size(), begin) == 0 && title.size() > begin.size() + end.size())
        info.version = title.substr(begin.size(), title.find(' ', begin.size()) - begin.size());
    info.codeset.clear();
    for (const std::string& line : head) {
        if (line.compare(0, 10, "//Codeset:") == 0 && line.size() > 11)
            info.codeset = line.substr(11);
    }
}

void MaReader::statement(const MaStatement& words)
{
    struct Handler {
        std::string_view command;
        void (MaReader::*read)(const MaStatement&);
    };
    static constexpr Handler kHandlers[] = {
        {"setAttr", &MaReader::setAttr},        {"connectAttr", &MaReader::connectAttr},
        {"createNode", &MaReader::createNode},  {"rename", &MaReader::renameNode},
        {"addAttr", &MaReader::addAttr},        {"select", &MaReader::select},
        {"parent", &MaReader::parentNode},      {"disconnectAttr", &MaReader::disconnectAttr},
        {"lockNode", &MaReader::lockNode},      {"requires", &MaReader::requires_},
        {"fileInfo", &MaReader::fileInfoEntry}, {"currentUnit", &MaReader::currentUnit},
        {"file", &MaReader::fileReference}};
    const auto handler =
        std::find_if(std::begin(kHandlers), std::end(kHandlers),
                     [&](const Handler& candidate) { return words.command() == candidate.command; });
    if (handler == std::end(kHandlers)) {
        keep(words);
        return;
    }
    try {
        (this->*handler->read)(words);
    } catch (const Error& error) {
        const std::string text = error.what();
        if (text.compare(0, file.size() + 7, file + ": line ") == 0)
            throw;
        throw Error(file + ": line " + std::to_string(words.line) + ": " + text);
    }
}

void MaReader::fileReference(const MaStatement& words)
{
    const std::string path(words.words.back().text);
    const std::string note = "the reference to \"" + path + "\" is kept but not loaded";
    if (std::find(notes.begin(), notes.end(), note) == notes.end())
        notes.push_back(note);
    keep(words);
}

void MaReader::requires_(const MaStatement& words)
{
    if (words.words.size() == 3 && words.words[1].text == "maya")
        info.version = std::string(words.words[2].text);
    else
        info.requirements.emplace_back(words.raw);
}

void MaReader::currentUnit(const MaStatement& words)
{
    for (MaCursor cursor(words, file); !cursor.atEnd();) {
        const std::string flag = cursor.text();
        const bool linear = flag == "-l" || flag == "-linear";
        const bool angle = flag == "-a" || flag == "-angle";
        if (!linear && !angle && flag != "-t" && flag != "-time")
            cursor.fail("currentUnit has no flag \"" + flag + "\"");
        const std::string unit = cursor.text();
        if (!linear && !angle)
            info.units.time = unit;
        else if (!(linear ? info.units.setLinear(unit) : info.units.setAngle(unit)))
            cursor.fail("\"" + unit + "\" is no unit of " + (linear ? "length" : "angle"));
    }
}

void MaReader::fileInfoEntry(const MaStatement& words)
{
    MaCursor cursor(words, file);
    const std::string key = cursor.text();
    info.setFileInfo(key, cursor.text());
    cursor.expectEnd();
}

/// A file with Maya's whole head has its last line, too, or has lost its end; hand-written files have
/// neither.
void MaReader::requireEnd() const
{
    const std::vector<std::string>& head = tokens.headComments();
    const bool whole = std::any_of(
        head.begin(), head.end(), [](const std::string& line) { return line.compare(0, 7, "//Name:") == 0; });
    if (whole && tokens.lastComment().compare(0, 9, "// End of") != 0)
        throw Error(file + ": line " + std::to_string(tokens.currentLine()) +
                    ": the file is cut off (its last line, \"// End of ...\", is missing)");
}

/// Locks come last: they would refuse values and connections of this very file.
void MaReader::finish()
{
    for (const auto& [plug, locked] : locks)
        plug.setLocked(locked);
    for (const auto& [node, locked] : nodeLocks)
        node->locked = locked;
    tellUnresolved();
    info.keptHead = textsOf(keptHead);
    info.keptBody = textsOf(keptBody);
    info.keptTail = textsOf(keptTail);
}

} // namespace host
