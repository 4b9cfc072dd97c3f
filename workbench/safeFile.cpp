#include "safeFile.h"

#include "types/error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include <unistd.h>

namespace workbench {

namespace {

/// Removes the half-written file unless it was put in place.
class Beside {
public:
    explicit Beside(const std::string& target) : path(target + ".part" + std::to_string(getpid())) {}
    ~Beside()
    {
        if (!placed)
            std::remove(path.c_str());
    }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;

    const std::string path;
    bool placed = false;
};

[[noreturn]] void fail(const std::string& path, const std::string& reason)
{
    throw host::Error("Cannot write '" + path + "': " + reason + ".");
}

} // namespace

void writeFileSafely(const std::string& path, const std::string& contents)
{
    if (std::filesystem::is_directory(path))
        fail(path, "it is a folder");
    Beside beside(path);
    std::FILE* file = std::fopen(beside.path.c_str(), "wb");
    if (!file)
        fail(path, std::strerror(errno));
    const bool written = std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
    const int problem = errno;
    if (std::fclose(file) != 0 || !written)
        fail(path, std::strerror(written ? errno : problem));
    std::error_code error;
    std::filesystem::rename(beside.path, path, error);
    if (error)
        fail(path, error.message());
    beside.placed = true;
}

} // namespace workbench
