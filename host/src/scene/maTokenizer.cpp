#include "scene/maTokenizer.h"

#include "types/characters.h"
#include "types/error.h"

#include <algorithm>
#include <istream>

namespace host {

namespace {

/// Read at once: little at first, since many texts are but a statement.
constexpr std::size_t kLeastChunk = std::size_t{1} << 10;
constexpr std::size_t kMostChunk = std::size_t{1} << 20;

bool endsBareWord(char c)
{
    return isBlank(c) || c == '"' || c == '(' || c == ')' || c == '{' || c == '}' || c == ',' || c == ';';
}

} // namespace

MaTokenizer::MaTokenizer(std::istream& input, std::string fileName, int firstLine)
    : stream(input), file(std::move(fileName)), chunk(kLeastChunk), line(firstLine)
{}

void MaTokenizer::fail(int atLine, const std::string& message) const
{
    throw Error(file + ": line " + std::to_string(atLine) + ": " + message);
}

/// Reads on. Positions in the buffer stay as they are; used-up text goes when a statement begins.
bool MaTokenizer::fill()
{
    if (!stream)
        return false;
    const std::size_t size = buffer.size();
    buffer.resize(size + chunk);
    stream.read(&buffer[size], static_cast<std::streamsize>(chunk));
    buffer.resize(size + static_cast<std::size_t>(stream.gcount()));
    taken += static_cast<std::uint64_t>(stream.gcount());
    chunk = std::min(chunk * 4, kMostChunk);
    return buffer.size() > size;
}

bool MaTokenizer::next(MaStatement& statement)
{
    statement.words.clear();
    extents.clear();
    texts.clear();
    if (!skipToStatement())
        return false;
    started = true;
    if (used >= kMostChunk) {
        buffer.erase(0, used);
        used = 0;
    }
    split(statement);
    return true;
}

bool MaTokenizer::skipToStatement()
{
    while (more(used)) {
        const char c = buffer[used];
        if (c == '\n')
            ++line;
        if (isBlank(c) || c == ';')
            ++used;
        else if (beginsComment(used))
            skipComment();
        else
            return true;
    }
    return false;
}

bool MaTokenizer::beginsComment(std::size_t at)
{
    return buffer[at] == '/' && more(at + 1) && (buffer[at + 1] == '/' || buffer[at + 1] == '*');
}

void MaTokenizer::skipComment()
{
    const std::size_t end = findCommentEnd(used, line);
    std::string text = buffer.substr(used, end - used);
    line += static_cast<int>(std::count(text.begin(), text.end(), '\n'));
    while (!text.empty() && isBlank(text.back()))
        text.pop_back();
    if (!started)
        head.push_back(text);
    last = std::move(text);
    used = end;
}

/// Behind the comment that begins at `at`; the line break after // belongs to what follows.
std::size_t MaTokenizer::findCommentEnd(std::size_t at, int atLine)
{
    const bool block = buffer[at + 1] == '*';
    for (at += 2; more(at); ++at) {
        if (!block && buffer[at] == '\n')
            return at;
        if (block && buffer[at] == '*' && more(at + 1) && buffer[at + 1] == '/')
            return at + 2;
    }
    if (block)
        fail(atLine, "the comment that begins here is not closed");
    return at;
}

/// Behind the closing quote of the text that begins at `at`.
std::size_t MaTokenizer::findStringEnd(std::size_t at)
{
    for (++at; more(at) && buffer[at] != '\n'; ++at) {
        if (buffer[at] == '"')
            return at + 1;
        if (buffer[at] == '\\' && more(at + 1) && buffer[++at] == '\n')
            ++wordLine;
    }
    fail(wordLine, "the text that begins here is not closed");
}

/// Blanks and comments. Nothing else decides where a comment begins, and words end where this says so.
std::size_t MaTokenizer::skipBlanks(std::size_t at)
{
    while (more(at)) {
        if (buffer[at] == '\n')
            ++wordLine;
        if (isBlank(buffer[at])) {
            ++at;
        } else if (beginsComment(at)) {
            const std::size_t behind = findCommentEnd(at, wordLine);
            wordLine += linesIn(at, behind);
            at = behind;
        } else {
            break;
        }
    }
    return at;
}

int MaTokenizer::linesIn(std::size_t from, std::size_t to) const
{
    const auto begin = buffer.begin();
    return static_cast<int>(
        std::count(begin + static_cast<std::ptrdiff_t>(from), begin + static_cast<std::ptrdiff_t>(to), '\n'));
}

void MaTokenizer::split(MaStatement& statement)
{
    wordLine = line;
    statement.line = line;
    std::size_t at = used, lastEnd = used;
    while (more(at = skipBlanks(at)) && buffer[at] != ';')
        at = lastEnd = readWord(statement, at);
    if (!more(at))
        fail(line, "the file ends in the statement that begins here");
    // The buffer stays where it is from here on.
    statement.raw = std::string_view(buffer).substr(used, lastEnd - used);
    for (std::size_t word = 0; word < extents.size(); ++word) {
        const Extent& extent = extents[word];
        statement.words[word].text = extent.own ? std::string_view(*extent.own)
                                                : statement.raw.substr(extent.begin - used, extent.size);
    }
    if (statement.words.front().kind != MaWord::Kind::kBare)
        fail(statement.line, "a statement must begin with a command");
    used = at + 1;
    line = wordLine;
}

std::size_t MaTokenizer::readWord(MaStatement& statement, std::size_t at)
{
    MaWord word;
    word.line = wordLine;
    word.offset = at - used;
    Extent extent{at, 1, nullptr};
    const char c = buffer[at];
    if (c == ')')
        fail(wordLine, "\")\" without \"(\"");
    if (c == '(') {
        word.kind = MaWord::Kind::kString;
        at = readJoined(at, extent);
    } else if (c == '"') {
        word.kind = MaWord::Kind::kString;
        at = readString(at, extent);
    } else if (c == '{' || c == '}' || c == ',') {
        word.kind = c == '{' ? MaWord::Kind::kOpen : c == '}' ? MaWord::Kind::kClose : MaWord::Kind::kComma;
        ++at;
    } else {
        while (more(at) && !endsBareWord(buffer[at]) && !beginsComment(at))
            ++at;
        extent.size = at - extent.begin;
    }
    word.length = at - used - word.offset;
    statement.words.push_back(word);
    extents.push_back(extent);
    return at;
}

/// The text that begins at `at`; escapes are resolved into a text of its own.
std::size_t MaTokenizer::readString(std::size_t at, Extent& extent)
{
    const std::size_t behind = findStringEnd(at);
    extent.begin = at + 1;
    extent.size = behind - at - 2;
    if (std::find(&buffer[at + 1], &buffer[behind - 1], '\\') == &buffer[behind - 1])
        return behind;
    std::string& text = texts.emplace_back();
    for (++at; at < behind - 1; ++at)
        text += buffer[at] == '\\' ? unescaped(buffer[++at]) : buffer[at];
    extent.own = &text;
    return behind;
}

/// ( "a" + "b" + ... ) as one text.
std::size_t MaTokenizer::readJoined(std::size_t at, Extent& extent)
{
    const int begin = wordLine;
    std::string text;
    bool wantText = true;
    for (at = skipBlanks(at + 1); more(at) && buffer[at] != ')' && buffer[at] != ';'; at = skipBlanks(at)) {
        if (buffer[at] == '"' && wantText) {
            Extent part;
            at = readString(at, part);
            text += part.own ? *part.own : buffer.substr(part.begin, part.size);
        } else if (buffer[at] == '+' && !wantText) {
            ++at;
        } else {
            fail(wordLine, "only texts joined by + may stand in brackets");
        }
        wantText = !wantText;
    }
    if (!more(at) || buffer[at] == ';')
        fail(begin, "the bracket that opens here is not closed");
    if (wantText)
        fail(wordLine, "a text is missing in the brackets");
    extent.own = &texts.emplace_back(std::move(text));
    return at + 1;
}

} // namespace host
