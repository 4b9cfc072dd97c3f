#pragma once

#include <memory>
#include <ostream>
#include <string>

namespace host {

/// A file that is written beside its place and takes that place when it is whole: until commit() has
/// returned, whatever stood there is as it was, even when the program is killed.
///
/// The new file has owner, group and mode of the old one, and a symbolic link stays one (what it leads to is
/// replaced). What that cannot be done for is refused: a file without write permission (for root too, who
/// could write it, but hardly means to), a folder, a pipe, a device.
///
/// What is written lies in `NAME.PROCESS.part` and is locked while its writer lives; those that a killed
/// writer left go when the same file is written next.
///
/// All errors are host::Error: "The file NAME cannot be written: REASON".
class ReplacedFile {
public:
    explicit ReplacedFile(const std::string& path);
    ~ReplacedFile();
    ReplacedFile(const ReplacedFile&) = delete;
    ReplacedFile& operator=(const ReplacedFile&) = delete;

    /// Takes what is to be written. It fails like any stream; commit() then tells why.
    std::ostream& stream() { return *out; }
    /// Puts the file in its place.
    void commit();

private:
    class Output;
    [[noreturn]] void fail(const std::string& reason) const;
    [[noreturn]] void failWithErrno() const;
    void lookAtOldFile();
    void removeAbandonedParts() const;
    bool createPart(int number);
    void takeOverOwner();

    const std::string name; ///< as it was asked for
    std::string target;     ///< what that leads to
    std::string part;
    int file = -1;
    struct OldFile;
    std::unique_ptr<OldFile> old; ///< null when nothing stands there yet
    std::unique_ptr<Output> buffer;
    std::unique_ptr<std::ostream> out;
};

/// Writes a whole file so.
void replaceFile(const std::string& path, const std::string& contents);

} // namespace host
