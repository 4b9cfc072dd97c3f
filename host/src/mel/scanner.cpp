#include "mel/scanner.h"

#include "mel/scriptError.h"
#include "types/characters.h"

#include <charconv>
#include <limits>

namespace host::mel {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isBareWordPart(char c)
{
    return isIdentifierPart(c) || c == '|' || c == ':' || c == '.' || c == '*' || c == '?' || c == '#';
}

} // namespace

bool isIdentifierStart(char c)
{
    // Bytes beyond ASCII belong to names: scenes carry names in any language.
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isIdentifierPart(char c)
{
    return isIdentifierStart(c) || isDigit(c);
}

Scanner::Scanner(const std::string& source, const std::string& nameOfFile)
    : text(source), fileName(nameOfFile)
{
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        at = 3;
}

void Scanner::back(Mark to)
{
    at = to.at;
    lineNumber = to.line;
}

void Scanner::advance()
{
    if (text[at++] == '\n')
        ++lineNumber;
}

void Scanner::skipBlanks()
{
    while (at < text.size()) {
        if (isBlank(text[at])) {
            advance();
        } else if (text.compare(at, 2, "//") == 0) {
            while (at < text.size() && text[at] != '\n')
                ++at;
        } else if (text.compare(at, 2, "/*") == 0) {
            const int beginning = lineNumber;
            while (at < text.size() && text.compare(at, 2, "*/") != 0)
                advance();
            if (at == text.size())
                throw ScriptError("Unterminated comment.", fileName, beginning);
            at += 2;
        } else {
            return;
        }
    }
}

bool Scanner::atEnd()
{
    skipBlanks();
    return at == text.size();
}

int Scanner::line()
{
    skipBlanks();
    return lineNumber;
}

char Scanner::peek()
{
    skipBlanks();
    return direct();
}

char Scanner::direct(std::size_t ahead) const
{
    return at + ahead < text.size() ? text[at + ahead] : '\0';
}

bool Scanner::sees(std::string_view symbol)
{
    skipBlanks();
    return text.compare(at, symbol.size(), symbol) == 0;
}

bool Scanner::accept(std::string_view symbol)
{
    if (!sees(symbol))
        return false;
    at += symbol.size();
    return true;
}

void Scanner::expect(std::string_view symbol)
{
    if (!accept(symbol))
        failUnexpected();
}

bool Scanner::seesIdentifier()
{
    return isIdentifierStart(peek());
}

std::string_view Scanner::peekIdentifier()
{
    if (!seesIdentifier())
        return {};
    std::size_t end = at;
    while (end < text.size() && isIdentifierPart(text[end]))
        ++end;
    return std::string_view(text).substr(at, end - at);
}

std::string Scanner::identifier()
{
    std::string name(peekIdentifier());
    if (name.empty())
        failUnexpected();
    at += name.size();
    return name;
}

bool Scanner::acceptKeyword(std::string_view word)
{
    if (peekIdentifier() != word)
        return false;
    at += word.size();
    return true;
}

std::string Scanner::variableName()
{
    if (peek() != '$' || !isIdentifierStart(direct(1)))
        failUnexpected();
    ++at;
    return "$" + identifier();
}

bool Scanner::seesNumber()
{
    const char first = peek();
    return isDigit(first) || (first == '.' && isDigit(direct(1)));
}

Value Scanner::number()
{
    skipBlanks();
    const char* const begin = text.data() + at;
    const char* const end = text.data() + text.size();
    if (direct() == '0' && (direct(1) == 'x' || direct(1) == 'X')) {
        unsigned digits = 0;
        const auto result = std::from_chars(begin + 2, end, digits, 16);
        if (result.ec != std::errc())
            failUnexpected();
        at += static_cast<std::size_t>(result.ptr - begin);
        return static_cast<int>(digits);
    }
    int whole = 0;
    const auto asInt = std::from_chars(begin, end, whole);
    double real = 0.0;
    const auto asFloat = std::from_chars(begin, end, real);
    if (asFloat.ec == std::errc::invalid_argument)
        failUnexpected();
    if (asFloat.ec == std::errc::result_out_of_range)
        real = std::numeric_limits<double>::infinity();
    at += static_cast<std::size_t>(asFloat.ptr - begin);
    const bool isInt = asInt.ec == std::errc() && asInt.ptr == asFloat.ptr;
    return isInt ? Value(whole) : Value(real);
}

/// Texts may hold a whole mesh's numbers, so what lies between escapes is found and taken in one piece.
std::string Scanner::quoted()
{
    const int beginning = line();
    expect("\"");
    std::string result;
    for (std::size_t quote = text.find('"', at); quote != std::string::npos;) {
        std::string_view plain(text.data() + at, quote - at);
        const std::size_t escape = plain.find('\\');
        plain = plain.substr(0, escape);
        if (plain.find('\n') != std::string_view::npos)
            break;
        result += plain;
        at += plain.size();
        if (escape == std::string_view::npos) {
            ++at;
            return result;
        }
        appendEscaped(result);
        if (at > quote)
            quote = text.find('"', at);
    }
    throw ScriptError("Unterminated string.", fileName, beginning);
}

/// At a backslash that is not the last character. One before the end of the line joins the lines.
void Scanner::appendEscaped(std::string& result)
{
    const bool joinsLines = text.compare(at + 1, 2, "\r\n") == 0;
    ++at;
    if (text[at] != '\n' && !joinsLines)
        result += unescaped(text[at]);
    at += joinsLines ? 1 : 0;
    advance();
}

bool Scanner::seesBareWord()
{
    return isBareWordPart(peek());
}

std::size_t Scanner::bareWordEnd(std::size_t from) const
{
    std::size_t end = from;
    while (end < text.size()) {
        if (text[end] == '[') {
            const std::size_t close = text.find_first_of("]\"` \t\r\n;$", end);
            if (close == std::string::npos || text[close] != ']')
                return end;
            end = close + 1;
        } else if (isBareWordPart(text[end])) {
            ++end;
        } else {
            return end;
        }
    }
    return end;
}

std::string Scanner::bareWord()
{
    skipBlanks();
    const std::size_t end = bareWordEnd(at);
    if (end == at)
        failUnexpected();
    std::string word = text.substr(at, end - at);
    at = end;
    return word;
}

void Scanner::fail(const std::string& message)
{
    throw ScriptError(message, fileName, lineNumber);
}

void Scanner::failUnexpected()
{
    if (atEnd())
        fail("Syntax error: unexpected end of the text.");
    std::size_t length = 1;
    if (isIdentifierPart(direct()) || direct() == '$') {
        while (isIdentifierPart(direct(length)))
            ++length;
    }
    fail("Syntax error: unexpected \"" + text.substr(at, length) + "\".");
}

} // namespace host::mel
