#include "messages.h"

#include "trace.h"

#include <cstdio>

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
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

} // namespace host
