#include "trace.h"

namespace host {

std::string Trace::escaped(const std::string& text)
{
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
        case '\n':
            out += "\\n";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\\':
            out += "\\\\";
            break;
        default:
            out += c;
        }
    }
    return out;
}

void Trace::mel(bool display, bool undo, const std::string& text)
{
    if (on())
        target(std::string("mel\tdisplay=") + (display ? "1" : "0") + " undo=" + (undo ? "1" : "0") + "\t" +
               escaped(text));
}

void Trace::idle(bool display, const std::string& text)
{
    if (on())
        target(std::string("idle\tdisplay=") + (display ? "1" : "0") + "\t" + escaped(text));
}

void Trace::warning(const std::string& text)
{
    if (on())
        target("warning\t" + escaped(text));
}

void Trace::error(const std::string& text)
{
    if (on())
        target("error\t" + escaped(text));
}

void Trace::draw(const std::string& call)
{
    if (on())
        target("draw\t" + call);
}

void Trace::status(const std::string& helpText)
{
    if (on())
        target("status\t" + escaped(helpText));
}

} // namespace host
