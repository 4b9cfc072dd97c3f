#include "mel/parser.h"
#include "mel/parserSized.h"

namespace host::mel {

namespace {

ExpressionRef literal(Value value)
{
    return std::make_unique<Literal>(std::move(value));
}

/// on, off and the like are the numbers 1 and 0 wherever they stand without quotes.
std::optional<int> truthOf(std::string_view word)
{
    if (word == "true" || word == "on" || word == "yes")
        return 1;
    if (word == "false" || word == "off" || word == "no")
        return 0;
    return std::nullopt;
}

} // namespace

ExpressionRef Parser::callOf(std::string name, std::vector<Call::Part> parts)
{
    int below = 0;
    for (const Call::Part& part : parts)
        below = std::max(below, part.value->height);
    return sized(std::make_unique<Call>(std::move(name), std::move(parts)), below);
}

ExpressionRef Parser::backquoted()
{
    scanner.expect("`");
    ExpressionRef call;
    const std::string_view first = scanner.peekIdentifier();
    if (first == "catch" || first == "catchQuiet")
        call = catching();
    else
        call = command(true);
    scanner.expect("`");
    return call;
}

/// A call in either syntax, at a command's name. `name (x)` is a call with one argument unless further words
/// follow; `name (x, y)` and `name ()` are calls whatever follows.
ExpressionRef Parser::command(bool inBackquotes)
{
    std::string name = scanner.identifier();
    std::vector<Call::Part> parts;
    if (scanner.peek() == '(') {
        std::vector<ExpressionRef> given = arguments();
        const bool isCall = given.size() != 1;
        for (ExpressionRef& argument : given)
            parts.push_back({Word::Kind::kComputed, std::move(argument)});
        if (isCall || !seesWordAfterParenthesis(inBackquotes))
            return callOf(std::move(name), std::move(parts));
    }
    words(parts, inBackquotes);
    return callOf(std::move(name), std::move(parts));
}

/// Operators that could begin a word too count as operators here.
bool Parser::seesWordAfterParenthesis(bool inBackquotes)
{
    const char next = scanner.peek();
    if (next == '.')
        return scanner.seesNumber();
    if (next == '*' || next == '?' || next == ':' || next == '#')
        return false;
    if (next == '-')
        return scanner.direct(1) != '-' && scanner.direct(1) != '=';
    if (next == '<')
        return scanner.sees("<<");
    if (next == '|')
        return !scanner.sees("||");
    if (next == '`')
        return !inBackquotes;
    return next == '"' || next == '$' || next == '(' || next == '{' || scanner.seesNumber() ||
           scanner.seesBareWord();
}

void Parser::words(std::vector<Call::Part>& parts, bool inBackquotes)
{
    while (word(parts, inBackquotes)) {
    }
}

/// Reads one word; false when the command is at its end.
bool Parser::word(std::vector<Call::Part>& parts, bool inBackquotes)
{
    if (scanner.atEnd())
        return false;
    switch (scanner.peek()) {
    case '-':
        return dashWord(parts);
    case '+':
        scanner.accept("+");
        if (!scanner.seesNumber())
            scanner.failUnexpected();
        parts.push_back({Word::Kind::kComputed, literal(scanner.number())});
        return true;
    case '"':
        parts.push_back({Word::Kind::kLiteral, literal(scanner.quoted())});
        return true;
    case '`':
        if (inBackquotes)
            return false;
        parts.push_back({Word::Kind::kComputed, backquoted()});
        return true;
    case '$':
        parts.push_back({Word::Kind::kComputed, component(place(false))});
        return true;
    case '(':
        parts.push_back({Word::Kind::kComputed, parenthesized()});
        return true;
    case '{':
        parts.push_back({Word::Kind::kComputed, arrayLiteral()});
        return true;
    case '<':
        if (!scanner.sees("<<"))
            return false;
        parts.push_back({Word::Kind::kComputed, angled()});
        return true;
    default:
        break;
    }
    if (!scanner.seesBareWord())
        return false;
    parts.push_back(plainWord());
    return true;
}

/// A flag (blanks may stand behind the dash), or a value with a minus sign.
bool Parser::dashWord(std::vector<Call::Part>& parts)
{
    scanner.expect("-");
    if (scanner.seesIdentifier()) {
        parts.push_back({Word::Kind::kFlag, literal("-" + scanner.identifier())});
        return true;
    }
    ExpressionRef operand;
    if (scanner.seesNumber())
        operand = literal(scanner.number());
    else if (scanner.peek() == '$')
        operand = component(place(false));
    else if (scanner.peek() == '(')
        operand = parenthesized();
    else
        scanner.failUnexpected();
    const int below = operand->height;
    parts.push_back({Word::Kind::kComputed, sized(std::make_unique<Negation>(std::move(operand)), below)});
    return true;
}

/// A number, or a bare word, which may begin with digits (3dView, 1:24).
Call::Part Parser::plainWord()
{
    if (scanner.seesNumber()) {
        const Scanner::Mark mark = scanner.mark();
        const Value number = scanner.number();
        const char next = scanner.direct();
        if (!isIdentifierPart(next) && next != ':' && next != '|' && next != '.' && next != '*')
            return {Word::Kind::kComputed, literal(number)};
        scanner.back(mark);
    }
    const std::string text = scanner.bareWord();
    if (const std::optional<int> truth = truthOf(text))
        return {Word::Kind::kComputed, literal(*truth)};
    return {Word::Kind::kLiteral, literal(text)};
}

} // namespace host::mel
