#include "scene/maStatement.h"

#include "scene/maText.h"
#include "types/error.h"

#include <cmath>

namespace host {

bool MaWord::isFlag() const
{
    if (kind != Kind::kBare || text.size() < 2 || text[0] != '-')
        return false;
    const char c = text[1];
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return letter && text.substr(1, 3) != "nan" && text.substr(1, 3) != "inf";
}

void MaCursor::fail(const std::string& message) const
{
    const std::vector<MaWord>& words = source->words;
    if (file.empty())
        throw Error(std::string(source->command()) + ": " + message);
    const int line = position < words.size() ? words[position].line
                     : words.empty()         ? source->line
                                             : words.back().line;
    throw Error(std::string(file) + ": line " + std::to_string(line) + ": " + message);
}

void MaCursor::expectEnd() const
{
    if (!atEnd())
        fail("unexpected \"" + std::string(peek().text) + "\" at the end of " +
             std::string(source->command()));
}

const MaWord& MaCursor::peek() const
{
    if (atEnd())
        fail(std::string(source->command()) + " ends too early");
    return source->words[position];
}

const MaWord& MaCursor::next()
{
    const MaWord& word = peek();
    ++position;
    return word;
}

bool MaCursor::nextIsNumber() const
{
    double unused = 0.0;
    return !atEnd() && peek().kind == MaWord::Kind::kBare && maParseNumber(peek().text, unused);
}

double MaCursor::number()
{
    const MaWord& word = peek();
    double value = 0.0;
    if (word.kind == MaWord::Kind::kBare && maParseNumber(word.text, value)) {
        ++position;
        return value;
    }
    bool truth = false;
    if (word.kind == MaWord::Kind::kBare && maParseBoolean(word.text, truth)) {
        ++position;
        return truth ? 1.0 : 0.0;
    }
    fail("a number is expected, not \"" + std::string(word.text) + "\"");
}

long long MaCursor::integer()
{
    const double value = number();
    if (std::nearbyint(value) != value || std::fabs(value) > 9e15) {
        --position;
        fail("a whole number is expected, not \"" + std::string(peek().text) + "\"");
    }
    return static_cast<long long>(value);
}

bool MaCursor::boolean()
{
    const MaWord& word = peek();
    bool truth = false;
    if (!maParseBoolean(word.text, truth))
        fail("yes or no is expected, not \"" + std::string(word.text) + "\"");
    ++position;
    return truth;
}

std::string MaCursor::text()
{
    const MaWord& word = peek();
    if (word.kind != MaWord::Kind::kBare && word.kind != MaWord::Kind::kString)
        fail("a text is expected, not \"" + std::string(word.text) + "\"");
    ++position;
    return std::string(word.text);
}

std::size_t MaCursor::count()
{
    const long long value = integer();
    if (value < 0 || static_cast<unsigned long long>(value) > left()) {
        --position;
        fail("the count " + std::string(peek().text) + " does not fit what follows");
    }
    return static_cast<std::size_t>(value);
}

std::string_view MaCursor::restOfText()
{
    if (atEnd())
        return {};
    const std::string_view rest = source->raw.substr(source->words[position].offset);
    position = source->words.size();
    return rest;
}

} // namespace host
