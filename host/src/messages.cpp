#include "messages.h"

#include "trace.h"
#include "types/error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace host {

void Messages::send(Kind kind, const std::string& text)
{
    if (target) {
        target(kind, text);
        return;
    }
    const char* word = kind == Kind::kWarning ? "Warning: " : kind == Kind::kError ? "Error: " : "";
    std::fprintf(stderr, "// %s%s //\n", word, text.c_str());
}

void Messages::info(const std::string& text)
{
    send(Kind::kInfo, text);
}

void Messages::warning(const std::string& text)
{
    ++warnings;
    record.warning(text);
    send(Kind::kWarning, text);
}

void Messages::error(const std::string& text)
{
    ++errors;
    record.error(text);
    send(Kind::kError, text);
}

void Messages::print(const std::string& text)
{
    if (printed) {
        printed(text);
        return;
    }
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (std::fflush(stdout) != 0 || !written)
        throw Error(std::string("Cannot print: ") + std::strerror(errno) + ".");
}

} // namespace host
