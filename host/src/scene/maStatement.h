#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

/// One word of a Maya ASCII statement.
struct MaWord {
    enum class Kind {
        kBare,   ///< a number, a flag, a name, yes, no ...
        kString, ///< quoted; `text` is what it stands for, escapes resolved and parts joined
        kOpen,   ///< {
        kClose,  ///< }
        kComma
    };
    Kind kind = Kind::kBare;
    std::string_view text;
    int line = 0;
    std::size_t offset = 0; ///< where the word begins in MaStatement::raw
    std::size_t length = 0; ///< how much of that it is, quotes and escapes included

    /// A bare word that begins with a dash and a letter (numbers do not; -nan and -inf are numbers).
    bool isFlag() const;
};

/// One statement of a file, up to its semicolon. Everything in it is valid until the next one is read.
struct MaStatement {
    std::string_view raw;      ///< from the command to the last word, as it stands in the file
    std::vector<MaWord> words; ///< the command first
    int line = 0;              ///< where the command stands

    std::string_view command() const { return words.front().text; }
};

/// Goes along the words of a statement and names file and line when something is wrong with them (without a
/// file, the words of a script's command, it names the command).
class MaCursor {
public:
    MaCursor(const MaStatement& statement, std::string_view fileName, std::size_t first = 1)
        : source(&statement), file(fileName), position(first)
    {}

    bool atEnd() const { return position >= source->words.size(); }
    std::size_t left() const { return source->words.size() - position; }
    const MaWord& peek() const;
    const MaWord& next();
    bool nextIsNumber() const; ///< a word is left and it is no flag, quoted text or bracket

    double number();
    long long integer(); ///< a number without fraction
    bool boolean();      ///< yes, no, on, off, true, false, 0, 1
    std::string text();  ///< quoted or bare
    std::size_t count(); ///< a number of things to come; never more than there are words left

    /// The rest of the statement as it stands in the file; the cursor is at the end afterwards.
    std::string_view restOfText();

    /// Throws host::Error `file: line N: message` with the line of the word in front of the cursor.
    [[noreturn]] void fail(const std::string& message) const;
    /// Throws unless every word has been used.
    void expectEnd() const;

    const MaStatement& statement() const { return *source; }

private:
    const MaStatement* source;
    std::string_view file;
    std::size_t position;
};

} // namespace host
