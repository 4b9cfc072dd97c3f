#pragma once

#include "mel/value.h"

#include <string>
#include <string_view>

namespace host::mel {

/// Reads the characters of a text for the parser. What a character means depends on where it stands (in an
/// expression or among the words of a command), so the parser asks for what may come next instead of being
/// handed tokens. Every asking function skips blanks and comments first. Errors are ScriptErrors.
class Scanner {
public:
    Scanner(const std::string& source, const std::string& nameOfFile);

    struct Mark {
        std::size_t at;
        int line;
    };
    Mark mark() const { return {at, lineNumber}; }
    void back(Mark to);

    void skipBlanks();
    bool atEnd();
    int line();
    /// The next character, 0 at the end.
    char peek();
    /// The character directly behind the position or behind that, without skipping.
    char direct(std::size_t ahead = 0) const;

    bool sees(std::string_view symbol);
    bool accept(std::string_view symbol);
    void expect(std::string_view symbol);

    bool seesIdentifier();
    /// The identifier that comes next, left there; empty when there is none.
    std::string_view peekIdentifier();
    std::string identifier();
    bool acceptKeyword(std::string_view word);
    /// "$name"
    std::string variableName();
    /// A number without sign.
    bool seesNumber();
    Value number();
    /// A text in double quotes, with its escapes resolved.
    std::string quoted();
    /// A word of a command without quotes: a name, path, wild card or component. Brackets may hold anything
    /// but blanks and quotes.
    bool seesBareWord();
    std::string bareWord();

    [[noreturn]] void fail(const std::string& text);
    [[noreturn]] void failUnexpected();

private:
    void advance();
    void appendEscaped(std::string& result);
    std::size_t bareWordEnd(std::size_t from) const;

    const std::string& text;
    const std::string fileName;
    std::size_t at = 0;
    int lineNumber = 1;
};

bool isIdentifierStart(char c);
bool isIdentifierPart(char c);

} // namespace host::mel
