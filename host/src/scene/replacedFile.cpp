#include "scene/replacedFile.h"

#include "types/error.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <streambuf>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

namespace files = std::filesystem;

constexpr int kMostLinks = 40;
constexpr int kMostAttempts = 100;

/// What a chain of symbolic links leads to, whether that exists or not.
std::string behindLinks(const std::string& path)
{
    files::path at = path;
    std::error_code problem;
    for (int links = 0; links < kMostLinks && files::is_symlink(at, problem); ++links) {
        const files::path next = files::read_symlink(at, problem);
        at = next.is_absolute() ? next : at.parent_path() / next;
    }
    return at.string();
}

/// `scene.ma.123.part` and `scene.ma.123-1.part` are parts of scene.ma.
bool isPartOf(const std::string& candidate, const std::string& fileName)
{
    static const std::string kEnd = ".part";
    const std::size_t begin = fileName.size() + 1;
    if (candidate.size() <= begin + kEnd.size() || candidate.compare(0, begin, fileName + ".") != 0 ||
        candidate.compare(candidate.size() - kEnd.size(), kEnd.size(), kEnd) != 0)
        return false;
    const std::string number = candidate.substr(begin, candidate.size() - begin - kEnd.size());
    return number.find_first_not_of("0123456789-") == number.npos;
}

/// Removes a part that nobody holds a lock on.
void removeIfAbandoned(const std::string& part)
{
    const int file = ::open(part.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return;
    struct stat facts = {};
    if (::flock(file, LOCK_EX | LOCK_NB) == 0 && ::fstat(file, &facts) == 0 && S_ISREG(facts.st_mode))
        ::unlink(part.c_str());
    ::close(file);
}

} // namespace

struct ReplacedFile::OldFile {
    struct stat facts = {};
};

/// Hands everything to the file at once (those who write do so in large pieces) and remembers why it could
/// not.
class ReplacedFile::Output : public std::streambuf {
public:
    explicit Output(int descriptor) : file(descriptor) {}
    int problem() const { return error; }

protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override
    {
        std::streamsize written = 0;
        while (written < size && error == 0) {
            const ssize_t count = ::write(file, text + written, static_cast<std::size_t>(size - written));
            if (count > 0)
                written += count;
            else if (count == 0 || errno != EINTR)
                error = count == 0 ? ENOSPC : errno;
        }
        return written;
    }
    int_type overflow(int_type character) override
    {
        const char text = traits_type::to_char_type(character);
        return xsputn(&text, 1) == 1 ? character : traits_type::eof();
    }

private:
    int file;
    int error = 0;
};

ReplacedFile::ReplacedFile(const std::string& path) : name(path)
{
    if (name.empty())
        fail("it has no name");
    lookAtOldFile();
    target = behindLinks(name);
    removeAbandonedParts();
    for (int number = 0; !createPart(number);) {
        if (++number == kMostAttempts)
            fail(std::strerror(EEXIST));
    }
    buffer = std::make_unique<Output>(file);
    out = std::make_unique<std::ostream>(buffer.get());
}

ReplacedFile::~ReplacedFile()
{
    if (file < 0)
        return;
    if (!part.empty())
        ::unlink(part.c_str());
    ::close(file);
}

void ReplacedFile::fail(const std::string& reason) const
{
    throw Error("The file " + name + " cannot be written: " + reason);
}

void ReplacedFile::failWithErrno() const
{
    fail(std::strerror(errno));
}

void ReplacedFile::lookAtOldFile()
{
    struct stat facts = {};
    if (::stat(name.c_str(), &facts) != 0) {
        if (errno != ENOENT)
            failWithErrno();
        return;
    }
    if (S_ISDIR(facts.st_mode))
        fail("it is a folder");
    if (!S_ISREG(facts.st_mode))
        fail("it is no ordinary file");
    // Root may write anything. The mode then says what the user wants.
    const bool protectedFromRoot = ::geteuid() == 0 && (facts.st_mode & S_IWUSR) == 0;
    if (protectedFromRoot || ::faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) != 0)
        fail("it is write-protected");
    old = std::make_unique<OldFile>(OldFile{facts});
}

void ReplacedFile::removeAbandonedParts() const
{
    const files::path whole(target);
    const files::path folder = whole.parent_path().empty() ? files::path(".") : whole.parent_path();
    std::error_code problem;
    for (files::directory_iterator entry(folder, problem), end; !problem && entry != end;
         entry.increment(problem)) {
        if (isPartOf(entry->path().filename().string(), whole.filename().string()))
            removeIfAbandoned(entry->path().string());
    }
}

/// Makes and locks the file that is written first. False when its name is taken, or when somebody who tidies
/// up has seen it in the moment before it was locked.
bool ReplacedFile::createPart(int number)
{
    const std::string suffix = number == 0 ? std::string() : "-" + std::to_string(number);
    const std::string candidate = target + "." + std::to_string(::getpid()) + suffix + ".part";
    // Nobody may read what is to be private, not even for a moment.
    const mode_t mode = old ? S_IRUSR | S_IWUSR : S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    file = ::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (file < 0) {
        if (errno != EEXIST)
            failWithErrno();
        return false;
    }
    struct stat facts = {};
    const bool locked = ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (locked && ::fstat(file, &facts) == 0 && facts.st_nlink > 0) {
        part = candidate;
        return true;
    }
    ::close(file);
    file = -1;
    return false;
}

void ReplacedFile::takeOverOwner()
{
    struct stat own = {};
    if (::fstat(file, &own) != 0)
        failWithErrno();
    const bool other = own.st_uid != old->facts.st_uid || own.st_gid != old->facts.st_gid;
    if (other && ::fchown(file, old->facts.st_uid, old->facts.st_gid) != 0)
        fail("its owner would become another");
    if (::fchmod(file, old->facts.st_mode & 07777) != 0)
        failWithErrno();
}

void ReplacedFile::commit()
{
    out->flush();
    if (buffer->problem() != 0)
        fail(std::strerror(buffer->problem()));
    if (!*out)
        fail(std::strerror(EIO));
    if (old)
        takeOverOwner();
    // File systems without it (EINVAL) have nothing to wait for.
    if ((::fsync(file) != 0 && errno != EINVAL) || ::rename(part.c_str(), target.c_str()) != 0)
        failWithErrno();
    part.clear();
}

void replaceFile(const std::string& path, const std::string& contents)
{
    ReplacedFile file(path);
    file.stream().write(contents.data(), static_cast<std::streamsize>(contents.size()));
    file.commit();
}

} // namespace host
