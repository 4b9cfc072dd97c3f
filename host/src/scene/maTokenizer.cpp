#include "scene/maTokenizer.h"

#include "types/characters.h"
#include "types/error.h"

#include <algorithm>
#include <istream>

namespace host {

namespace {

constexpr std::size_t kChunk = std::size_t{1} << 20;

bool endsBareWord(char c)
{
    return isBlank(c) || c == '"' || c == '(' || c == ')' || c == '{' || c == '}' || c == ',' || c == ';';
}

} // namespace

MaTokenizer::MaTokenizer(std::istream& input, std::string fileName) : stream(input), file(std::move(fileName))
{}

void MaTokenizer::fail(int atLine, const std::string& message) const
{
    throw Error(file + ": line " + std::to_string(atLine) + ": " + message);
}

/// Reads on. Positions in the buffer stay as they are; used-up text goes when a statement begins.
bool MaTokenizer::fill()
{
    const std::size_t size = buffer.size();
    buffer.resize(size + kChunk);
    stream.read(&buffer[size], static_cast<std::streamsize>(kChunk));
    buffer.resize(size + static_cast<std::size_t>(stream.gcount()));
    return buffer.size() > size;
}

bool MaTokenizer::next(MaStatement& statement)
{
    statement.words.clear();
    texts.clear();
    if (!skipToStatement())
        return false;
    started = true;
    if (used >= kChunk) {
        buffer.erase(0, used);
        used = 0;
    }
    const std::size_t end = findEnd();
    split(statement, end);
    used = end + 1;
    line = wordLine;
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
        else if (c == '/' && more(used + 1) && (buffer[used + 1] == '/' || buffer[used + 1] == '*'))
            skipComment();
        else
            return true;
    }
    return false;
}

void MaTokenizer::skipComment()
{
    const std::size_t end = findCommentEnd(used);
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
std::size_t MaTokenizer::findCommentEnd(std::size_t at)
{
    const bool block = buffer[at + 1] == '*';
    for (at += 2; more(at); ++at) {
        if (!block && buffer[at] == '\n')
            return at;
        if (block && buffer[at] == '*' && more(at + 1) && buffer[at + 1] == '/')
            return at + 2;
    }
    if (block)
        fail(line, "the comment that begins here is not closed");
    return at;
}

/// Behind the closing quote of the text that begins at `at`.
std::size_t MaTokenizer::findStringEnd(std::size_t at)
{
    const std::size_t begin = at;
    for (++at; more(at); ++at) {
        if (buffer[at] == '"')
            return at + 1;
        if (buffer[at] == '\n')
            break;
        if (buffer[at] == '\\' && !more(++at))
            break;
    }
    const auto from = buffer.begin() + static_cast<std::ptrdiff_t>(used);
    const auto to = buffer.begin() + static_cast<std::ptrdiff_t>(begin);
    fail(line + static_cast<int>(std::count(from, to, '\n')), "the text that begins here is not closed");
}

/// Where the semicolon of the statement at `used` stands.
std::size_t MaTokenizer::findEnd()
{
    std::size_t at = used;
    while (more(at)) {
        const char c = buffer[at];
        if (c == ';')
            return at;
        if (c == '"')
            at = findStringEnd(at);
        else if (c == '/' && more(at + 1) && (buffer[at + 1] == '/' || buffer[at + 1] == '*'))
            at = findCommentEnd(at);
        else
            ++at;
    }
    fail(line, "the file ends in the statement that begins here");
}

std::size_t MaTokenizer::skipBlanks(std::size_t at, std::size_t end)
{
    while (at < end) {
        const char c = buffer[at];
        if (c == '\n')
            ++wordLine;
        if (isBlank(c)) {
            ++at;
        } else if (c == '/' && at + 1 < end && (buffer[at + 1] == '/' || buffer[at + 1] == '*')) {
            const std::size_t behind = findCommentEnd(at);
            const auto from = buffer.begin() + static_cast<std::ptrdiff_t>(at);
            wordLine += static_cast<int>(
                std::count(from, buffer.begin() + static_cast<std::ptrdiff_t>(behind), '\n'));
            at = behind;
        } else {
            break;
        }
    }
    return at;
}

void MaTokenizer::split(MaStatement& statement, std::size_t end)
{
    wordLine = line;
    statement.line = line;
    std::size_t at = used, lastEnd = used;
    while ((at = skipBlanks(at, end)) < end)
        at = lastEnd = readWord(statement, at, end);
    statement.raw = std::string_view(buffer).substr(used, lastEnd - used);
    if (statement.words.front().kind != MaWord::Kind::kBare)
        fail(statement.line, "a statement must begin with a command");
}

std::size_t MaTokenizer::readWord(MaStatement& statement, std::size_t at, std::size_t end)
{
    MaWord word;
    word.line = wordLine;
    word.offset = at - used;
    const char c = buffer[at];
    if (c == '(')
        return readJoined(statement, at, end);
    if (c == ')')
        fail(wordLine, "\")\" without \"(\"");
    if (c == '"') {
        word.kind = MaWord::Kind::kString;
        at = readString(at, word);
    } else if (c == '{' || c == '}' || c == ',') {
        word.kind = c == '{' ? MaWord::Kind::kOpen : c == '}' ? MaWord::Kind::kClose : MaWord::Kind::kComma;
        word.text = std::string_view(buffer).substr(at, 1);
        ++at;
    } else {
        const std::size_t begin = at;
        while (at < end && !endsBareWord(buffer[at]))
            ++at;
        word.text = std::string_view(buffer).substr(begin, at - begin);
    }
    statement.words.push_back(word);
    return at;
}

/// The text that begins at `at`; escapes are resolved into a text of its own.
std::size_t MaTokenizer::readString(std::size_t at, MaWord& word)
{
    const std::size_t begin = ++at;
    while (buffer[at] != '"' && buffer[at] != '\\')
        ++at;
    if (buffer[at] == '"') {
        word.text = std::string_view(buffer).substr(begin, at - begin);
        return at + 1;
    }
    std::string& text = texts.emplace_back(buffer, begin, at - begin);
    for (; buffer[at] != '"'; ++at)
        text += buffer[at] == '\\' ? unescaped(buffer[++at]) : buffer[at];
    word.text = text;
    return at + 1;
}

/// ( "a" + "b" + ... ) as one text.
std::size_t MaTokenizer::readJoined(MaStatement& statement, std::size_t at, std::size_t end)
{
    MaWord joined;
    joined.kind = MaWord::Kind::kString;
    joined.line = wordLine;
    joined.offset = at - used;
    std::string text;
    bool wantText = true;
    for (at = skipBlanks(at + 1, end); at < end && buffer[at] != ')'; at = skipBlanks(at, end)) {
        if (buffer[at] == '"' && wantText) {
            MaWord part;
            at = readString(at, part);
            text += part.text;
        } else if (buffer[at] == '+' && !wantText) {
            ++at;
        } else {
            fail(wordLine, "only texts joined by + may stand in brackets");
        }
        wantText = !wantText;
    }
    if (at >= end)
        fail(joined.line, "the bracket that opens here is not closed");
    if (wantText)
        fail(wordLine, "a text is missing in the brackets");
    joined.text = texts.emplace_back(std::move(text));
    statement.words.push_back(joined);
    return at + 1;
}

} // namespace host
