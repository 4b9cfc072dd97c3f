#pragma once

#include "scene/maStatement.h"

#include <cstdint>
#include <deque>
#include <iosfwd>
#include <string>
#include <vector>

namespace host {

/// Reads the statements of a Maya ASCII file one by one, holding no more of the file than the statement at
/// hand. Comments are skipped. Throws host::Error `file: line N: ...` for a text that is not closed, a
/// statement that the file ends in, or a character that has no place there.
class MaTokenizer {
public:
    MaTokenizer(std::istream& input, std::string fileName, int firstLine = 1);

    /// The next statement, or false at the end of the file. What `statement` held before becomes invalid.
    bool next(MaStatement& statement);

    const std::string& fileName() const { return file; }
    int currentLine() const { return line; }
    std::uint64_t bytesRead() const { return taken; }
    /// The comment lines in front of the first statement.
    const std::vector<std::string>& headComments() const { return head; }
    /// The comment that stood last in the file so far ("// End of body.ma").
    const std::string& lastComment() const { return last; }

private:
    /// Where a word's text lies in the buffer, or its own text when it is another than stands there.
    struct Extent {
        std::size_t begin = 0, size = 0;
        const std::string* own = nullptr;
    };
    bool fill();
    bool more(std::size_t at) { return at < buffer.size() || fill(); }
    bool beginsComment(std::size_t at);
    bool skipToStatement();
    void skipComment();
    std::size_t findStringEnd(std::size_t at);
    std::size_t findCommentEnd(std::size_t at, int atLine);
    int linesIn(std::size_t from, std::size_t to) const;
    void split(MaStatement& statement);
    std::size_t readWord(MaStatement& statement, std::size_t at);
    std::size_t readString(std::size_t at, Extent& extent);
    std::size_t readJoined(std::size_t at, Extent& extent);
    std::size_t skipBlanks(std::size_t at);
    [[noreturn]] void fail(int atLine, const std::string& message) const;

    std::istream& stream;
    std::string file;
    std::string buffer;            ///< what has been read and not used up
    std::size_t chunk;             ///< how much is read next
    std::size_t used = 0;          ///< everything in front of it in the buffer is used up
    int line = 1;                  ///< of buffer[used]
    int wordLine = 1;              ///< while splitting
    std::uint64_t taken = 0;       ///< from the stream
    bool started = false;          ///< a statement has been met
    std::vector<Extent> extents;   ///< of the words of the statement at hand
    std::deque<std::string> texts; ///< their own texts
    std::vector<std::string> head;
    std::string last;
};

} // namespace host
